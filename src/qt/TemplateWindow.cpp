#include "qt/TemplateWindow.h"

#include <QCloseEvent>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>

#include "qt/Looks.h"
#include "qt/SourceEdit.h"
#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr int kPause = 200;     // milliseconds after the last change until the preview starts
constexpr double kSlice = 8.0;  // milliseconds that it takes at a time
constexpr int kKeyRole = Qt::UserRole;

QLabel* heading(const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text);
  label->setFont(headingFont(label->font()));
  label->setBuddy(buddy);
  return label;
}

/// The same in a line as high as one with buttons, so that what stands below it is level.
QLabel* headingOfColumn(const QString& text, QWidget* buddy) {
  QLabel* label = heading(text, buddy);
  label->setMinimumHeight(QPushButton().sizeHint().height());
  return label;
}

QPushButton* button(const QString& text, const QString& tip) {
  auto* made = new QPushButton(text);
  made->setToolTip(tip);
  return made;
}

QWidget* column(std::initializer_list<QWidget*> widgets) {
  auto* made = new QWidget;
  auto* layout = new QVBoxLayout(made);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QWidget* widget : widgets) layout->addWidget(widget);
  return made;
}

QWidget* row(std::initializer_list<QWidget*> widgets, QWidget* wide) {
  auto* made = new QWidget;
  auto* layout = new QHBoxLayout(made);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QWidget* widget : widgets) layout->addWidget(widget, widget == wide ? 1 : 0);
  return made;
}

QString filesText(std::size_t count) {
  return count == 1 ? QObject::tr("1 file") : QObject::tr("%1 files").arg(count);
}

/// Makes the list's rows the texts, and leaves alone those that are so already.
void setRows(QListWidget& list, const QStringList& texts) {
  while (list.count() > texts.size()) delete list.takeItem(list.count() - 1);
  for (int i = 0; i < texts.size(); ++i) {
    if (i >= list.count()) {
      list.addItem(texts[i]);
    } else if (list.item(i)->text() != texts[i]) {
      list.item(i)->setText(texts[i]);
    }
  }
}

}  // namespace

template <class Action>
void TemplateWindow::attempt(Action action) {
  try {
    action();
  } catch (const std::exception& error) {
    say(toQt(error.what()), true);
  }
}

TemplateWindow::TemplateWindow(const platform::Ref<tools::Template>& tool, QWidget* parent)
    : QWidget(parent, Qt::Window), m_tool(tool) {
  setObjectName("TemplateWindow");
  auto* columns = new QSplitter;
  for (QWidget* part : {makeLists(), makeText(), makePreview()}) columns->addWidget(part);
  columns->setStretchFactor(0, 1);
  columns->setStretchFactor(1, 3);
  columns->setStretchFactor(2, 3);
  columns->setChildrenCollapsible(false);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(columns, 1);
  layout->addWidget(makeBottom());
  makeShortcuts();
  resize(1120, 680);
  columns->setSizes({190, 480, 450});
  m_timer.setSingleShot(true);
  connect(&m_timer, &QTimer::timeout, this, [this] { slice(); });
  m_changes = m_tool->Changed.connect([this](const std::string& what) { changed(what); });
  showTemplates();
  showText();
  m_output->setText(toQt(m_tool->Output()));
  showState();
  m_text->setFocus();
  schedule();
}

QWidget* TemplateWindow::makeLists() {
  m_templates = new QListWidget;
  m_templates->setObjectName("Templates");
  connect(m_templates, &QListWidget::currentItemChanged, this,
          [this](QListWidgetItem* item) { openTemplate(item); });
  m_filter = new QLineEdit;
  m_filter->setObjectName("Filter");
  m_filter->setPlaceholderText(tr("Filter"));
  m_filter->setClearButtonEnabled(true);
  connect(m_filter, &QLineEdit::textChanged, this, [this] { filterClasses(); });
  m_classes = new QListWidget;
  m_classes->setObjectName("Classes");
  m_classes->setSelectionMode(QAbstractItemView::ExtendedSelection);
  m_classes->setUniformItemSizes(true);
  m_classes->setToolTip(tr("What the template runs over: the selected classes, or all of them"));
  connect(m_classes, &QListWidget::itemSelectionChanged, this, [this] { takeSelection(); });
  m_classesTitle = heading(tr("&Classes"), m_filter);
  auto* parts = new QSplitter(Qt::Vertical);
  parts->addWidget(column({headingOfColumn(tr("&Templates"), m_templates), m_templates}));
  parts->addWidget(column({m_classesTitle, m_filter, m_classes}));
  parts->setStretchFactor(1, 1);
  parts->setSizes({150, 400});
  return parts;
}

QWidget* TemplateWindow::makeText() {
  m_text = new SourceEdit(SourceEdit::Kind::templateText);
  m_text->setObjectName("Text");
  connect(m_text, &QPlainTextEdit::textChanged, this, [this] {
    if (!m_isShowing) m_tool->Text(fromQt(m_text->toPlainText()));
  });
  m_textTitle = heading({}, m_text);
  m_save = button(tr("&Save"), tr("Save the template (Ctrl+S)"));
  m_save->setObjectName("Save");
  connect(m_save, &QPushButton::clicked, this, [this] { save(); });
  QPushButton* other = button(tr("Save &As..."), tr("Save under another name (Ctrl+Shift+S)"));
  connect(other, &QPushButton::clicked, this, [this] { saveAs(); });
  return column({row({m_textTitle, m_save, other}, m_textTitle), m_text});
}

QWidget* TemplateWindow::makePreview() {
  m_files = new QListWidget;
  m_files->setObjectName("Files");
  m_files->setUniformItemSizes(true);
  connect(m_files, &QListWidget::currentRowChanged, this, [this] { showFile(); });
  m_file = new SourceEdit(SourceEdit::Kind::plain);
  m_file->setObjectName("File");
  m_file->setReadOnly(true);
  m_file->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  m_filesTitle = headingOfColumn(tr("&Preview"), m_files);
  auto* parts = new QSplitter(Qt::Vertical);
  parts->addWidget(column({m_filesTitle, m_files}));
  parts->addWidget(m_file);
  parts->setStretchFactor(1, 1);
  parts->setSizes({150, 450});
  return parts;
}

QWidget* TemplateWindow::makeBottom() {
  m_state = new QLabel;
  m_state->setObjectName("State");
  m_state->setTextFormat(Qt::PlainText);
  m_state->setWordWrap(true);
  m_output = new QLineEdit;
  m_output->setObjectName("Output");
  m_output->setPlaceholderText(tr("Folder to write to"));
  connect(m_output, &QLineEdit::textChanged, this,
          [this](const QString& text) { m_tool->Output(fromQt(text)); });
  QPushButton* browse = button(tr("&Browse..."), tr("Choose the folder"));
  connect(browse, &QPushButton::clicked, this, [this] { chooseFolder(); });
  m_write = button(tr("&Write Files"), tr("Write what the preview shows (Ctrl+Return)"));
  m_write->setObjectName("Write");
  connect(m_write, &QPushButton::clicked, this, [this] { write(); });
  auto* label = new QLabel(tr("&Output:"));
  label->setBuddy(m_output);
  return column({m_state, row({label, m_output, browse, m_write}, m_output)});
}

void TemplateWindow::makeShortcuts() {
  const auto add = [this](const QKeySequence& keys, void (TemplateWindow::*action)()) {
    auto* shortcut = new QShortcut(keys, this);
    connect(shortcut, &QShortcut::activated, this, [this, action] { (this->*action)(); });
  };
  add(QKeySequence(tr("Ctrl+S")), &TemplateWindow::save);
  add(QKeySequence(tr("Ctrl+Shift+S")), &TemplateWindow::saveAs);
  add(QKeySequence(tr("Ctrl+Return")), &TemplateWindow::write);
  auto* close = new QShortcut(QKeySequence(tr("Ctrl+W")), this);
  connect(close, &QShortcut::activated, this, [this] { this->close(); });
}

void TemplateWindow::changed(const std::string& what) {
  if (what == "template") {
    showTemplates();
    showText();
  } else if (what == "text") {
    showText();
  } else if (what == "model") {
    m_classesAreOld = true;
  } else if (what == "output") {
    if (m_output->text() != toQt(m_tool->Output())) m_output->setText(toQt(m_tool->Output()));
    showState();
    return;
  }
  showState();
  schedule();
}

void TemplateWindow::showTemplates() {
  const QScopedValueRollback showing(m_isShowing, true);
  QStringList names;
  const auto templates = m_tool->Templates();
  for (const platform::Value& name : templates->values()) names << toQt(name.string());
  const QString own = toQt(m_tool->templateName());
  if (!own.isEmpty() && !names.contains(own)) names << own;
  setRows(*m_templates, names);
  m_templates->setCurrentRow(static_cast<int>(names.indexOf(own)));
}

void TemplateWindow::showText() {
  const QScopedValueRollback showing(m_isShowing, true);
  const QString text = toQt(m_tool->Text());
  if (m_text->toPlainText() != text) m_text->setPlainText(text);
}

void TemplateWindow::showClasses() {
  const QScopedValueRollback showing(m_isShowing, true);
  m_classesAreOld = false;
  QSet<QString> selected;
  const auto keys = m_tool->Selected();
  for (const platform::Value& key : keys->values()) selected << toQt(key.string());
  const auto classes = m_tool->Classes();
  m_classes->setUpdatesEnabled(false);
  m_classes->clear();
  for (const platform::Value& value : classes->values()) {
    const auto cls = value.object();
    auto* item = new QListWidgetItem(toQt(cls->get("name").string()));
    item->setData(kKeyRole, toQt(cls->get("key").string()));
    m_classes->addItem(item);
    item->setSelected(selected.contains(item->data(kKeyRole).toString()));
  }
  m_classes->sortItems();
  filterClasses();
  m_classes->setUpdatesEnabled(true);
}

void TemplateWindow::filterClasses() {
  const QString words = m_filter->text().trimmed();
  for (int i = 0; i < m_classes->count(); ++i) {
    QListWidgetItem* item = m_classes->item(i);
    item->setHidden(!item->text().contains(words, Qt::CaseInsensitive));
  }
}

void TemplateWindow::takeSelection() {
  if (m_isShowing) return;
  std::vector<platform::Value> keys;
  for (const QListWidgetItem* item : m_classes->selectedItems()) {
    keys.emplace_back(fromQt(item->data(kKeyRole).toString()));
  }
  m_tool->Select(*platform::make<platform::ValueArray>(std::move(keys)));
}

void TemplateWindow::schedule() { m_timer.start(kPause); }

/// One slice of the preview; the rest comes after the events that wait.
void TemplateWindow::slice() {
  attempt([this] {
    if (m_classesAreOld) showClasses();
    const bool more = m_tool->StepPreview(kSlice);
    if (more) {
      m_timer.start(0);
      m_filesTitle->setText(
          tr("&Preview (%n file(s) so far)", nullptr, static_cast<int>(m_tool->files().size())));
      return;
    }
    showFiles();
    showState();
  });
}

void TemplateWindow::showFiles() {
  if (m_tool->FaultLine() > 0) return;  // what was shown before stays
  const QScopedValueRollback showing(m_isShowing, true);
  const QString current = m_files->currentItem() ? m_files->currentItem()->text() : QString();
  QStringList names;
  for (const auto& file : m_tool->files()) names << toQt(file.name);
  setRows(*m_files, names);
  const auto row = names.indexOf(current);
  m_files->setCurrentRow(row < 0 && !names.isEmpty() ? 0 : static_cast<int>(row));
  m_isShowing = false;
  showFile();
}

void TemplateWindow::showFile() {
  if (m_isShowing) return;
  const auto row = static_cast<std::size_t>(std::max(m_files->currentRow(), 0));
  const auto& files = m_tool->files();
  const QString text = row < files.size() ? toQt(files[row].text) : QString();
  if (m_file->toPlainText() != text) m_file->setPlainText(text);
}

void TemplateWindow::showState() {
  const QString name = toQt(m_tool->templateName());
  setWindowTitle(tr("%1[*] - Template Editor").arg(name.isEmpty() ? tr("No template") : name));
  setWindowModified(m_tool->Modified());
  m_textTitle->setText(m_tool->Modified() ? tr("%1 (not saved)").arg(name) : name);
  m_save->setEnabled(m_tool->Modified());
  const int line = static_cast<int>(m_tool->FaultLine());
  m_text->markLine(line);
  m_file->setEnabled(line == 0);
  m_files->setEnabled(line == 0);
  m_write->setEnabled(line == 0 && !m_tool->Output().empty());
  const auto selected = m_tool->Selected()->values().size();
  m_classesTitle->setText(selected == 0
                              ? tr("&Classes (all)")
                              : tr("&Classes (%1 of %2)").arg(selected).arg(m_classes->count()));
  if (m_timer.isActive()) return;
  m_filesTitle->setText(line > 0 ? tr("&Preview")
                                 : tr("&Preview (%1)").arg(filesText(m_tool->files().size())));
  if (line > 0) {
    say(tr("Line %1: %2").arg(line).arg(toQt(m_tool->Fault())), true);
  } else if (m_isFault) {
    say({});
  }
}

void TemplateWindow::say(const QString& text, bool isFault) {
  m_isFault = isFault;
  m_state->setPalette(isFault ? refusalPalette(palette()) : palette());
  m_state->setText(text);
}

void TemplateWindow::openTemplate(QListWidgetItem* item) {
  if (m_isShowing || !item) return;
  attempt([&] { m_tool->Open(fromQt(item->text())); });
  // After a refusal the list goes back, which it must not do while it tells of its change.
  QTimer::singleShot(0, this, [this] { showTemplates(); });
}

void TemplateWindow::save() {
  attempt([this] { say(tr("Saved to %1").arg(toQt(m_tool->Save()))); });
}

void TemplateWindow::saveAs() {
  bool isChosen = false;
  const QString name =
      QInputDialog::getText(this, tr("Save As"), tr("Name of the template:"), QLineEdit::Normal,
                            toQt(m_tool->templateName()), &isChosen);
  if (!isChosen) return;
  attempt([&] { say(tr("Saved to %1").arg(toQt(m_tool->SaveAs(fromQt(name))))); });
}

void TemplateWindow::chooseFolder() {
  const QString folder =
      QFileDialog::getExistingDirectory(this, tr("Folder to write to"), m_output->text());
  if (!folder.isEmpty()) m_output->setText(folder);
}

void TemplateWindow::write() {
  attempt([this] {
    const auto result = m_tool->Write();
    if (!result) return;
    say(tr("%1 written, %2 unchanged in %3")
            .arg(result->get("written").integer())
            .arg(result->get("unchanged").integer())
            .arg(toQt(m_tool->Output())));
  });
}

void TemplateWindow::closeEvent(QCloseEvent* event) {
  bool may = false;
  attempt([&] { may = m_tool->MayClose(); });
  event->setAccepted(may);
}

}  // namespace brisel::qt
