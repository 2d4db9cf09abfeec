#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "layout/Numbers.h"
#include "layout/Segments.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;

constexpr int kInherits = static_cast<int>(platform::Arrow::triangle);

/// A diagram of inheritance, associations and lines from a class to itself that was laid out as a
/// whole.
class ArrangeSelectedTest : public testing::Test, protected test::DiagramBuilder {
 protected:
  void draw(int classes, std::uint64_t seed, int hubLines = 0) {
    control->Clear();
    m_numbers = layout::Numbers(seed);
    for (int i = 0; i < classes; ++i) box(keyOf(i), "Class" + keyOf(i), 0, 0, {"+name:string"});
    for (int i = 1; i < classes; ++i) {
      if (i % 2 == 1) {
        line("g" + keyOf(i), keyOf(i), keyOf(i / 2)).endArrow(kInherits);
      } else {
        line("a" + keyOf(i), keyOf(i), keyOf(m_numbers.below(i)), "uses");
      }
      for (int k = i % 5; k > 2; --k) line("s" + keyOf(i) + keyOf(k), keyOf(i), keyOf(i));
    }
    for (int i = 0; i < hubLines; ++i) line("h" + keyOf(i), keyOf(5), keyOf(6 + i % (classes - 6)));
    control->Layout("%HIERARCHY%");
  }
  void select(int boxes, int classes) {
    control->unselectAll();
    std::set<int> some;
    while (static_cast<int>(some.size()) < boxes) some.insert(m_numbers.below(classes));
    for (const int i : some) control->selNode(keyOf(i));
  }
  ~ArrangeSelectedTest() override { EXPECT_EQ(test::checkInvariants(*control), ""); }

  static std::string keyOf(int i) { return "k" + std::to_string(i); }
  [[nodiscard]] Scene& scene() const { return control->scene(); }
  [[nodiscard]] std::map<std::string, Rect> places() const {
    std::map<std::string, Rect> all;
    for (const Node& node : scene().nodes()) all.emplace(node.key(), node.bounds());
    return all;
  }
  [[nodiscard]] std::map<std::string, std::vector<Point>> courses() const {
    std::map<std::string, std::vector<Point>> all;
    for (const Link& link : scene().links()) all.emplace(link.key(), link.points());
    return all;
  }

  /// Pairs of boxes that overlap, and of a line and a box that it enters.
  [[nodiscard]] std::string wrongBoxes() const {
    std::string wrong;
    for (const Node& node : scene().nodes()) {
      const Rect inner = node.bounds().grownBy(-1);
      if (inner.left < 0 || inner.top < 0) wrong += node.key() + " off the canvas\n";
      for (const Node& other : scene().nodes()) {
        if (&node != &other && inner.intersects(other.bounds())) wrong += node.key() + " over\n";
      }
      for (const Link& link : scene().links()) {
        const auto& points = link.points();
        for (std::size_t i = 1; i < points.size(); ++i) {
          if (!layout::crosses(points[i - 1], points[i], inner)) continue;
          wrong += link.key() + " through " + node.key() + "\n";
        }
      }
    }
    for (const Link& link : scene().links()) {
      for (const Point p : link.points()) {
        if (p.x < 0 || p.y < 0) wrong += link.key() + " off the canvas\n";
      }
    }
    return wrong;
  }
  /// Slanting pieces, and pairs of pieces of unrelated lines that lie on each other.
  [[nodiscard]] std::string wrongLines() const {
    struct Piece {
      double at, low, high;
      const Link* link;
    };
    std::vector<Piece> level, upright;
    std::string wrong;
    for (const Link& link : scene().links()) {
      const auto& points = link.points();
      for (std::size_t i = 1; i < points.size(); ++i) {
        const auto [a, b] = std::pair(points[i - 1], points[i]);
        if (a.y == b.y) {
          level.push_back({a.y, std::min(a.x, b.x), std::max(a.x, b.x), &link});
        } else if (a.x == b.x) {
          upright.push_back({a.x, std::min(a.y, b.y), std::max(a.y, b.y), &link});
        } else {
          wrong += link.key() + " slants\n";
        }
      }
    }
    for (const auto& pieces : {level, upright}) {
      for (const Piece& a : pieces) {
        for (const Piece& b : pieces) {
          if (a.link >= b.link || std::abs(a.at - b.at) > 5) continue;
          const bool isTrunk = a.link->endArrow() == kInherits && b.link->endArrow() == kInherits &&
                               &a.link->targetNode() == &b.link->targetNode();
          if (isTrunk || std::min(a.high, b.high) - std::max(a.low, b.low) < 15) continue;
          wrong += a.link->key() + " on " + b.link->key() + "\n";
        }
      }
    }
    return wrong;
  }

 private:
  layout::Numbers m_numbers{1};
};

TEST_F(ArrangeSelectedTest, leadsLinesAroundWhatStandsAndIsStable) {
  for (const std::uint64_t seed : {1, 2, 3, 4, 5, 6}) {
    for (const char* code : {"%HIERARCHY%", "MATRIX", "SPRING"}) {
      SCOPED_TRACE(code + std::to_string(seed));
      draw(40, seed);
      ASSERT_EQ(wrongBoxes() + wrongLines(), "");
      select(5 + static_cast<int>(seed) * 2, 40);
      const auto before = places();
      control->Layout(code);
      EXPECT_EQ(wrongBoxes(), "");
      EXPECT_EQ(wrongLines(), "");
      for (const auto& [key, rect] : places()) {
        EXPECT_TRUE(scene().node(key)->selected() || rect == before.at(key)) << key << " stands";
      }
      const auto laidOut = places();
      const auto led = courses();
      control->Layout(code);
      EXPECT_EQ(places(), laidOut) << "a second time changes nothing";
      EXPECT_EQ(courses(), led);
    }
  }
}

TEST_F(ArrangeSelectedTest, keepsTheManyLinesOfAClassApart) {
  for (const std::uint64_t seed : {1, 2}) {
    for (const char* code : {"%HIERARCHY%", "MATRIX", "SPRING"}) {
      SCOPED_TRACE(code + std::to_string(seed));
      draw(40, seed, 45);
      select(4, 40);
      control->selNode(keyOf(5));
      control->Layout(code);
      EXPECT_EQ(wrongBoxes(), "");
      EXPECT_EQ(wrongLines(), "");
      const auto led = courses();
      control->Layout(code);
      EXPECT_EQ(courses(), led) << "a second time changes nothing";
    }
  }
}

TEST_F(ArrangeSelectedTest, leavesFarLinesAlone) {
  draw(40, 7);
  select(2, 40);
  const auto before = courses();
  const auto stood = places();
  control->Layout("MATRIX");
  std::vector<Rect> moved;
  for (const auto& [key, rect] : places()) {
    if (rect != stood.at(key)) moved.push_back(rect.grownBy(100));
  }
  int changed = 0;
  for (const auto& [key, course] : courses()) {
    if (course == before.at(key)) continue;
    ++changed;
    const Link& link = *scene().link(key);
    if (link.sourceNode().selected() || link.targetNode().selected()) continue;
    const auto& old = before.at(key);
    bool wasInTheWay = false;
    for (std::size_t i = 1; i < old.size(); ++i) {
      for (const Rect& rect : moved) wasInTheWay |= layout::crosses(old[i - 1], old[i], rect);
    }
    EXPECT_TRUE(wasInTheWay) << key;
  }
  EXPECT_GT(changed, 0);
}

TEST_F(ArrangeSelectedTest, goesRoundABoxThatWasPutOnALine) {
  box("left", "Left", 300, 3000);
  box("right", "Right", 12000, 3000);
  box("high", "High", 5000, 1000);
  box("middle", "Middle", 5000, 1800);
  box("low", "Low", 5000, 5200);
  const Link& between = line("l", "left", "right");
  line("h", "middle", "high").endArrow(kInherits);
  line("m", "low", "middle").endArrow(kInherits);
  for (const char* key : {"high", "middle", "low"}) control->selNode(std::string(key));
  control->Layout("%HIERARCHY%");
  const Rect middle = scene().node("middle")->bounds();
  const double level = scene().node("left")->bounds().center().y;
  ASSERT_TRUE(middle.top < level && middle.bottom() > level) << "else it is not in the way";
  EXPECT_EQ(wrongBoxes(), "");
  EXPECT_EQ(wrongLines(), "");
  EXPECT_GE(between.bends().size(), 2U);
}

TEST_F(ArrangeSelectedTest, loopsWithBendsOfTheirOwnGoWithTheirBox) {
  box("a", "A", 300, 300);
  box("b", "B", 400, 400);
  box("c", "C", 6000, 300);
  Link& loop = line("loop", "b", "b");
  loop.bends({{2000, 600}, {2000, 200}, {1000, 200}});
  control->selNode(std::string("a"));
  control->selNode(std::string("b"));
  const Point before = scene().node("b")->bounds().topLeft();
  control->Layout("%HIERARCHY%");
  const Point way = scene().node("b")->bounds().topLeft() - before;
  EXPECT_NE(way, Point());
  EXPECT_EQ(loop.bends().front(), (Point{2000, 600} + way));
}

TEST_F(ArrangeSelectedTest, newBoxesAndTheirLinesComeAmongWhatStands) {
  draw(40, 8);
  for (const char* key : {"new1", "new2", "new3"}) box(key, key, 0, 0);
  line("n1", "new1", "k3").endArrow(kInherits);
  line("n2", "new2", "k7");
  line("n3", "new2", "k20");
  line("n4", "new3", "new1");
  for (const char* loop : {"n5", "n6"}) line(loop, "new1", "new1");
  const auto before = places();
  control->placeAmong({"new1", "new2", "new3"});
  EXPECT_EQ(wrongBoxes(), "");
  EXPECT_EQ(wrongLines(), "");
  for (const auto& [key, rect] : places()) {
    EXPECT_EQ(rect == before.at(key), key.starts_with("k")) << key;
  }
}

}  // namespace
}  // namespace brisel::canvas
