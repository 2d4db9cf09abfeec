#include "qt/MatrixView.h"

#include <QAccessible>
#include <QHelpEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <array>
#include <cmath>

#include "platform/Text.h"
#include "qt/InputNames.h"
#include "qt/Text.h"
#include "tools/MatrixWords.h"

namespace brisel::qt {

using tools::Matrix;
using Kind = repository::RelationshipKind;

namespace {

constexpr std::array kCellSizes = {1,  2,  3,  4,  5,  6,  8,  10, 12, 14, 16,
                                   18, 20, 22, 26, 30, 36, 44, 54, 66, 80};
constexpr int kUsualCell = 22;
constexpr double kWheelStep = 120;  ///< of QWheelEvent's angle
constexpr int kLeastNames = 48;
constexpr int kNameMargin = 14;
constexpr int kNoNames = 16;  ///< the room beside cells that are too small for names

struct Made {
  Kind kind;
  const char* text;  ///< %1 is the column's class
};
constexpr std::array kMade = {
    Made{Kind::association, "New &Association to %1"},
    Made{Kind::shared, "New &Shared Aggregation of %1"},
    Made{Kind::composite, "New &Composite Aggregation of %1"},
    Made{Kind::generalization, "New &Generalization to %1"},
};

/// A name in a menu: no mnemonics, not endless.
QString inMenu(const std::string& name) {
  constexpr int kLongest = 40;
  QString text = toQt(name).simplified();
  if (text.size() > kLongest) text = text.left(kLongest - 1) + QChar(0x2026);
  return text.replace('&', "&&");
}

}  // namespace

MatrixView::MatrixView(platform::Ref<tools::MatrixBrowser> browser, QWidget* parent)
    : QAbstractScrollArea(parent), m_browser(std::move(browser)), m_cell(kUsualCell) {
  setObjectName("Matrix");
  setAccessibleName(tr("Relationships between classes"));
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(NoFrame);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  m_glyphs.palette(palette());
  m_follow.setSingleShot(true);
  m_follow.setInterval(0);
  connect(&m_follow, &QTimer::timeout, this, [this] { follow(); });
  m_connections.push_back(m_browser->Changed.connect([this] {
    m_names.clear();
    m_follow.start();
  }));
  m_connections.push_back(m_browser->CurrentChanged.connect([this] { followCurrent(); }));
  m_connections.push_back(m_browser->MenuAsked.connect([this](int row, int column) {
    const Cell cell{row, column};
    openMenu(cell, viewport()->mapToGlobal(areaOf(cell).center()));
  }));
  follow();
}

// ---- following the browser ----------------------------------------------------------------------

void MatrixView::follow() {
  measureNames();
  findGroups();
  placeBars();
  viewport()->update();
  tellCurrent();
}

/// The room that the longest names need. Of very many only the longest by their letters count.
void MatrixView::measureNames() {
  m_names.clear();
  if (!hasNames()) {
    m_left = m_top = kNoNames;
    return;
  }
  const Matrix& matrix = m_browser->matrix();
  constexpr std::size_t kMeasured = 24;
  std::vector<std::pair<int, std::size_t>> longest;
  longest.reserve(matrix.size());
  for (std::size_t i = 0; i < matrix.size(); ++i) {
    longest.emplace_back(-platform::columnsOf(matrix.at(i).name), i);
  }
  const std::size_t measured = std::min(kMeasured, longest.size());
  std::partial_sort(longest.begin(), longest.begin() + static_cast<std::ptrdiff_t>(measured),
                    longest.end());
  const QFontMetrics metrics(nameFont());
  int widest = kLeastNames;
  for (std::size_t i = 0; i < measured; ++i) {
    const QString name = toQt(tools::titleOf(*matrix.at(longest[i].second).node));
    widest = std::max(widest, metrics.horizontalAdvance(name) + kNameMargin);
  }
  const QSize room = viewport()->size();
  m_left = std::min(widest, std::max(kLeastNames, room.width() * 3 / 10));
  m_top = std::min(widest, std::max(kLeastNames, room.height() * 3 / 10));
}

void MatrixView::findGroups() {
  const Matrix& matrix = m_browser->matrix();
  m_groups.clear();
  if (!matrix.hasGroups()) return;
  for (std::size_t first = 0; first < matrix.size();) {
    std::size_t last = first;
    while (last + 1 < matrix.size() && matrix.at(last + 1).group == matrix.at(first).group) ++last;
    if (last > first) m_groups.emplace_back(first, last);
    first = last + 1;
  }
}

void MatrixView::placeBars() {
  const QSize seen = body().size();
  const auto all = static_cast<int>(count()) * m_cell;
  const auto place = [&](QScrollBar& bar, int length) {
    bar.setRange(0, std::max(0, all - length));
    bar.setPageStep(std::max(1, length));
    bar.setSingleStep(std::max(kUsualCell, m_cell));
  };
  place(*horizontalScrollBar(), seen.width());
  place(*verticalScrollBar(), seen.height());
  m_browser->pageSize(std::max(1, seen.height() / m_cell - 1),
                      std::max(1, seen.width() / m_cell - 1));
}

void MatrixView::followCurrent() {
  viewport()->update();
  const Cell current{m_browser->CurrentRow(), m_browser->CurrentColumn()};
  const auto reveal = [this](QScrollBar& bar, qint64 number, int length) {
    if (number < 1) return;
    const auto from = static_cast<int>(number - 1) * m_cell;
    if (from < bar.value()) bar.setValue(from);
    if (from + m_cell > bar.value() + length) bar.setValue(from + m_cell - length);
  };
  reveal(*verticalScrollBar(), current.row, body().height());
  reveal(*horizontalScrollBar(), current.column, body().width());
  m_hovered = {};  // what the keys are at counts, until the pointer moves
  tellCurrent();
}

/// To who listens to the screen, and to the status line.
void MatrixView::tellCurrent() {
  const Cell current{m_browser->CurrentRow(), m_browser->CurrentColumn()};
  setAccessibleDescription(toQt(m_browser->Words(current.row, current.column)));
  QAccessibleEvent event(this, QAccessible::DescriptionChanged);
  QAccessible::updateAccessibility(&event);
  LookedElsewhere();
}

// ---- geometry -----------------------------------------------------------------------------------

qint64 MatrixView::count() { return static_cast<qint64>(m_browser->matrix().size()); }

QRect MatrixView::body() const {
  return {m_left, m_top, std::max(0, viewport()->width() - m_left),
          std::max(0, viewport()->height() - m_top)};
}

MatrixView::Span MatrixView::seenRows() {
  const int from = verticalScrollBar()->value();
  return {from / m_cell, std::min(count(), qint64{(from + body().height()) / m_cell + 1})};
}

MatrixView::Span MatrixView::seenColumns() {
  const int from = horizontalScrollBar()->value();
  return {from / m_cell, std::min(count(), qint64{(from + body().width()) / m_cell + 1})};
}

QRect MatrixView::areaOf(Cell cell) const {
  const auto start = [this](qint64 number, int header, const QScrollBar& bar) {
    return header + static_cast<int>(number - 1) * m_cell - bar.value();
  };
  QRect area(0, 0, m_left, m_top);
  if (cell.column > 0) {
    area.setLeft(start(cell.column, m_left, *horizontalScrollBar()));
    area.setWidth(m_cell);
  }
  if (cell.row > 0) {
    area.setTop(start(cell.row, m_top, *verticalScrollBar()));
    area.setHeight(m_cell);
  }
  return area;
}

QRect MatrixView::blockOf(qint64 firstPlace, qint64 lastPlace) const {
  return areaOf({firstPlace + 1, firstPlace + 1}).united(areaOf({lastPlace + 1, lastPlace + 1}));
}

MatrixView::Cell MatrixView::cellAt(QPoint at) const {
  if (!viewport()->rect().contains(at)) return {};
  const auto all = static_cast<qint64>(m_browser->matrix().size());
  const auto number = [&](int position, int header, const QScrollBar& bar) -> qint64 {
    return position < header ? 0 : (position - header + bar.value()) / m_cell + 1;
  };
  const Cell cell{number(at.y(), m_top, *verticalScrollBar()),
                  number(at.x(), m_left, *horizontalScrollBar())};
  const bool isCorner = cell.row == 0 && cell.column == 0;
  return isCorner || cell.row > all || cell.column > all ? Cell() : cell;
}

MatrixView::Cell MatrixView::lookedAt() {
  if (m_hovered.isValid() && m_hovered.row <= count() && m_hovered.column <= count()) {
    return m_hovered;
  }
  return {m_browser->CurrentRow(), m_browser->CurrentColumn()};
}

void MatrixView::zoom(int steps, QPoint around) {
  const auto at = std::lower_bound(kCellSizes.begin(), kCellSizes.end(), m_cell);
  const auto index =
      std::clamp<std::ptrdiff_t>(at - kCellSizes.begin() + steps, 0, std::ssize(kCellSizes) - 1);
  zoomTo(kCellSizes[static_cast<std::size_t>(index)], around);
}

void MatrixView::zoom(int steps) { zoom(steps, body().center()); }

void MatrixView::zoomTo(int cellSize, QPoint around) {
  if (cellSize == m_cell) return;
  const QPoint inBody = around - body().topLeft();
  const double factor = static_cast<double>(cellSize) / m_cell;
  const auto moved = [&](const QScrollBar& bar, int at) {
    return static_cast<int>(std::lround((bar.value() + at) * factor)) - at;
  };
  const QPoint to(moved(*horizontalScrollBar(), inBody.x()),
                  moved(*verticalScrollBar(), inBody.y()));
  m_cell = cellSize;
  measureNames();
  placeBars();
  horizontalScrollBar()->setValue(to.x());
  verticalScrollBar()->setValue(to.y());
  viewport()->update();
}

void MatrixView::zoomToFit() {
  const qint64 all = std::max<qint64>(1, count());
  const auto fitting = [&](QSize room) {
    const qint64 side = std::min(room.width(), room.height()) / all;
    return static_cast<int>(std::clamp<qint64>(side, 1, kUsualCell));
  };
  // With names where they can be read, else with the room that they would take.
  zoomTo(kLeastName, body().topLeft());
  int side = fitting(body().size());
  if (side < kLeastName) {
    side = fitting(viewport()->size() - QSize(kNoNames, kNoNames));
    side = std::min(side, kLeastName - 1);
  }
  zoomTo(side, body().topLeft());
}

void MatrixView::resetZoom() { zoomTo(kUsualCell, body().center()); }

void MatrixView::resizeEvent(QResizeEvent*) {
  measureNames();
  placeBars();
}

void MatrixView::scrollContentsBy(int, int) { viewport()->update(); }

void MatrixView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    m_glyphs.palette(palette());
    m_names.clear();
  }
  if (event->type() == QEvent::FontChange) follow();
}

// ---- what a person does -------------------------------------------------------------------------

void MatrixView::hover(QPoint at) {
  const Cell under = cellAt(at);
  if (under == m_hovered) return;
  m_hovered = under;
  viewport()->update();
  LookedElsewhere();
}

bool MatrixView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) hover({-1, -1});
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const Cell cell = cellAt(help->pos());
    const QString words =
        cell.isValid() ? toQt(m_browser->Words(cell.row, cell.column)) : QString();
    QToolTip::showText(help->globalPos(), words.toHtmlEscaped().replace('\n', "<br>"), viewport(),
                       areaOf(cell));
    return true;
  }
  return QAbstractScrollArea::viewportEvent(event);
}

void MatrixView::mousePressEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (event->button() == Qt::MiddleButton) {
    m_panned = at;
    viewport()->setCursor(Qt::ClosedHandCursor);
    return;
  }
  const Cell cell = cellAt(at);
  if (!cell.isValid()) return;
  if (event->button() == Qt::LeftButton) {
    m_browser->Choose(cell.row, cell.column);
  } else if (event->button() == Qt::RightButton) {
    m_browser->Select(cell.row, cell.column);
    openMenu(cell, event->globalPosition().toPoint());
  }
  hover(at);
}

void MatrixView::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (m_panned.x() >= 0) {
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + m_panned.x() - at.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + m_panned.y() - at.y());
    m_panned = at;
  }
  hover(at);
}

void MatrixView::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::MiddleButton) return;
  m_panned = {-1, -1};
  viewport()->unsetCursor();
}

void MatrixView::mouseDoubleClickEvent(QMouseEvent* event) {
  const Cell cell = cellAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || cell.row < 1 || cell.column < 1) return;
  openMenu(cell, event->globalPosition().toPoint());
}

void MatrixView::wheelEvent(QWheelEvent* event) {
  if (event->modifiers().testFlag(Qt::ControlModifier)) {
    const int steps = event->angleDelta().y() > 0 ? 1 : event->angleDelta().y() < 0 ? -1 : 0;
    zoom(steps, event->position().toPoint());
    event->accept();
  } else if (event->modifiers().testFlag(Qt::ShiftModifier)) {
    QScrollBar& bar = *horizontalScrollBar();
    const double steps = event->angleDelta().y() / kWheelStep;
    bar.setValue(bar.value() - static_cast<int>(std::lround(steps * 3 * bar.singleStep())));
    event->accept();
  } else {
    QAbstractScrollArea::wheelEvent(event);
  }
  hover(event->position().toPoint());
}

void MatrixView::keyPressEvent(QKeyEvent* event) {
  const Cell current{m_browser->CurrentRow(), m_browser->CurrentColumn()};
  const bool shiftF10 = event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier;
  if (event->key() == Qt::Key_Menu || shiftF10) {
    openMenu(current, viewport()->mapToGlobal(areaOf(current).center()));
    return;
  }
  const std::string key = nameOfKey(*event);
  if (!m_browser->KeyPress(key, namesOfModifiers(event->modifiers()))) event->ignore();
}

void MatrixView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  // The keys must begin somewhere that is seen.
  if (m_browser->CurrentRow() == 0 && m_browser->CurrentColumn() == 0 && count() > 0) {
    m_browser->Select(seenRows().first + 1, seenColumns().first + 1);
  }
  viewport()->update();
}

void MatrixView::focusOutEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

void MatrixView::openMenu(Cell cell, QPoint at) {
  if (cell.row < 1 && cell.column < 1) return;
  QMenu* menu = menuOf(cell);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->popup(at);
}

QMenu* MatrixView::menuOf(Cell cell) {
  auto* menu = new QMenu(this);
  menu->setToolTipsVisible(true);
  const auto show = [this, cell] { m_browser->Choose(cell.row, cell.column); };
  if (cell.row < 1 || cell.column < 1) {
    connect(menu->addAction(tr("Select in &Diagram")), &QAction::triggered, this, show);
    return menu;
  }
  const Matrix& matrix = m_browser->matrix();
  const auto classAt = [&](qint64 number) {
    return matrix.at(static_cast<std::size_t>(number - 1)).node;
  };
  const auto row = classAt(cell.row);
  const auto column = classAt(cell.column);
  // While the menu is open the model may change, and rows move.
  const auto now = [this, row, column] {
    return Cell{m_browser->numberOf(*row), m_browser->numberOf(*column)};
  };
  for (const Made& made : kMade) {
    const std::string word(tools::wordOf(made.kind));
    QAction* action = menu->addAction(m_glyphs.icon(made.kind),
                                      tr(made.text).arg(inMenu(tools::titleOf(*column))));
    action->setObjectName(toQt("Make." + word));
    const std::string objection = m_browser->Objection(word, cell.row, cell.column);
    action->setEnabled(objection.empty());
    action->setToolTip(toQt(objection));
    connect(action, &QAction::triggered, this,
            [this, word, now] { m_browser->makeChosen(word, now().row, now().column); });
  }
  const auto marks = matrix.cell(static_cast<std::size_t>(cell.row - 1),
                                 static_cast<std::size_t>(cell.column - 1));
  if (marks.empty()) return menu;
  menu->addSeparator();
  connect(menu->addAction(tr("Select in &Diagram")), &QAction::triggered, this, show);
  menu->addSeparator();
  for (const Matrix::Mark& mark : marks) {
    const std::string key = mark.relationship->node->identifier();
    QAction* action = menu->addAction(
        tr("Delete: %1").arg(toQt(tools::sentenceOn(*mark.relationship)).replace('&', "&&")));
    action->setObjectName(toQt("Delete." + key));
    connect(action, &QAction::triggered, this,
            [this, key, now] { m_browser->deleteChosen(now().row, now().column, key); });
  }
  return menu;
}

}  // namespace brisel::qt
