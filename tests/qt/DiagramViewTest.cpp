#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include "qt/DiagramView.h"
#include "qt/InputNames.h"
#include "support/DiagramBuilder.h"

namespace brisel::qt {
namespace {

using platform::Point;
using platform::Rect;
using test::DiagramBuilder;

class DiagramViewTest : public testing::Test {
 protected:
  DiagramViewTest() : application(*qApp) {
    a = &diagram.box("a", "Alpha", 3000, 3000, {"+x:int"}, {"+f()"});
    b = &diagram.box("b", "Beta", 9000, 6000, {"+y:int"});
    view = std::make_unique<DiagramView>(diagram.control);
    view->resize(800, 600);
    view->show();
    application.processEvents();
  }

  QPointF middleOf(const canvas::Node& node) { return view->fromTwips(node.bounds().center()); }
  void mouse(QEvent::Type type, QPointF at, Qt::MouseButton button,
             Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const bool down = type != QEvent::MouseButtonRelease;
    QMouseEvent event(type, at, view->viewport()->mapToGlobal(at),
                      type == QEvent::MouseMove ? Qt::NoButton : button,
                      down ? Qt::MouseButtons(button) : Qt::NoButton, modifiers);
    QApplication::sendEvent(view->viewport(), &event);
  }
  void drag(QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    mouse(QEvent::MouseButtonPress, from, Qt::LeftButton, modifiers);
    mouse(QEvent::MouseMove, (from + to) / 2, Qt::LeftButton, modifiers);
    mouse(QEvent::MouseMove, to, Qt::LeftButton, modifiers);
    mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton, modifiers);
  }
  void wheel(QPointF at, QPoint angle, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWheelEvent event(at, view->viewport()->mapToGlobal(at), QPoint(), angle, Qt::NoButton,
                      modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view->viewport(), &event);
  }
  bool key(int code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QKeyEvent press(QEvent::KeyPress, code, modifiers);
    QApplication::sendEvent(view.get(), &press);
    QKeyEvent release(QEvent::KeyRelease, code, modifiers);
    QApplication::sendEvent(view.get(), &release);
    return press.isAccepted();
  }
  QColor colorAt(QPointF at) {
    application.processEvents();
    const QImage seen = view->viewport()->grab().toImage();
    return seen.pixelColor((at * seen.devicePixelRatio()).toPoint());
  }

  QApplication& application;
  DiagramBuilder diagram;
  canvas::Node* a = nullptr;
  canvas::Node* b = nullptr;
  std::unique_ptr<DiagramView> view;
};

TEST_F(DiagramViewTest, dragMovesABoxAndItsPicture) {
  const Rect before = a->bounds();
  const QPointF empty = view->fromTwips({2000, 2000});
  const QPointF corner = view->fromTwips(before.topLeft()) + QPointF(1, 1);
  EXPECT_EQ(colorAt(empty), QColor(Qt::white));
  EXPECT_NE(colorAt(corner + QPointF(12, 12)), QColor(Qt::white));
  const QPointF title = view->fromTwips({before.center().x, before.top + 100});
  drag(title, title + QPointF(60, -40));
  EXPECT_EQ(a->bounds(), before.movedBy({900, -600}));
  EXPECT_NE(colorAt(corner + QPointF(72, -28)), QColor(Qt::white));
  EXPECT_EQ(colorAt(view->fromTwips({before.left + 30, before.bottom() - 30})), QColor(Qt::white));
}

TEST_F(DiagramViewTest, scrollsWhileABoxIsHeldAtTheEdge) {
  const QPointF title = view->fromTwips({a->bounds().center().x, a->bounds().top + 100});
  const QPointF edge(view->viewport()->width() - 4, title.y());
  const auto scroll = [&] { return diagram.control->viewport().scroll().x; };
  mouse(QEvent::MouseButtonPress, title, Qt::LeftButton);
  mouse(QEvent::MouseMove, edge, Qt::LeftButton);
  QElapsedTimer waited;
  waited.start();
  while (scroll() < 300 && waited.elapsed() < 5000) {
    application.processEvents(QEventLoop::WaitForMoreEvents, 50);
  }
  EXPECT_GE(scroll(), 300);
  mouse(QEvent::MouseButtonRelease, edge, Qt::LeftButton);
  const double end = scroll();
  waited.start();
  while (waited.elapsed() < 60) application.processEvents();
  EXPECT_EQ(scroll(), end) << "nothing is held any more";
}

TEST_F(DiagramViewTest, wheelScrollsAndZoomsAtThePointer) {
  canvas::Viewport& seen = diagram.control->viewport();
  const Point scroll = seen.scroll();
  wheel({100, 100}, {0, -120});
  EXPECT_GT(seen.scroll().y, scroll.y);
  EXPECT_EQ(view->verticalScrollBar()->value(), int(std::lround(seen.scroll().y / 15)));
  wheel({100, 100}, {0, -120}, Qt::ShiftModifier);
  EXPECT_GT(seen.scroll().x, scroll.x);
  const QPointF pointer(300, 200);
  const Point under = view->toTwips(pointer);
  wheel(pointer, {0, 120}, Qt::ControlModifier);
  EXPECT_GT(seen.zoom(), 100);
  EXPECT_NEAR(view->toTwips(pointer).x, under.x, 15);
  EXPECT_NEAR(view->toTwips(pointer).y, under.y, 15);
}

TEST_F(DiagramViewTest, scrollBarsReachAllAndMoveTheCanvas) {
  diagram.box("far", "Far", 60000, 45000);
  QScrollBar& bar = *view->horizontalScrollBar();
  EXPECT_GE(bar.maximum() + bar.pageStep(), 60000 / 15 + 80);
  bar.setValue(1234);
  EXPECT_EQ(diagram.control->viewport().scroll().x, 1234 * 15);
  diagram.control->viewport().scrollTo({-3000, 0});
  EXPECT_EQ(bar.value(), -200);
  diagram.control->deleteNode(platform::Value("far"));
  EXPECT_EQ(diagram.control->viewport().scroll().x, -3000) << "the view stays where it is";
}

TEST_F(DiagramViewTest, keysReachTheCanvasUnderTheirNames) {
  EXPECT_TRUE(key(Qt::Key_A, Qt::ControlModifier));
  EXPECT_TRUE(a->selected() && b->selected());
  EXPECT_TRUE(key(Qt::Key_Escape));
  EXPECT_FALSE(a->selected());
  std::string released;
  const auto connection =
      diagram.control->KeyReleased.connect([&](const std::string& name) { released = name; });
  EXPECT_TRUE(key(Qt::Key_F1));
  EXPECT_EQ(released, "F1");
  EXPECT_FALSE(key(Qt::Key_Shift)) << "what has no name is left to the window";

  const std::pair<int, std::string> names[] = {{Qt::Key_Delete, "Delete"}, {Qt::Key_Left, "Left"},
                                               {Qt::Key_Backtab, "Tab"},   {Qt::Key_F12, "F12"},
                                               {Qt::Key_A, "a"},           {Qt::Key_Plus, "+"},
                                               {Qt::Key_Alt, ""}};
  for (const auto& [code, name] : names) {
    EXPECT_EQ(nameOfKey(QKeyEvent(QEvent::KeyPress, code, Qt::NoModifier)), name);
  }
}

TEST_F(DiagramViewTest, rubberBandSelectsAndIsGoneAfterwards) {
  const QPointF from = view->fromTwips({2000, 2000});
  const QPointF to = view->fromTwips(a->bounds().grownBy(300).topLeft() +
                                     Point{a->bounds().width + 600, a->bounds().height + 600});
  mouse(QEvent::MouseButtonPress, from, Qt::LeftButton);
  mouse(QEvent::MouseMove, to, Qt::LeftButton);
  EXPECT_NE(colorAt(from + QPointF(10, 10)), QColor(Qt::white));
  mouse(QEvent::MouseButtonRelease, to, Qt::LeftButton);
  EXPECT_TRUE(a->selected());
  EXPECT_FALSE(b->selected());
  EXPECT_EQ(colorAt(from + QPointF(10, 10)), QColor(Qt::white));
}

TEST_F(DiagramViewTest, pointerTellsWhatADragWouldDo) {
  mouse(QEvent::MouseMove, view->fromTwips({1000, 1000}), Qt::NoButton);
  const Qt::CursorShape onGround = view->viewport()->cursor().shape();
  a->selected(true);
  mouse(QEvent::MouseMove, view->fromTwips(a->bounds().topLeft()), Qt::NoButton);
  EXPECT_EQ(view->viewport()->cursor().shape(), Qt::SizeFDiagCursor);
  mouse(QEvent::MouseMove, view->fromTwips({1000, 1000}), Qt::NoButton);
  EXPECT_EQ(view->viewport()->cursor().shape(), onGround);
}

}  // namespace
}  // namespace brisel::qt
