#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"
#include "support/RecordingPainter.h"

namespace brisel::canvas {
namespace {

using platform::Connection;
using platform::Point;
using platform::Ref;
using test::DiagramBuilder;

/// Two boxes with rows, a line with a bend, and gestures on them that raise every event of a drag.
struct Stage : DiagramBuilder {
  Stage() {
    for (const char* key : {"a", "b"}) {
      Node& node = box(key, key, *key == 'a' ? 0 : 6000, 0, {"+x:int"});
      node.Section(0)->clearRows();
      node.Section(0)->addRow("+x:int", "STRING", "id");
    }
    line("l", "a", "b").bends({{4000, 4000}});
    control->viewport().resize({800, 600});
  }
  void drag(Point from, Point to) {
    control->PointerPress(from.x, from.y, "left", "");
    control->PointerMove((from.x + to.x) / 2, (from.y + to.y) / 2);
    control->PointerMove(to.x, to.y);
    control->autoScroll();
    test::RecordingPainter painter;
    control->paintGesture(painter, control->viewport().pixelsPerTwip());
    control->PointerRelease(to.x, to.y, "left", "");
  }
};

struct Gesture {
  const char* name;
  std::function<void(Stage&)> perform;
};
struct Reaction {
  const char* name;
  std::function<void(DiagramControl&)> react;
};

const std::vector<Gesture>& gestures() {
  static const std::vector<Gesture> kAll = {
      {"move",
       [](Stage& s) {
         s.drag({300, 200}, {11990, 3000});
       }},
      {"resize",
       [](Stage& s) {
         const auto box = s.control->getNode("b")->bounds();
         s.control->selNode("b");
         s.drag({box.right(), box.bottom()}, {11990, 8990});
       }},
      {"row",
       [](Stage& s) {
         s.drag({300, 700}, {6300, 200});
       }},
      {"row to the edge",
       [](Stage& s) {
         s.drag({300, 700}, {11990, 8990});
       }},
      {"bend",
       [](Stage& s) {
         s.control->selLink("l");
         s.drag({4000, 4000}, {4000, 8990});
       }},
      {"rubber band",
       [](Stage& s) {
         s.drag({3000, 7000}, {11990, 8990});
       }},
  };
  return kAll;
}

const std::vector<Reaction>& reactions() {
  static const std::vector<Reaction> kAll = {
      {"clears", [](DiagramControl& c) { c.Clear(); }},
      {"deletes a", [](DiagramControl& c) { c.deleteNode("a"); }},
      {"deletes b", [](DiagramControl& c) { c.deleteNode("b"); }},
      {"deletes the line", [](DiagramControl& c) { c.deleteLink("l"); }},
      {"ends the mode", [](DiagramControl& c) { c.SelectMode(); }},
      {"lays out", [](DiagramControl& c) { c.Layout("MATRIX"); }},
      {"presses Escape", [](DiagramControl& c) { c.KeyPress("Escape", ""); }},
      {"scrolls and zooms",
       [](DiagramControl& c) {
         c.autoScroll();
         c.zoom(c.getZoom() > 50 ? 40 : 90);
       }},
      {"begins another gesture", [](DiagramControl& c) { c.PointerPress(6300, 200, "left", ""); }},
      {"drops what it holds", [](DiagramControl& c) { c.PointerRelease(6300, 200, "left", ""); }},
  };
  return kAll;
}

/// Reacts to every event and to every question of the drop rule, one deep.
void react(Stage& stage, const Reaction& reaction, std::vector<Connection>& connections,
           int& times) {
  const auto act = [&stage, &reaction, &times, depth = std::make_shared<int>(0)] {
    if (*depth > 0) return;
    ++*depth;
    ++times;
    reaction.react(*stage.control);
    --*depth;
  };
  DiagramControl& c = *stage.control;
  const auto ignoring = [act](auto&&...) { act(); };
  for (auto* event : {&c.NodePressed, &c.NodeMoved, &c.NodeResized, &c.NodeEnter, &c.NodeLeave}) {
    connections.push_back(event->connect(ignoring));
  }
  connections.push_back(c.ItemDropped.connect(ignoring));
  connections.push_back(c.Scrolled.connect(ignoring));
  connections.push_back(c.CursorChanged.connect(ignoring));
  connections.push_back(c.AutoScrollChanged.connect(ignoring));
  connections.push_back(c.scene().Damaged.connect(ignoring));
  c.dropRule([act](auto&&...) {
    act();
    return true;
  });
}

TEST(Reentrance, aHostMayDoAnythingInsideTheEventsOfADrag) {
  for (const Gesture& gesture : gestures()) {
    for (const Reaction& reaction : reactions()) {
      SCOPED_TRACE(std::string(gesture.name) + ", and the host " + reaction.name);
      Stage stage;
      const Ref<DiagramControl> control = stage.control;
      std::vector<Connection> connections;
      int times = 0;
      react(stage, reaction, connections, times);
      gesture.perform(stage);
      EXPECT_GT(times, 0);
      EXPECT_EQ(test::checkInvariants(*control), "");
      connections.clear();
      control->dropRule({});
      control->KeyPress("Escape", "");
      EXPECT_FALSE(control->autoScrolls());
      test::RecordingPainter painter;
      control->paintGesture(painter, 1.0 / 15);
      EXPECT_TRUE(painter.frames.empty() && painter.lines.empty()) << "a gesture left a trace";
    }
  }
}

}  // namespace
}  // namespace brisel::canvas
