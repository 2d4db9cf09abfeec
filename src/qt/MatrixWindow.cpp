#include "qt/MatrixWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include "qt/Text.h"
#include "tools/MatrixWords.h"

namespace brisel::qt {

using tools::Matrix;
using Kind = repository::RelationshipKind;

namespace {

struct KindButton {
  Kind kind;
  const char* text;
  const char* tip;
};

constexpr std::array kKindButtons = {
    KindButton{Kind::association, "Associations",
               "Show associations: the arrow leads to the target"},
    KindButton{Kind::shared, "Shared aggregations",
               "Show shared aggregations: the diamond is at the whole"},
    KindButton{Kind::composite, "Composite aggregations",
               "Show composite aggregations: the diamond is at the whole"},
    KindButton{Kind::generalization, "Generalizations",
               "Show generalizations: the triangle is at the super class"},
};

QString counted(qint64 count, const QString& one, const QString& many) {
  return QString::number(count) + ' ' + (count == 1 ? one : many);
}

}  // namespace

MatrixWindow::MatrixWindow(platform::Ref<tools::MatrixBrowser> browser)
    : m_browser(std::move(browser)),
      m_view(new MatrixView(m_browser, this)),
      m_name(new QLineEdit(this)),
      m_stereotype(new QComboBox(this)),
      m_order(new QComboBox(this)),
      m_neighbours(new QCheckBox(tr("&Neighbours"), this)),
      m_related(new QCheckBox(tr("&Related only"), this)),
      m_looked(new QLabel(this)),
      m_counts(new QLabel(this)) {
  setObjectName("MatrixWindow");
  setWindowTitle(tr("Matrix Browser - Brisel"));
  setAttribute(Qt::WA_QuitOnClose, false);  // the program ends with its diagrams
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(makeFilters());
  column->addWidget(makeKinds());
  column->addWidget(m_view, 1);
  column->addWidget(makeStatus());
  addShortcuts();
  setFocusProxy(m_view);
  m_view->setFocus();
  m_follow.setSingleShot(true);
  m_follow.setInterval(0);
  connect(&m_follow, &QTimer::timeout, this, [this] { follow(); });
  m_connections.push_back(m_browser->Changed.connect([this] { m_follow.start(); }));
  m_connections.push_back(m_browser->FrontAsked.connect([this] {
    show();
    raise();
    activateWindow();
  }));
  m_connections.push_back(m_browser->Closed.connect([this] { close(); }));
  m_connections.push_back(m_view->LookedElsewhere.connect([this] { showLookedAt(); }));
  resize(980, 760);
  follow();
  showLookedAt();
}

// ---- what it is made of -------------------------------------------------------------------------

QWidget* MatrixWindow::makeFilters() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(8, 6, 8, 2);
  m_name->setObjectName("NameFilter");
  m_name->setAccessibleName(tr("Classes whose name holds"));
  m_name->setPlaceholderText(tr("Find classes by name"));
  m_name->setToolTip(tr("Show classes whose name holds one of these words (Ctrl+F)"));
  m_name->setClearButtonEnabled(true);
  m_name->installEventFilter(this);
  connect(m_name, &QLineEdit::textChanged, this,
          [this](const QString& text) { m_browser->NameFilter(fromQt(text)); });
  m_neighbours->setObjectName("Neighbours");
  m_neighbours->setToolTip(tr("Show the classes, too, that those found are joined with"));
  connect(m_neighbours, &QCheckBox::toggled, this, [this](bool on) { m_browser->Neighbours(on); });
  m_related->setObjectName("RelatedOnly");
  m_related->setToolTip(tr("Leave out classes without a relationship that is shown"));
  connect(m_related, &QCheckBox::toggled, this, [this](bool on) { m_browser->RelatedOnly(on); });
  m_stereotype->setObjectName("StereotypeFilter");
  m_stereotype->setAccessibleName(tr("Stereotype"));
  m_stereotype->setToolTip(tr("Show classes of one stereotype"));
  connect(m_stereotype, &QComboBox::activated, this,
          [this] { m_browser->StereotypeFilter(fromQt(m_stereotype->currentData().toString())); });
  m_order->setObjectName("Order");
  m_order->setAccessibleName(tr("Order"));
  m_order->setToolTip(tr("The order of rows and columns; choose it again to order anew"));
  m_order->addItem(tr("Sorted by groups"), "clusters");
  m_order->addItem(tr("Sorted by name"), "name");
  connect(m_order, &QComboBox::activated, this,
          [this] { m_browser->Sort(fromQt(m_order->currentData().toString())); });
  row->addWidget(m_name, 1);
  row->addWidget(m_neighbours);
  row->addWidget(m_related);
  row->addWidget(m_stereotype);
  row->addWidget(m_order);
  return bar;
}

/// The buttons that choose the kinds are the legend as well.
QWidget* MatrixWindow::makeKinds() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(8, 2, 8, 4);
  row->setSpacing(4);
  for (const KindButton& shown : kKindButtons) {
    auto* button = new QToolButton(bar);
    button->setObjectName(toQt("Kind." + std::string(tools::wordOf(shown.kind))));
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIconSize({24, 16});
    button->setToolTip(tr(shown.tip));
    button->setAccessibleName(tr(shown.text));
    connect(button, &QToolButton::clicked, this, [this] { filterKinds(); });
    m_kinds[static_cast<std::size_t>(shown.kind)] = button;
    row->addWidget(button);
  }
  row->addStretch(1);
  row->addWidget(makeButton(QString(QChar(0x2212)), tr("Smaller cells"), QKeySequence::ZoomOut,
                            &MatrixWindow::zoomOut));
  row->addWidget(makeButton("+", tr("Larger cells"), QKeySequence::ZoomIn, &MatrixWindow::zoomIn));
  row->addWidget(makeButton(tr("Fit"), tr("Show all cells"), QKeySequence("Ctrl+9"),
                            &MatrixWindow::zoomToFit));
  return bar;
}

QToolButton* MatrixWindow::makeButton(const QString& text, const QString& tip,
                                      const QKeySequence& key, void (MatrixWindow::*run)()) {
  auto* button = new QToolButton(this);
  button->setText(text);
  button->setAccessibleName(tip);
  button->setAutoRaise(true);
  button->setToolTip(tip + " (" + key.toString(QKeySequence::NativeText) + ')');
  connect(button, &QToolButton::clicked, this, run);
  connect(new QShortcut(key, this), &QShortcut::activated, this, run);
  return button;
}

QWidget* MatrixWindow::makeStatus() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(8, 3, 8, 4);
  m_looked->setObjectName("LookedAt");
  m_looked->setTextFormat(Qt::PlainText);
  m_looked->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  m_counts->setObjectName("Counts");
  row->addWidget(m_looked, 1);
  row->addWidget(m_counts);
  return bar;
}

void MatrixWindow::addShortcuts() {
  const auto add = [this](const QKeySequence& key, void (MatrixWindow::*run)()) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, run);
  };
  add(QKeySequence::Find, &MatrixWindow::goToFilter);
  add(QKeySequence("Ctrl+="), &MatrixWindow::zoomIn);
  add(QKeySequence("Ctrl+0"), &MatrixWindow::resetZoom);
}

// ---- following the browser ----------------------------------------------------------------------

void MatrixWindow::follow() {
  const Matrix& matrix = m_browser->matrix();
  const Matrix::Options& options = matrix.options();
  const QSignalBlocker quiet(m_name);
  const QSignalBlocker quietToo(m_neighbours);
  const QSignalBlocker quietAsWell(m_related);
  if (fromQt(m_name->text()) != options.name) m_name->setText(toQt(options.name));
  m_neighbours->setChecked(options.neighbours);
  m_related->setChecked(options.relatedOnly);
  m_order->setCurrentIndex(m_order->findData(toQt(m_browser->Order())));
  followStereotypes();
  const auto counts = matrix.counts();
  std::size_t shown = 0;
  for (const KindButton& row : kKindButtons) {
    const auto index = static_cast<std::size_t>(row.kind);
    QToolButton* button = m_kinds[index];
    button->setIcon(m_view->glyphs().icon(row.kind));
    button->setText(tr(row.text) + ' ' + QString::number(counts[index]));
    button->setChecked(options.kinds[index]);
    if (options.kinds[index]) shown += counts[index];
  }
  const auto all = m_browser->classCount();
  const auto classes = static_cast<qint64>(matrix.size());
  QString text = classes == all ? counted(all, tr("class"), tr("classes"))
                                : tr("%1 of %2 classes").arg(classes).arg(all);
  text += ", " + counted(static_cast<qint64>(shown), tr("relationship"), tr("relationships"));
  if (const auto half = m_browser->Incomplete(); half > 0) {
    text += ", " + counted(half, tr("lacks an end"), tr("lack an end"));
  }
  m_counts->setText(text);
}

void MatrixWindow::followStereotypes() {
  const std::vector<std::string> names = m_browser->stereotypes();
  if (m_stereotype->count() == 0 || names != m_stereotypes) {
    m_stereotypes = names;
    m_stereotype->clear();
    m_stereotype->addItem(tr("All stereotypes"), "");
    m_stereotype->addItem(tr("No stereotype"), "<NONE>");
    for (const std::string& name : names) m_stereotype->addItem(toQt(name), toQt(name));
  }
  const QString chosen = toQt(m_browser->StereotypeFilter());
  int index = m_stereotype->findData(chosen);
  if (index < 0) {  // asked for by name, or its last class is gone
    m_stereotype->addItem(chosen, chosen);
    index = m_stereotype->count() - 1;
  }
  m_stereotype->setCurrentIndex(index);
}

void MatrixWindow::showLookedAt() {
  const MatrixView::Cell cell = m_view->lookedAt();
  const QStringList lines = toQt(m_browser->Words(cell.row, cell.column)).split('\n');
  m_looked->setText(lines.join("; "));
  m_looked->setToolTip(lines.size() > 1 ? lines.join('\n') : QString());
}

// ---- what a person does -------------------------------------------------------------------------

/// With none chosen all are shown again: an empty matrix tells nobody anything.
void MatrixWindow::filterKinds() {
  std::string words;
  for (const KindButton& row : kKindButtons) {
    if (!m_kinds[static_cast<std::size_t>(row.kind)]->isChecked()) continue;
    words += std::string(tools::wordOf(row.kind)) + ' ';
  }
  m_browser->KindFilter(words);
  m_follow.start();
}

void MatrixWindow::goToFilter() {
  m_name->setFocus(Qt::ShortcutFocusReason);
  m_name->selectAll();
}

/// In the filter, Escape takes it back, Enter and Down go to what was found.
bool MatrixWindow::eventFilter(QObject* watched, QEvent* event) {
  if (watched != m_name || event->type() != QEvent::KeyPress) {
    return QWidget::eventFilter(watched, event);
  }
  const int key = static_cast<QKeyEvent*>(event)->key();
  if (key == Qt::Key_Escape) m_name->clear();
  const bool leaves =
      key == Qt::Key_Escape || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Down;
  if (leaves) m_view->setFocus();
  return leaves;
}

/// A letter that nobody has a use for is the first one of a name to look for.
void MatrixWindow::keyPressEvent(QKeyEvent* event) {
  const bool isText = !event->text().isEmpty() && event->text().at(0).isLetterOrNumber() &&
                      !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
  if (isText) {
    m_name->setFocus(Qt::OtherFocusReason);
    m_name->setText(event->text());
  } else if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void MatrixWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) m_follow.start();  // the glyphs of the buttons
}

void MatrixWindow::closeEvent(QCloseEvent* event) {
  m_connections.clear();
  m_browser->Close();
  event->accept();
}

}  // namespace brisel::qt
