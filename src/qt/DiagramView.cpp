#include "qt/DiagramView.h"

#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "qt/InputNames.h"
#include "qt/PopupMenu.h"

namespace brisel::qt {

using platform::Point;
using platform::Rect;

namespace {

constexpr double kWheelStep = 120;  ///< of QWheelEvent's angle
constexpr int kMarginPixels = 40;   ///< that can be scrolled beyond the outermost items
constexpr double kFarthestPixel = 1e9;
constexpr int kScrollTick = 16;  ///< milliseconds

Qt::CursorShape toQt(canvas::CursorShape shape) {
  switch (shape) {
    case canvas::CursorShape::arrow:
      return Qt::ArrowCursor;
    case canvas::CursorShape::cross:
      return Qt::CrossCursor;
    case canvas::CursorShape::move:
      return Qt::SizeAllCursor;
    case canvas::CursorShape::sizeNwSe:
      return Qt::SizeFDiagCursor;
    case canvas::CursorShape::sizeNeSw:
      return Qt::SizeBDiagCursor;
    case canvas::CursorShape::sizeHorizontal:
      return Qt::SizeHorCursor;
    case canvas::CursorShape::sizeVertical:
      return Qt::SizeVerCursor;
    case canvas::CursorShape::openHand:
      return Qt::OpenHandCursor;
    case canvas::CursorShape::closedHand:
      return Qt::ClosedHandCursor;
    case canvas::CursorShape::pointing:
      return Qt::PointingHandCursor;
    case canvas::CursorShape::forbidden:
      return Qt::ForbiddenCursor;
  }
  return Qt::ArrowCursor;
}

int toInt(double pixels) {
  return static_cast<int>(std::lround(std::clamp(pixels, -kFarthestPixel, kFarthestPixel)));
}

/// A bar over what there is and what is seen, from and to in pixels of the canvas.
void placeBar(QScrollBar& bar, double first, double last, double seen, double page) {
  bar.setRange(toInt(std::min(first, seen)), toInt(std::max(last - page, seen)));
  bar.setPageStep(toInt(page));
  bar.setSingleStep(toInt(canvas::kWheelPixels) / 3);
  bar.setValue(toInt(seen));
}

}  // namespace

DiagramView::DiagramView(platform::Ref<canvas::DiagramControl> control, QWidget* parent)
    : QAbstractScrollArea(parent), m_control(std::move(control)), m_picture(*m_control) {
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);

  canvas::Viewport& view = m_control->viewport();
  m_connections.push_back(m_control->scene().Damaged.connect(
      [this](const std::vector<Rect>& areas) { showDamage(areas); }));
  m_connections.push_back(view.ScrollChanged.connect([this] { showPosition(); }));
  m_connections.push_back(view.ZoomChanged.connect([this] { showPosition(); }));
  m_connections.push_back(m_control->CursorChanged.connect([this] { showCursor(); }));
  m_connections.push_back(m_control->AutoScrollChanged.connect([this] { showAutoScroll(); }));
  m_scrollTimer.setInterval(kScrollTick);
  connect(&m_scrollTimer, &QTimer::timeout, this, [this] { m_control->autoScroll(); });
}

Point DiagramView::toTwips(QPointF position) const {
  return m_control->viewport().toTwips(Point{position.x(), position.y()});
}

QPointF DiagramView::fromTwips(Point point) const {
  const Point pixels = m_control->viewport().toPixels(point);
  return {pixels.x, pixels.y};
}

void DiagramView::paintEvent(QPaintEvent* event) {
  const double ratio = viewport()->devicePixelRatioF();
  const QSizeF size = QSizeF(viewport()->size()) * ratio;
  m_picture.resize({toInt(std::ceil(size.width())), toInt(std::ceil(size.height()))}, ratio);
  QPainter painter(viewport());
  painter.setClipRegion(event->region());
  painter.drawImage(QPointF(), m_picture.update());
}

void DiagramView::resizeEvent(QResizeEvent*) {
  m_control->viewport().resize(
      {static_cast<double>(viewport()->width()), static_cast<double>(viewport()->height())});
  showPosition();
}

void DiagramView::showDamage(const std::vector<Rect>& areas) {
  m_picture.damage(areas);
  for (const Rect& area : areas) viewport()->update(m_picture.widgetRectOf(area));
  showPosition();
}

void DiagramView::showPosition() {
  const canvas::Viewport& view = m_control->viewport();
  const double scale = view.pixelsPerTwip();
  const Rect all = m_control->scene().extent();
  const Point seen = view.scroll() * scale;
  m_placingBars = true;
  placeBar(*horizontalScrollBar(), all.left * scale - kMarginPixels,
           all.right() * scale + kMarginPixels, seen.x, view.size().width);
  placeBar(*verticalScrollBar(), all.top * scale - kMarginPixels,
           all.bottom() * scale + kMarginPixels, seen.y, view.size().height);
  m_placingBars = false;
  if (!m_picture.isCurrentPart()) viewport()->update();
}

/// A bar was moved; where it was moved to is scrolled to.
void DiagramView::scrollContentsBy(int, int) {
  if (m_placingBars) return;
  const Point pixels{static_cast<double>(horizontalScrollBar()->value()),
                     static_cast<double>(verticalScrollBar()->value())};
  m_control->viewport().scrollTo(pixels * (1 / m_control->viewport().pixelsPerTwip()));
}

void DiagramView::showCursor() { viewport()->setCursor(toQt(m_control->cursor())); }

void DiagramView::showAutoScroll() {
  if (!m_control->autoScrolls()) {
    m_scrollTimer.stop();
  } else if (!m_scrollTimer.isActive()) {
    m_scrollTimer.start();
  }
}

void DiagramView::mousePressEvent(QMouseEvent* event) {
  const std::string button = nameOfButton(event->button());
  if (button.empty()) return event->ignore();  // empty stands for the left one
  const Point at = toTwips(event->position());
  m_control->PointerPress(at.x, at.y, button, namesOfModifiers(event->modifiers()));
}

void DiagramView::mouseMoveEvent(QMouseEvent* event) {
  const Point at = toTwips(event->position());
  m_control->PointerMove(at.x, at.y, namesOfModifiers(event->modifiers()));
}

void DiagramView::mouseReleaseEvent(QMouseEvent* event) {
  const std::string button = nameOfButton(event->button());
  if (button.empty()) return event->ignore();
  const Point at = toTwips(event->position());
  const PopupsAt place(event->globalPosition().toPoint());  // the mouse may be elsewhere by now
  m_control->PointerRelease(at.x, at.y, button, namesOfModifiers(event->modifiers()));
}

void DiagramView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) {
    mousePressEvent(event);
    return;
  }
  const Point at = toTwips(event->position());
  m_control->PointerDoubleClick(at.x, at.y);
}

bool DiagramView::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::Leave) m_control->PointerLeave();
  return QAbstractScrollArea::viewportEvent(event);
}

void DiagramView::wheelEvent(QWheelEvent* event) {
  const Point at = toTwips(event->position());
  const std::string modifiers = namesOfModifiers(event->modifiers() & ~Qt::AltModifier);
  const QPointF steps = QPointF(event->angleDelta()) / kWheelStep;
  if (steps.y() != 0) m_control->Wheel(at.x, at.y, steps.y(), modifiers);
  if (steps.x() != 0) m_control->Wheel(at.x, at.y, steps.x(), "shift");
}

/// The popup menu of the item that was selected last, at the item's middle or as near to it as is
/// seen.
void DiagramView::askForMenu() {
  const auto& selected = m_control->selection().selectedItems();
  if (selected.empty()) return;
  const platform::Ref<platform::DiagramItem> item(&selected.back()->object());
  const std::string key = item->key();
  const bool isNode = dynamic_cast<platform::DiagramNode*>(item.get()) != nullptr;
  const auto middle = m_control->GetCenter(platform::Value(platform::Ref<platform::Object>(item)));
  QPointF at = fromTwips({middle->get("x").number(), middle->get("y").number()});
  at.setX(std::clamp(at.x(), 0.0, static_cast<double>(viewport()->width())));
  at.setY(std::clamp(at.y(), 0.0, static_cast<double>(viewport()->height())));
  const PopupsAt place(viewport()->mapToGlobal(at.toPoint()));
  (isNode ? m_control->NodeRClicked : m_control->LinkRClicked)(key);
}

void DiagramView::keyPressEvent(QKeyEvent* event) {
  const bool shiftF10 = event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier;
  if (event->key() == Qt::Key_Menu || shiftF10) {
    askForMenu();
    return;
  }
  const std::string key = nameOfKey(*event);
  if (key.empty()) {
    event->ignore();
    return;
  }
  m_control->KeyPress(key, namesOfModifiers(event->modifiers()));
}

void DiagramView::keyReleaseEvent(QKeyEvent* event) {
  const std::string key = nameOfKey(*event);
  if (key.empty() || event->isAutoRepeat()) {
    event->ignore();
    return;
  }
  m_control->KeyRelease(key, namesOfModifiers(event->modifiers()));
}

}  // namespace brisel::qt
