#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"
#include "support/RecordingPainter.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;
using test::DiagramBuilder;

class RowDragTest : public testing::Test, protected DiagramBuilder {
 protected:
  RowDragTest()
      : a(box("a", "Alpha", 0, 0, {"+x:int", "EMPTY ATT"}, {"+f()"})),
        b(box("b", "Beta", 6000, 0)),
        c(box("c", "Gamma", 0, 6000)) {
    a.Section(0)->clearRows();
    a.Section(0)->addRow("+x:int", "STRING", "id-x");
    a.Section(0)->addRow("EMPTY ATT", "STRING", "");
    dropped = control->ItemDropped.connect(
        [this](const std::string& key, const std::string& tag, double x, double y) {
          told += key + ' ' + tag + ' ' + std::to_string(static_cast<int>(x)) + ',' +
                  std::to_string(static_cast<int>(y)) + ' ';
        });
    hinted = control->Hint.connect([this](const std::string& text) { hint = text; });
    control->dropRule([this](std::string_view node, std::string_view tag, std::string_view target) {
      asked += std::string(node) + ' ' + std::string(tag) + ' ' + std::string(target) + ';';
      return target != "c";
    });
  }
  ~RowDragTest() override { EXPECT_EQ(test::checkInvariants(*control), ""); }

  Point rowOf(int row) const { return {a.left() + 300, a.firstRow(0) + (row + 0.5) * 240}; }
  void press(Point at, const char* modifiers = "") {
    control->PointerPress(at.x, at.y, "left", modifiers);
  }
  void move(Point at) { control->PointerMove(at.x, at.y); }
  void release(Point at) { control->PointerRelease(at.x, at.y, "left", ""); }
  test::RecordingPainter painted() const {
    test::RecordingPainter painter;
    control->paintGesture(painter, 1.0 / 15);
    return painter;
  }

  Node& a;
  Node& b;
  Node& c;
  platform::Connection dropped, hinted;
  std::string told, asked, hint;
};

TEST_F(RowDragTest, dropsWhereTheRuleAllows) {
  const struct {
    const char* what;
    Point to;
    const char* cursor;
    const char* hint;
    const char* told;
    const char* asked;
    std::size_t frames;
  } cases[] = {
      {"another class",
       {6300, 200},
       "closedHand",
       "Release to move it to this class",
       "a id-x 6300,200 ",
       "a id-x b;",
       2},
      {"a class that must not have it",
       {300, 6200},
       "forbidden",
       "This cannot be dropped here",
       "",
       "a id-x c;",
       1},
      {"its own class", {400, 200}, "closedHand", "Drag to another class", "", "", 1},
      {"empty canvas",
       {3000, 4000},
       "closedHand",
       "Release to make a class of it",
       "a id-x 3000,4000 ",
       "a id-x ;",
       1},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    told.clear();
    asked.clear();
    const std::string before = test::describe(*control);
    press(rowOf(0));
    move(test.to);
    EXPECT_EQ(control->Cursor(), test.cursor);
    EXPECT_EQ(hint, test.hint);
    const auto picture = painted();
    EXPECT_EQ(picture.frames.size(), test.frames) << "the ghost, and the class that would take it";
    ASSERT_EQ(picture.texts.size(), 1U);
    EXPECT_EQ(picture.texts[0].text, "+x:int");
    EXPECT_TRUE(picture.frames.back().contains(test.to)) << "the ghost is under the pointer";
    release(test.to);
    EXPECT_EQ(told, test.told);
    EXPECT_EQ(hint, "");
    EXPECT_EQ(asked, test.asked) << "asked once for each target";
    EXPECT_TRUE(painted().frames.empty());
    EXPECT_EQ(a.bounds().topLeft(), Point{}) << "the box stays";
    control->unselectAll();
    EXPECT_EQ(test::describe(*control), before);
  }
}

TEST_F(RowDragTest, theBoxMovesWhereNoRowIsMeant) {
  const Point way{0, 3000};
  const auto movesFrom = [&](Point start, const char* modifiers) {
    const Point before = a.bounds().topLeft();
    press(start, modifiers);
    move(start + way * 0.5);
    release(start + way);
    const bool moved = a.bounds().topLeft() != before;
    control->unselectAll();
    a.bounds({before.x, before.y, a.width(), a.height()});
    return moved;
  };
  EXPECT_TRUE(movesFrom(rowOf(1), "")) << "a row that stands for nothing";
  EXPECT_TRUE(movesFrom({300, 200}, "")) << "the title";
  EXPECT_TRUE(movesFrom(rowOf(0), "ctrl")) << "what is added to the selection";
  control->selNode("b");
  control->selNode("a");
  EXPECT_TRUE(movesFrom(rowOf(0), "")) << "one of several that are selected";
  control->zoom(20);
  EXPECT_TRUE(movesFrom(rowOf(0), "")) << "rows too small to be read";
  control->noZoom();
  EXPECT_FALSE(movesFrom(rowOf(0), ""));
  EXPECT_EQ(told, "a id-x 300,3645 ");
  press(rowOf(0));
  release(rowOf(0) + Point{20, 0});
  EXPECT_EQ(told, "a id-x 300,3645 ") << "a trembling hand drags nothing";
}

TEST_F(RowDragTest, endsWithoutADrop) {
  const auto start = [&] {
    press(rowOf(0));
    move({6300, 200});
  };
  control->selNode("c");
  const std::string before = test::describe(*control);
  start();
  control->KeyPress("Escape", "");
  EXPECT_EQ(test::describe(*control), before);
  release({6300, 200});
  start();
  control->deleteNode("b");
  EXPECT_EQ(painted().frames.size(), 1U) << "what is gone is not highlighted";
  control->deleteNode("a");
  EXPECT_TRUE(painted().frames.empty());
  release({6300, 200});
  EXPECT_EQ(told, "");
}

TEST_F(RowDragTest, outlivesWhatItsHandlersDo) {
  const auto cleared = control->ItemDropped.connect([&](auto&&...) { control->Clear(); });
  press(rowOf(0));
  move({6300, 200});
  release({6300, 200});
  EXPECT_TRUE(control->scene().nodes().empty());
  Node& d = box("d", "Delta", 0, 0, {"+y"});
  d.Section(0)->clearRows();
  d.Section(0)->addRow("+y", "STRING", "id-y");
  control->dropRule([&](auto&&...) {
    control->Clear();
    return true;
  });
  press({300, d.firstRow(0) + 100});
  move({6300, 200});
  release({6300, 200});
  EXPECT_EQ(told, "a id-x 6300,200 ");
}

class AutoScrollTest : public testing::Test, protected DiagramBuilder {
 protected:
  AutoScrollTest() : a(box("a", "Alpha", 3000, 3000)) {
    box("far", "Far", 60000, 60000);
    view().resize({800, 600});
    changed = control->AutoScrollChanged.connect([this] { ++changes; });
  }
  ~AutoScrollTest() override { EXPECT_EQ(test::checkInvariants(*control), ""); }
  Viewport& view() { return control->viewport(); }
  /// At a pixel of the view.
  void press(double x, double y, const char* modifiers = "") {
    const Point at = view().toTwips(Point{x, y});
    control->PointerPress(at.x, at.y, "left", modifiers);
  }
  void move(double x, double y) {
    const Point at = view().toTwips(Point{x, y});
    control->PointerMove(at.x, at.y);
  }
  void release(double x, double y) {
    const Point at = view().toTwips(Point{x, y});
    control->PointerRelease(at.x, at.y, "left", "");
  }

  Node& a;
  platform::Connection changed;
  int changes = 0;
};

TEST_F(AutoScrollTest, whatIsDraggedGoesAlong) {
  press(210, 210);
  EXPECT_FALSE(control->autoScrolls());
  move(400, 300);
  EXPECT_FALSE(control->autoScrolls());
  move(795, 300);
  EXPECT_TRUE(control->autoScrolls());
  EXPECT_EQ(changes, 1);
  const Point box = a.bounds().topLeft();
  control->autoScroll();
  const Point slow = view().scroll();
  EXPECT_GT(slow.x, 0);
  EXPECT_EQ(slow.y, 0);
  EXPECT_EQ(a.bounds().topLeft(), box + slow) << "it stays under the pointer";
  move(900, 300);
  control->autoScroll();
  EXPECT_GT(view().scroll().x - slow.x, slow.x) << "faster further out";
  move(400, 300);
  EXPECT_FALSE(control->autoScrolls());
  EXPECT_EQ(changes, 2);
  move(400, 610);
  EXPECT_TRUE(control->autoScrolls());
  release(400, 610);
  EXPECT_FALSE(control->autoScrolls()) << "nothing is dragged any more";
  EXPECT_EQ(changes, 4);
  const Point end = view().scroll();
  control->autoScroll();
  EXPECT_EQ(view().scroll(), end);
}

TEST_F(AutoScrollTest, theRubberBandStopsScrollingBehindTheLastBox) {
  press(500, 500);
  move(810, 620);
  for (int i = 0; i < 5000; ++i) control->autoScroll();
  const Rect all = control->scene().extent();
  EXPECT_TRUE(view().visible().contains(Point{all.right(), all.bottom()}));
  EXPECT_TRUE(
      all.grownBy(600).contains(Point{view().visible().right(), view().visible().bottom()}));
  release(810, 620);
  ASSERT_EQ(control->selection().size(), 1U);
  EXPECT_EQ(control->selection().selectedItems()[0]->itemKey(), "far");
}

TEST_F(AutoScrollTest, onlyWhoGoesTowardsTheEdgeMeansToScroll) {
  view().scrollTo(a.bounds().topLeft() - Point{15 * 5, 15 * 5});
  press(12, 12);
  EXPECT_FALSE(control->autoScrolls()) << "a press is no drag";
  move(16, 16);
  EXPECT_FALSE(control->autoScrolls()) << "pressed at the edge, and moved away from it";
  move(3, 200);
  EXPECT_TRUE(control->autoScrolls());
  control->KeyPress("Escape", "");
  EXPECT_FALSE(control->autoScrolls());
}

}  // namespace
}  // namespace brisel::canvas
