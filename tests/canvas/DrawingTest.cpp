#include <cmath>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "canvas/Palette.h"
#include "platform/Error.h"
#include "store/UUIDGenerator.h"
#include "support/CanvasChecks.h"
#include "support/CanvasHand.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;
using test::CanvasHand;
using test::checkInvariants;
using test::describe;

/// Two boxes beside each other with much room, and nothing else.
class DrawingTest : public testing::Test, protected CanvasHand {
 protected:
  DrawingTest() : a(box("a", "Alpha", 0, 0)), b(box("b", "Beta", 9000, 0)) {
    control->UUIDGenerator(platform::make<store::UUIDGenerator>().get());
    listening.push_back(control->NodeCreated.connect([this](const std::string&) {
      told += "created ";
      selectedInside = selected();
    }));
    listening.push_back(
        control->LinkCreated.connect([this](const std::string&) { told += "linked "; }));
    listening.push_back(control->ModeChanged.connect([this] { told += "mode "; }));
    control->GetDiagram()->set("CanDrawLink", true);
    told.clear();
  }
  ~DrawingTest() override { EXPECT_EQ(checkInvariants(*control), ""); }

  static Point edge(const Node& node) { return {node.left() + 5, node.bounds().center().y}; }
  static Point middle(const Node& node) { return node.bounds().center(); }
  std::size_t nodeCount() const { return control->scene().nodes().size(); }
  std::size_t linkCount() const { return control->scene().links().size(); }
  /// The only selected item.
  Node& madeNode() const { return *control->selection().nodes().at(0); }
  Link& madeLink() const { return *control->selection().links().at(0); }
  void enter(const char* mode) {
    std::vector<platform::Value> none;
    control->invoke(mode, none);
  }
  void refuse(const std::string& why) {
    control->linkRule([why](auto, auto, auto) { return why; });
  }

  Node& a;
  Node& b;
  std::string selectedInside;  ///< while a creation was told
};

TEST_F(DrawingTest, aClickOrADragOnEmptyCanvasMakesANode) {
  control->SetNewNodeSize(2000, 1000);
  const struct {
    const char* what;
    const char* mode;
    Point to;
    Rect made;
  } cases[] = {
      {"click", "ClickCreateMode", {3000, 5000}, {3000, 5000, 2000, 1000}},
      {"tremble", "ClickCreateMode", {3010, 4990}, {3000, 5000, 2000, 1000}},
      {"drag", "ClickCreateMode", {7000.4, 8000}, {3000, 5000, 4000, 3000}},
      {"backwards", "DrawCreateMode", {0, 3000}, {0, 3000, 3000, 2000}},
      {"click", "DrawCreateMode", {3000, 5000}, {3000, 5000, 2000, 1000}},
  };
  for (const auto& [what, mode, to, made] : cases) {
    SCOPED_TRACE(std::string(what) + " in " + mode);
    control->selNode("a");
    enter(mode);
    told.clear();
    press({3000, 5000});
    move(to);
    EXPECT_EQ(nodeCount(), 2U) << "nothing before the release";
    release(to);
    ASSERT_EQ(control->selection().size(), 1U);
    EXPECT_EQ(madeNode().text(), "newClass");
    EXPECT_EQ(madeNode().bounds(), made);
    EXPECT_EQ(madeNode().style(), Node::kClassBox);
    EXPECT_EQ(told, "created ");
    EXPECT_EQ(selectedInside, "a") << "selected after the creation was told";
    control->deleteNode(madeNode().key());
    EXPECT_NE(control->Mode(), "select") << "one can follow the other";
  }
}

TEST_F(DrawingTest, aDrawnNodeIsShownAndNeverTooSmallForItsTitle) {
  control->ClickCreateMode();
  press({3000, 5000});
  EXPECT_FALSE(showsGesture());
  move({2900, 4900});
  ASSERT_EQ(gesture().frames.size(), 2U);
  const Rect shown = gesture().frames.back();
  EXPECT_EQ(gesture().texts.at(0).text, "newClass");
  EXPECT_EQ(Point(shown.right(), shown.bottom()), (Point{3000, 5000})) << "grows out of its corner";
  release({2900, 4900});
  EXPECT_EQ(madeNode().bounds(), shown);
  EXPECT_EQ(shown.size(), madeNode().neededSize());
}

TEST_F(DrawingTest, inCreateModeBoxesAreStillSelectedAndMoved) {
  control->ClickCreateMode();
  told.clear();
  drag(middle(a), middle(a) + Point{600, 900});
  EXPECT_EQ(a.bounds().topLeft(), (Point{600, 900}));
  press({8000, -500}, "ctrl");
  move({15000, 5000});
  release({15000, 5000}, "ctrl");
  EXPECT_EQ(selected(), "ab") << "with a modifier the rubber band extends the selection";
  EXPECT_EQ(told, "pressed:a moved:a ");
  EXPECT_EQ(nodeCount(), 2U);
}

TEST_F(DrawingTest, aDragFromABorderDrawsALink) {
  control->linkBeginArrow(14);
  control->linkEndArrow(3);
  control->selNode("b");
  press(edge(a));
  move(edge(a) + Point{-60, 0});
  EXPECT_TRUE(gesture().lines.empty()) << "not before the border was left";
  move({5000, 3000});
  EXPECT_EQ(selected(), "b") << "nothing is selected by drawing";
  ASSERT_FALSE(gesture().lines.empty());
  EXPECT_EQ(gesture().lines.at(0).points.back(), (Point{5000, 3000}));
  EXPECT_EQ(gesture().polygons.size(), 1U) << "the diamond at its begin";
  EXPECT_EQ(hint, "Drag to the other class");
  move(middle(b));
  const auto shown = gesture();
  EXPECT_EQ(shown.fills.size(), 1U) << "the target is highlighted";
  EXPECT_EQ(control->Cursor(), "cross");
  release(middle(b));
  ASSERT_EQ(linkCount(), 1U);
  Link& made = madeLink();
  EXPECT_EQ(selected(), made.key());
  EXPECT_EQ(&made.sourceNode(), &a);
  EXPECT_EQ(&made.targetNode(), &b);
  EXPECT_EQ(made.points(), shown.lines.at(1).points) << "it runs as it was shown";
  EXPECT_EQ(made.endArrow(), 3);
  EXPECT_EQ(told, "pressed:a linked ");
  EXPECT_FALSE(showsGesture());
  drag(middle(b) + Point{0, b.height() / 2 + 60}, {a.bounds().right() + 70, middle(a).y});
  ASSERT_EQ(linkCount(), 2U) << "just beside the boxes is near enough";
  EXPECT_EQ(&madeLink().sourceNode(), &b);
}

TEST_F(DrawingTest, aSecondLineIsShownBesideTheFirst) {
  line("l", "a", "b");
  press(edge(a));
  move(middle(b));
  const auto shown = gesture().lines.at(1).points;
  release(middle(b));
  EXPECT_EQ(madeLink().points(), shown);
  EXPECT_NE(shown.front().y, middle(a).y);
}

TEST_F(DrawingTest, theNextLineMayBeginWhereTheLastOneEnds) {
  int reconnected = 0;
  const auto counting = control->LinkEndDropped.connect(
      [&](const std::string&, const std::string&, bool) { ++reconnected; });
  for (int i = 1; i <= 3; ++i) {
    press(edge(a));
    move(middle(b));
    release(middle(b));
    EXPECT_EQ(control->getAllLinks()->Count(), i) << "the last one is selected, with its handles";
  }
  EXPECT_EQ(reconnected, 0);
}

TEST_F(DrawingTest, aReturnToTheSourceDrawsALoop) {
  const struct {
    const char* what;
    std::vector<Point> way;
    bool loop;
  } cases[] = {
      {"out and back", {{-2000, 600}, middle(a)}, true},
      {"far inside", {{a.bounds().right() - 200, middle(a).y}}, true},
      {"a little inside", {edge(a) + Point{200, 0}}, false},
      {"along the border", {edge(a) + Point{0, 60}}, false},
  };
  for (const auto& [what, way, loop] : cases) {
    SCOPED_TRACE(what);
    press(edge(a));
    for (const Point at : way) move(at);
    EXPECT_EQ(!gesture().fills.empty(), loop);
    const auto shown = gesture();
    release(way.back());
    ASSERT_EQ(linkCount(), loop ? 1U : 0U);
    if (!loop) continue;
    EXPECT_TRUE(madeLink().isLoop());
    EXPECT_EQ(madeLink().points(), shown.lines.at(1).points);
    control->deleteLink(madeLink().key());
  }
  told.clear();
  click(edge(a));
  EXPECT_EQ(told, "pressed:a clicked:a ") << "without a drag the border is clicked";
  EXPECT_EQ(selected(), "a");
}

TEST_F(DrawingTest, whatTheRuleRefusesIsShownAndNotDrawn) {
  refuse("Beta must not");
  press(edge(a));
  move(middle(b));
  EXPECT_EQ(hint, "Beta must not");
  EXPECT_EQ(control->Cursor(), "forbidden");
  for (const auto& line : gesture().lines) {
    EXPECT_TRUE(line.pen.dashed);
    EXPECT_EQ(line.pen.color, palette::kRefused);
  }
  release(middle(b));
  EXPECT_EQ(linkCount(), 0U);
  EXPECT_NE(control->Cursor(), "forbidden");
  EXPECT_EQ(hint, "") << "nothing to say over a box";
  control->linkRule([](auto, auto, auto) -> std::string { throw std::runtime_error("broken"); });
  press(edge(a));
  EXPECT_NO_THROW(move(middle(b)));
  EXPECT_EQ(hint, "broken");
  EXPECT_NO_THROW(release(middle(b)));
  EXPECT_EQ(linkCount(), 0U);
  control->linkRule({});
  drag(edge(a), {5000, 5000});
  EXPECT_EQ(linkCount(), 0U) << "empty canvas ends no line";
  EXPECT_TRUE(control->createLink("l", "", "a", "b")) << "calls are not asked about";
}

TEST_F(DrawingTest, theBorderIsWideForTheHandAtEveryZoom) {
  for (const double zoom : {25.0, 100.0, 400.0}) {
    control->zoom(zoom);
    const double pixel = control->viewport().toTwips(1.0);
    const double inside = std::min(6 * pixel, a.height() / 4);
    const double x = middle(a).x;
    const struct {
      double y;
      const char* cursor;
    } cases[] = {{-7 * pixel, "arrow"},
                 {-5 * pixel, "cross"},
                 {0.9 * inside, "cross"},
                 {1.1 * inside, "move"}};
    for (const auto& [y, cursor] : cases) {
      move({x, y});
      EXPECT_EQ(control->Cursor(), cursor) << y << " at " << zoom << " %";
    }
  }
  control->noZoom();
  control->selNode("a");
  move(a.bounds().topLeft());
  EXPECT_EQ(control->Cursor(), "sizeNwSe") << "handles come first";
  control->unselectAll();
  control->SelectMode();
  drag({middle(a).x, 20}, {middle(a).x, 3020});
  EXPECT_EQ(linkCount(), 0U);
  EXPECT_EQ(a.top(), 3000) << "without link drawing the border moves its box";
}

TEST_F(DrawingTest, anEndOfASelectedLineIsDroppedOnAnotherNode) {
  Node& c = box("c", "Gamma", 4000, 6000);
  Link& l = line("l", "a", "b");
  control->SelectMode();
  const struct {
    const char* what;
    bool atSource;
    Point to;
    const char* rule;
    const char* told;
  } cases[] = {
      {"target", false, middle(c), "", "dropped:l target c "},
      {"source", true, middle(c), "", "dropped:l source c "},
      {"loop", false, middle(a), "", "dropped:l target a "},
      {"where it is", false, middle(b), "", ""},
      {"empty canvas", true, {4000, 4000}, "", ""},
      {"refused", true, middle(c), "no", ""},
  };
  for (const auto& [what, atSource, to, rule, wanted] : cases) {
    SCOPED_TRACE(what);
    refuse(rule);
    control->selLink("l");
    const std::string before = describe(*control);
    told.clear();
    drag(atSource ? l.points().front() : l.points().back(), to);
    EXPECT_EQ(told, wanted);
    EXPECT_EQ(describe(*control), before) << "who keeps the model reattaches";
    EXPECT_FALSE(showsGesture());
  }
  refuse("");
  l.bends({{4500, 3000}});
  press(l.points().back());
  move(middle(c));
  const auto shown = gesture().lines.at(1).points;
  const auto reattach = control->LinkEndDropped.connect(
      [&](const std::string&, const std::string&, bool) { l.reattachTarget(c); });
  release(middle(c));
  EXPECT_EQ(l.points(), shown) << "bends are kept";
  EXPECT_EQ(selected(), "l");
  told.clear();
  click(l.points().back());
  EXPECT_EQ(told, "clicked:l ") << "without a drag the line is clicked";
}

TEST_F(DrawingTest, bendsOfALoopBecomeItsOwn) {
  Link& l = line("l", "a", "a");
  control->SelectMode();
  control->selLink("l");
  const auto computed = l.points();
  drag(computed[2], computed[2] + Point{600, -600});
  ASSERT_EQ(l.bends().size(), 3U);
  EXPECT_EQ(l.bends()[1], (computed[2] + Point{600, -600}));
  EXPECT_EQ(l.bends()[0], computed[1]);
  told.clear();
  control->PointerDoubleClick(l.bends()[1].x, l.bends()[1].y);
  EXPECT_EQ(l.bends().size(), 2U);
  EXPECT_EQ(told, "") << "opens nothing";
}

TEST_F(DrawingTest, keysAndDoubleClicksAskWhoKeepsTheModel) {
  Link& l = line("l", "a", "b", "label");
  control->SelectMode();
  const struct {
    const char* key;
    std::vector<const char*> select;
    const char* told;
  } cases[] = {
      {"F2", {"a"}, "renaming:a "},
      {"F2", {"a", "b"}, "key:F2 "},
      {"F2", {}, "key:F2 "},
      {"Enter", {"b"}, "opened:b "},
      {"Return", {"l"}, "opened:l "},
      {"Enter", {"a", "l"}, "key:Enter "},
      {"Delete", {"a", "l"}, "delete "},
      {"Del", {"l"}, "delete "},
      {"Backspace", {"b"}, "delete "},
      {"Delete", {}, "key:Delete "},
  };
  for (const auto& [key, select, wanted] : cases) {
    control->unselectAll();
    for (const char* item : select) control->selNode(item) || control->selLink(item);
    told.clear();
    EXPECT_EQ(control->KeyPress(key, ""), !std::string(wanted).starts_with("key")) << key;
    EXPECT_EQ(told, wanted) << key;
  }
  EXPECT_EQ(nodeCount(), 2U) << "the canvas itself deletes nothing";
  told.clear();
  for (const Point at :
       {middle(a), l.labelArea().center(), l.points().front() + Point{500, 0}, Point{4000, 4000}}) {
    control->PointerDoubleClick(at.x, at.y);
  }
  EXPECT_EQ(told, "opened:a opened:l opened:l ");
  control->ClickCreateMode();
  click({4000, 4000});
  told.clear();
  control->PointerDoubleClick(4000, 4000);
  EXPECT_EQ(told, "") << "the second click of a hasty hand does not open what the first made";
}

TEST_F(DrawingTest, escapeLeavesTheModeAndThenTheSelection) {
  control->selNode("a");
  for (const char* mode : {"ClickCreateMode", "DrawCreateMode", ""}) {
    if (*mode != 0) enter(mode);
    control->GetDiagram()->set("CanDrawLink", true);
    told.clear();
    EXPECT_TRUE(control->KeyPress("Escape", ""));
    EXPECT_EQ(control->Mode(), "select");
    EXPECT_FALSE(control->canDrawLink());
    EXPECT_EQ(told, "mode ");
    EXPECT_EQ(selected(), "a");
  }
  EXPECT_TRUE(control->KeyPress("Escape", ""));
  EXPECT_EQ(selected(), "");
}

TEST_F(DrawingTest, hintsAndPointerTellWhatAPressWouldDo) {
  const Point empty{4000, 4000};
  const struct {
    const char* mode;
    Point at;
    const char* cursor;
    const char* hint;
  } cases[] = {
      {"ClickCreateMode", empty, "cross", "Click to place a class"},
      {"DrawCreateMode", empty, "cross", "Drag to draw a class"},
      {"DrawCreateMode", edge(a), "cross", "Drag to the other class"},
      {"DrawCreateMode", middle(a), "move", ""},
      {"SelectMode", edge(a), "move", ""},
      {"SelectMode", empty, "arrow", ""},
  };
  for (const auto& [mode, at, cursor, wanted] : cases) {
    enter(mode);
    move(at);
    EXPECT_EQ(control->Cursor(), cursor) << mode << wanted;
    EXPECT_EQ(hint, wanted) << mode;
  }
  control->ClickCreateMode();
  EXPECT_EQ(hint, "Click to place a class") << "at once";
  EXPECT_EQ(control->Cursor(), "cross");
  control->PointerLeave();
  control->SelectMode();
  EXPECT_EQ(hint, "");
}

TEST_F(DrawingTest, gesturesThatEndEarlyLeaveNoTrace) {
  Link& l = line("l", "a", "b");
  l.bends({{4500, 4000}});
  const std::vector<std::pair<const char*, std::vector<Point>>> gestures = {
      {"node", {{3000, 7000}, {6000, 9000}}},
      {"link", {edge(b), {6000, 3000}, middle(a)}},
      {"loop", {edge(b), {6000, 3000}, middle(b)}},
      {"source end", {l.points().front(), {6000, 3000}, middle(b)}},
      {"bend", {l.bends().front(), {6000, 3000}}},
      {"new bend", {(l.points()[0] + l.points()[1]) * 0.5, {6000, 3000}}},
  };
  using End = std::function<void(DiagramControl&)>;
  const std::vector<std::pair<const char*, End>> ends = {
      {"Escape", [](DiagramControl& c) { c.KeyPress("Escape", ""); }},
      {"mode", [](DiagramControl& c) { c.SelectMode(); }},
      {"setting", [](DiagramControl& c) { c.GetDiagram()->set("CanDrawLink", false); }},
  };
  for (const auto& [gesture, way] : gestures) {
    for (const auto& [ending, end] : ends) {
      SCOPED_TRACE(std::string(gesture) + " ended by " + ending);
      control->ClickCreateMode();
      control->unselectAll();
      control->selLink("l");
      const std::string before = describe(*control);
      press(way.front());
      for (const Point at : way) move(at);
      told.clear();
      end(*control);
      EXPECT_FALSE(showsGesture());
      release(way.back());
      EXPECT_EQ(describe(*control), before);
      EXPECT_TRUE(told.empty() || told == "mode ") << told;
    }
  }
}

TEST_F(DrawingTest, aGestureEndsWithTheItemsItNeeds) {
  Node& source = box("s", "Source", 4000, 6000);
  Node& target = box("t", "Target", 9000, 6000);
  for (const auto& [over, needed] : {std::pair{&target, "t"}, std::pair{&b, "s"}}) {
    press(edge(source));
    move({5000, 3000});
    move(middle(*over));
    ASSERT_EQ(hint, "Release to draw the line");
    told.clear();
    control->deleteNode(needed);
    EXPECT_FALSE(showsGesture()) << needed;
    EXPECT_NE(hint, "Release to draw the line");
    release(middle(a));
    EXPECT_EQ(told, "");
    EXPECT_EQ(linkCount(), 0U);
  }
}

TEST_F(DrawingTest, whatIsShownIsPaintedAndPaintedAway) {
  struct Shown {
    const char* mode;
    std::vector<Point> way;
  };
  for (const auto& [mode, way] : {Shown{"ClickCreateMode", {{3000, 7000}, {6000, 9000}}},
                                  Shown{"ClickCreateMode", {edge(a), {5000, 3000}, middle(b)}}}) {
    enter(mode);
    Rect damaged;
    const auto listener = control->scene().Damaged.connect([&](const std::vector<Rect>& areas) {
      for (const Rect& area : areas) damaged = damaged.united(area);
    });
    const auto covers = [&] {
      for (const auto& line : gesture().lines) {
        for (const Point p : line.points) {
          if (!damaged.grownBy(kHandlePixels * platform::kTwipsPerPixel).contains(p)) return false;
        }
      }
      for (const Rect& frame : gesture().frames) {
        if (!damaged.contains(frame)) return false;
      }
      return true;
    };
    press(way.front());
    for (const Point at : way) move(at);
    ASSERT_TRUE(showsGesture());
    damaged = {};
    move(way.back() + Point{15, 15});
    EXPECT_TRUE(covers());
    const Rect last = damaged;
    damaged = {};
    control->KeyPress("Escape", "");
    EXPECT_GE(damaged.width * damaged.height, 0.8 * last.width * last.height);
  }
}

TEST_F(DrawingTest, outlivesWhatItsListenersDo) {
  line("l", "a", "b");
  const std::vector<std::pair<const char*, std::function<void()>>> deeds = {
      {"clear", [this] { control->Clear(); }},
      {"delete nodes",
       [this] {
         control->deleteNode("a");
         control->deleteNode("b");
       }},
      {"select mode", [this] { control->SelectMode(); }},
      {"create", [this] { control->createNode("", "", 100, 100, 1, 1, 2); }},
      {"press", [this] { control->PointerPress(4000, 7000, "", ""); }},
      {"layout", [this] { control->Layout("MATRIX"); }},
      {"escape", [this] { control->KeyPress("Escape", ""); }},
      {"throw", [] { throw platform::Error(platform::ErrorNumber::notFound, "listener"); }},
  };
  int depth = 0;
  for (const auto& [what, deed] : deeds) {
    SCOPED_TRACE(what);
    const auto once = [&] {
      if (depth > 0) return;
      ++depth;
      try {
        deed();
      } catch (...) {
        --depth;
        throw;
      }
      --depth;
    };
    const auto forKey = [&](const std::string&) { once(); };
    std::vector<platform::Connection> meddling;
    for (const auto* event : {&control->NodeCreated, &control->LinkCreated, &control->NodePressed,
                              &control->NodeClicked, &control->Hint, &control->NodeOpened,
                              &control->NodeRenaming, &control->NodeEnter}) {
      meddling.clear();
      meddling.push_back(event->connect(forKey));
      meddling.push_back(control->ModeChanged.connect(once));
      meddling.push_back(control->DeleteAsked.connect(once));
      meddling.push_back(control->LinkEndDropped.connect(
          [&](const std::string&, const std::string&, bool) { once(); }));
      if (event == &control->NodeEnter) {
        control->linkRule([&](auto, auto, auto) {
          once();
          return std::string();
        });
      }
      const auto attempt = [&](const std::function<void()>& input) {
        try {
          input();
        } catch (const platform::Error&) {
        }
        EXPECT_EQ(checkInvariants(*control), "");
      };
      ++depth;
      control->createNode("a", "Alpha", 0, 0, 3000, 1200, 2);
      control->createNode("b", "Beta", 9000, 0, 3000, 1200, 2);
      control->createLink("l", "", "a", "b");
      --depth;
      attempt([&] { control->ClickCreateMode(); });
      attempt([&] { click({3000, 7000}); });
      attempt([&] { drag({3000, 7000}, {5000, 9000}); });
      for (const Point from : {Point{5, 600}, Point{3000, 600}, Point{9000, 600}}) {
        attempt([&] { control->selLink("l"); });
        attempt([&] { press(from); });
        attempt([&] { move({5000, 3000}); });
        attempt([&] { move({10000, 600}); });
        attempt([&] { release({10000, 600}); });
      }
      attempt([&] { click({1500, 600}); });
      for (const char* key : {"F2", "Enter", "Delete", "Escape", "Escape"}) {
        attempt([&] { control->KeyPress(key, ""); });
      }
      attempt([&] { control->PointerDoubleClick(10000, 600); });
      control->linkRule({});
    }
  }
}

TEST_F(DrawingTest, aNodeTakenAwayByItsListenerIsNotSelected) {
  control->selNode("a");
  const auto refuses =
      control->NodeCreated.connect([&](const std::string& key) { control->deleteNode(key); });
  control->ClickCreateMode();
  const std::string before = describe(*control);
  click({3000, 7000});
  EXPECT_EQ(describe(*control), before);
  control->UUIDGenerator(nullptr);
  click({3000, 7000});
  EXPECT_EQ(describe(*control), before) << "without a generator there is no key";
}

TEST_F(DrawingTest, refusesWrongInputAndLeavesNoTrace) {
  control->ClickCreateMode();
  const std::string before = describe(*control);
  int presses = 0;
  const auto counting = control->Pressed.connect([&] { ++presses; });
  using platform::Error;
  EXPECT_THROW(control->PointerPress(std::nan(""), 0, "left", ""), Error);
  EXPECT_THROW(control->PointerPress(0, 0, "none", ""), platform::CallError);
  EXPECT_THROW(control->PointerPress(0, 0, "left", "ctrl+hyper"), platform::CallError);
  EXPECT_THROW(control->PointerRelease(0, 0, "fourth", ""), platform::CallError);
  EXPECT_THROW(control->KeyPress("Space", "hyper"), platform::CallError);
  EXPECT_THROW(control->KeyRelease("Space", "hyper"), platform::CallError);
  EXPECT_THROW(control->Wheel(0, 0, 1, "hyper"), platform::CallError);
  EXPECT_EQ(presses, 0) << "nothing came of them";
  EXPECT_EQ(describe(*control), before);
  try {
    control->PointerPress(0, 0, "none", "");
  } catch (const Error& error) {
    EXPECT_NE(std::string(error.what()).find("none"), std::string::npos);
    EXPECT_NE(std::string(error.what()).find("middle"), std::string::npos);
  }
  const double nan = std::nan("");
  for (const Rect& wrong : {Rect{nan, 0, 1, 1}, Rect{0, 0, nan, 1}, Rect{0, 0, 1, nan},
                            Rect{0, 1e300, 1, 1}, Rect{0, 0, 1, 1e300}}) {
    EXPECT_THROW(control->createNode("n", "N", wrong.left, wrong.top, wrong.width, wrong.height, 2),
                 Error);
  }
  EXPECT_EQ(nodeCount(), 2U);
  press({1e300, -1e300}, "SHIFT+Alt", "");
  release({-1e300, 1e300});
  press({1e300, -1e300});
  move({-1e300, 1e300});
  EXPECT_NO_THROW(release({-1e300, 1e300}));
  EXPECT_EQ(nodeCount(), 3U) << "as large as there is room";
  control->PointerDoubleClick(4000, 4000);
  EXPECT_EQ(presses, 3) << "told of every press";
}

}  // namespace
}  // namespace brisel::canvas
