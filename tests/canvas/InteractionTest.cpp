#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "support/CanvasChecks.h"
#include "support/CanvasHand.h"

namespace brisel::canvas {
namespace {

using platform::Object;
using platform::Point;
using platform::Rect;
using platform::Value;
using test::CanvasHand;
using test::checkInvariants;
using test::describe;

class InteractionTest : public testing::Test, protected CanvasHand {
 protected:
  InteractionTest()
      : a(box("a", "Alpha", 0, 0, {"+x:int", "+y:int"}, {"+f()"})),
        b(box("b", "Beta", 9000, 0)),
        l(line("l", "a", "b")) {
    a.Section(0)->clearRows();
    a.Section(0)->addRow("+x:int", "STRING", "id-x");
    a.Section(0)->addRow("+y:int", "STRING", "id-y");
  }
  ~InteractionTest() override { EXPECT_EQ(checkInvariants(*control), ""); }

  std::string hit(Point at) {
    const auto found = control->HitTest(at.x, at.y);
    if (!found) return "nothing";
    return found->get("item").object()->get("key").text() + ' ' + found->get("part").text() + ' ' +
           found->get("tag").text();
  }
  Point rowOf(const Node& node, std::size_t section, int row) const {
    return {node.left() + 300, node.firstRow(section) + (row + 0.5) * node.rowHeight()};
  }
  static Point titleOf(const Node& node) { return {node.left() + 300, node.top() + 150}; }

  Node& a;
  Node& b;
  Link& l;
};

TEST_F(InteractionTest, hitTestTellsPartAndTag) {
  l.text("label");
  const Rect box = a.bounds();
  const Point end = l.points().front();
  EXPECT_EQ(hit(titleOf(a)), "a title ");
  EXPECT_EQ(hit(rowOf(a, 0, 0)), "a row id-x");
  EXPECT_EQ(hit(rowOf(a, 0, 1)), "a row id-y");
  EXPECT_EQ(hit(rowOf(a, 1, 0)), "a row ");
  EXPECT_EQ(hit({box.left + 1, box.center().y}), "a border ");
  EXPECT_EQ(hit(l.labelArea().center()), "l label ");
  const Point quarter = end + (l.points().back() - end) * 0.25;
  EXPECT_EQ(hit(quarter + Point{0, 40}), "l border ") << "near is near enough";
  EXPECT_EQ(hit(quarter + Point{0, 90}), "nothing");
  control->zoom(25);
  EXPECT_EQ(hit(quarter + Point{0, 90}), "l border ") << "on the screen, that is";
  control->noZoom();
  control->selNode("a");
  control->selLink("l");
  EXPECT_EQ(hit(box.topLeft()), "a handle ");
  EXPECT_EQ(hit({box.left - 40, box.top - 40}), "a handle ") << "reaches beyond the box";
  EXPECT_EQ(hit(end), "l point ");
  EXPECT_EQ(control->HitTest(end.x, end.y)->get("item"), Value(control->getLink("l")));
  a.Section(0)->visible(false);
  EXPECT_EQ(hit(rowOf(a, 1, 0)), "a row ") << "hidden rows take no place";
  a.bounds({0, 0, box.width, 500});
  EXPECT_EQ(hit({300, 900}), "nothing") << "what is cut off is not there";
}

TEST_F(InteractionTest, theLaterBoxLiesOnTop) {
  Node& c = box("c", "C", 200, 100);
  EXPECT_EQ(hit(titleOf(c)), "c title ");
  control->deleteNode("c");
  EXPECT_EQ(hit({400, 200}), "a title ");
}

TEST_F(InteractionTest, clicksSelectAndModifiersExtend) {
  const Point onLine = (l.points()[0] + l.points()[1]) * 0.5;
  const struct {
    Point at;
    const char* modifiers;
    const char* selected;
  } cases[] = {{titleOf(a), "", "a"},    {titleOf(b), "", "b"},      {titleOf(a), "ctrl", "ba"},
               {onLine, "shift", "bal"}, {titleOf(b), "ctrl", "al"}, {onLine, "ctrl", "a"},
               {titleOf(a), "", "a"},    {onLine, "", "l"},          {{5000, 8000}, "shift", "l"},
               {{5000, 8000}, "", ""}};
  for (const auto& [at, modifiers, wanted] : cases) {
    click(at, modifiers);
    EXPECT_EQ(selected(), wanted) << modifiers;
  }
  told.clear();
  click(titleOf(a));
  click(titleOf(b), "", "right");
  EXPECT_EQ(selected(), "b") << "the menu is of what was clicked";
  click(onLine, "", "right");
  EXPECT_EQ(told, "pressed:a clicked:a rclicked:b rclicked:l ");
}

TEST_F(InteractionTest, theRubberBandTakesWhatLiesWhollyInIt) {
  const Rect box = a.bounds();
  drag({-500, -500}, {box.right() - 10, box.bottom() + 10});
  EXPECT_EQ(selected(), "");
  drag({box.right() + 200, box.bottom() + 200}, {-500, -500});
  EXPECT_EQ(selected(), "a") << "in every direction";
  press({8000, -500}, "ctrl");
  move({14000, 5000});
  EXPECT_TRUE(showsGesture());
  release({14000, 5000}, "ctrl");
  EXPECT_EQ(selected(), "ab");
  EXPECT_FALSE(showsGesture());
  drag({-500, -500}, {14000, 5000});
  EXPECT_EQ(selected(), "abl");
}

TEST_F(InteractionTest, movesWhatIsSelectedWithItsLines) {
  l.bends({{5000, 3000}});
  drag(titleOf(a), titleOf(a) + Point{1000, 700.4});
  EXPECT_EQ(a.bounds().topLeft(), (Point{1000, 700})) << "whole twips";
  EXPECT_EQ(b.bounds().topLeft(), (Point{9000, 0}));
  EXPECT_EQ(l.bends().front(), (Point{5000, 3000})) << "a bend stays while one end moves";
  EXPECT_TRUE(a.fitsText());
  EXPECT_EQ(told, "pressed:a moved:a ") << "no click after a drag";
  click(titleOf(b), "ctrl");
  told.clear();
  drag(titleOf(a), titleOf(a) + Point{-600, 300});
  EXPECT_EQ(b.bounds().topLeft(), (Point{8400, 300}));
  EXPECT_EQ(l.bends().front(), (Point{4400, 3300})) << "and goes along when both do";
  EXPECT_EQ(told, "pressed:a moved:a moved:b ");
  const Rect before = a.bounds();
  drag(titleOf(a), titleOf(a) + Point{20, 20});
  EXPECT_EQ(a.bounds(), before) << "a trembling hand does not move";
}

TEST_F(InteractionTest, handlesResizeDownToTheTitle) {
  control->selNode("a");
  const Rect box = a.bounds();
  drag({box.right(), box.bottom()}, {box.right() + 700, box.bottom() + 450});
  EXPECT_EQ(a.bounds(), (Rect{0, 0, box.width + 700, box.height + 450}));
  EXPECT_FALSE(a.fitsText()) << "a person's size is kept";
  EXPECT_EQ(told, "resized:a ");
  drag({a.bounds().right(), a.bounds().bottom()}, {-9000, -9000});
  EXPECT_EQ(a.bounds().topLeft(), box.topLeft());
  EXPECT_EQ(a.bounds().size(), a.minimumSize());
  drag({a.bounds().left, a.bounds().center().y}, {9000, 0});
  EXPECT_EQ(a.bounds().right(), a.minimumSize().width) << "the other side stays";
}

TEST_F(InteractionTest, bendsAreDrawnOutMovedAndTakenAway) {
  const Point middle = (l.points()[0] + l.points()[1]) * 0.5;
  drag(middle, middle + Point{0, 2000});
  EXPECT_TRUE(l.bends().empty()) << "not before the line is selected";
  click(middle);
  drag(middle, middle + Point{0, 2000});
  ASSERT_EQ(l.bends().size(), 1U);
  EXPECT_EQ(l.bends()[0].y, std::nearbyint(middle.y + 2000));
  drag(l.bends()[0], {5000, 4000});
  EXPECT_EQ(l.bends().front(), (Point{5000, 4000}));
  const Point half = (l.points()[1] + l.points()[2]) * 0.5;
  drag(half, half + Point{600, 900});
  ASSERT_EQ(l.bends().size(), 2U) << "a second one on the second half";
  control->PointerDoubleClick(l.bends()[1].x, l.bends()[1].y);
  EXPECT_EQ(l.bends().size(), 1U);
  drag(l.bends()[0], middle + Point{0, 30});
  EXPECT_TRUE(l.bends().empty()) << "dropped on the way, it goes";
}

TEST_F(InteractionTest, aLineIsBentByTheLabelOnItNotByTheTextsAtItsEnds) {
  l.text("label");
  l.beginText("role");
  click(l.labelArea().center());
  const Point text = l.beginTextArea().center();
  move(text);
  EXPECT_EQ(control->Cursor(), "arrow");
  drag(text, text + Point{0, 2000});
  EXPECT_TRUE(l.bends().empty());
  l.bends({{5000, 5000}});
  const Point label = l.labelArea().center();
  const bool onFirstHalf = label.x < 5000;
  move(label);
  EXPECT_EQ(control->Cursor(), "move");
  drag(label, label + Point{0, 3000});
  ASSERT_EQ(l.bends().size(), 2U);
  EXPECT_EQ(l.bends()[onFirstHalf ? 1 : 0], (Point{5000, 5000})) << "on the half that was held";
}

TEST_F(InteractionTest, pansWithTheMiddleButtonAndWithSpace) {
  control->PointerPress(1000, 1000, "middle", "");
  // The view moves under the pointer: the place under the hand stays the same.
  control->PointerMove(400, 700);
  control->PointerRelease(1000, 1000, "middle", "");
  EXPECT_EQ(control->viewport().scroll(), (Point{600, 300}));
  control->KeyPress("Space", "");
  EXPECT_EQ(control->Cursor(), "openHand");
  drag(titleOf(a), titleOf(a) + Point{1500, 0});
  EXPECT_EQ(a.bounds().left, 0) << "the canvas moved, not the box";
  EXPECT_LT(control->viewport().scroll().x, 600);
}

TEST_F(InteractionTest, theWheelScrollsAndZoomsAtThePointer) {
  control->Wheel(0, 0, -1, "");
  EXPECT_GT(control->viewport().scroll().y, 0);
  control->Wheel(0, 0, 1, "");
  control->Wheel(0, 0, -1, "shift");
  EXPECT_EQ(control->viewport().scroll().y, 0);
  EXPECT_GT(control->viewport().scroll().x, 0);
  const Point at{4500, 3000};
  const Point seen = control->viewport().toPixels(at);
  for (const double steps : {1.0, 3.0, -7.0, 20.0, -50.0}) {
    control->Wheel(at.x, at.y, steps, "ctrl");
    const Point now = control->viewport().toPixels(at);
    EXPECT_NEAR(now.x, seen.x, 3) << steps;
    EXPECT_NEAR(now.y, seen.y, 3) << steps;
  }
}

TEST_F(InteractionTest, keysMoveSelectAndZoom) {
  EXPECT_TRUE(control->KeyPress("Tab", ""));
  EXPECT_EQ(selected(), "a");
  control->KeyPress("Right", "shift");
  control->KeyPress("Up", "");
  EXPECT_EQ(a.bounds().left, kGridStep);
  EXPECT_EQ(a.top(), -platform::kTwipsPerPixel) << "finer without shift";
  told.clear();
  for (const char* key : {"Tab", "Tab"}) control->KeyPress(key, "");
  EXPECT_EQ(selected(), "l") << "lines after boxes";
  EXPECT_FALSE(control->KeyPress("Tab", "")) << "behind the last the focus goes on";
  control->KeyPress("Tab", "shift");
  EXPECT_EQ(selected(), "b");
  EXPECT_EQ(told, "key:Tab ");
  control->KeyPress("a", "ctrl");
  EXPECT_EQ(selected(), "abl");
  EXPECT_TRUE(control->KeyPress("Escape", ""));
  EXPECT_EQ(selected(), "");
  control->KeyPress("-", "ctrl");
  EXPECT_LT(control->getZoom(), 100);
  control->KeyPress("0", "ctrl");
  EXPECT_EQ(control->getZoom(), 100);
  told.clear();
  EXPECT_FALSE(control->KeyPress("F1", ""));
  EXPECT_EQ(told, "key:F1 ");
}

TEST_F(InteractionTest, escapeTakesAGestureBackWithoutATrace) {
  control->selNode("b");
  control->selLink("l");
  const Rect box = b.bounds();
  const Point onLine = (l.points()[0] + l.points()[1]) * 0.5;
  for (const Point start : {titleOf(a),
                            titleOf(b),
                            {box.right(), box.bottom()},
                            onLine,
                            Point{-3000, -3000},
                            l.points()[0]}) {
    const std::string before = describe(*control);
    press(start);
    move(start + Point{2000, 3000});
    move({13000, 9000});
    EXPECT_TRUE(control->KeyPress("Escape", ""));
    EXPECT_EQ(describe(*control), before);
    told.clear();
    release({13000, 9000});
    EXPECT_EQ(describe(*control), before);
    EXPECT_EQ(told, "") << "the release ends nothing any more";
  }
}

TEST_F(InteractionTest, tellsWhatThePointerEntersAndLeaves) {
  move(titleOf(a));
  move(rowOf(a, 0, 0));
  move((l.points()[0] + l.points()[1]) * 0.5);
  move(titleOf(b));
  control->PointerLeave();
  EXPECT_EQ(told, "enter:a leave:a enter:l leave:l enter:b leave:b ");
  move(titleOf(a));
  control->deleteNode("a");
  told.clear();
  move({-5000, -5000});
  EXPECT_EQ(told, "") << "what is gone is not left";
}

TEST_F(InteractionTest, outlivesWhatItsHandlersDo) {
  const auto gone = control->NodePressed.connect([&](const std::string&) { control->Clear(); });
  drag(titleOf(a), {4000, 4000});
  EXPECT_EQ(control->getAllNodes()->Count(), 0);
  control->createNode("n", "N", 0, 0, 3000, 1500, 2);
  const auto again = control->NodeClicked.connect([&](const std::string&) { control->Clear(); });
  click({300, 300});
  control->createNode("n", "N", 0, 0, 3000, 1500, 2);
  control->createNode("m", "M", 6000, 0, 3000, 1500, 2);
}

TEST_F(InteractionTest, aGestureEndsWithTheItemItNeeds) {
  press(titleOf(a));
  move(titleOf(a) + Point{900, 900});
  control->deleteNode("a");
  move({5000, 5000});
  release({5000, 5000});
  EXPECT_EQ(told.find("moved"), std::string::npos);
  control->selNode("b");
  const Rect box = b.bounds();
  press({box.right(), box.bottom()});
  control->SelectMode();
  move({20000, 20000});
  EXPECT_EQ(b.bounds(), box) << "a change of mode ends it too";
}

}  // namespace
}  // namespace brisel::canvas
