#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include "canvas/LinkBends.h"
#include "canvas/LinkRoute.h"
#include "layout/Segments.h"
#include "support/CanvasChecks.h"
#include "support/CanvasHand.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;
using Points = std::vector<Point>;

const Rect kUpper{1000, 0, 3000, 1500};
const Rect kLower{6000, 4000, 3000, 1500};

bool hasRightAngles(const Points& points) {
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (points[i].x != points[i - 1].x && points[i].y != points[i - 1].y) return false;
  }
  return true;
}

TEST(BendsFor, aLineOfRightAnglesIsDrawnAsItWasLaidOut) {
  const Rect below{1200, 4000, 3000, 1500};
  const struct {
    const char* what;
    Rect target;
    Points course;
    std::size_t bends;
  } kCases[] = {
      {"two turns", kLower, {{1300, 1500}, {1300, 2500}, {8900, 2500}, {8900, 4000}}, 2},
      {"points on the way",
       kLower,
       {{1300, 1500}, {1300, 2000}, {1300, 2500}, {4000, 2500}, {8900, 2500}, {8900, 4000}},
       2},
      {"straight down beside the middles", below, {{1300, 1500}, {1300, 4000}}, 1},
      {"straight down, a hair beside the middles", below, {{2597, 1500}, {2597, 4000}}, 1},
      {"straight down the middles", {1000, 4000, 3000, 1500}, {{2500, 1500}, {2500, 4000}}, 0},
      {"out of a side", kLower, {{4000, 300}, {7000, 300}, {7000, 4000}}, 1},
      {"round the back",
       kLower,
       {{1100, 0}, {1100, -500}, {9500, -500}, {9500, 5000}, {9000, 5000}},
       3}};
  for (const auto& one : kCases) {
    SCOPED_TRACE(one.what);
    const Points bends = bendsFor(kUpper, one.target, one.course);
    EXPECT_EQ(bends.size(), one.bends);
    const Points drawn = route(kUpper, one.target, bends, {});
    EXPECT_TRUE(hasRightAngles(drawn));
    EXPECT_EQ(drawn.front(), one.course.front());
    EXPECT_EQ(drawn.back(), one.course.back());
  }
}

TEST(BendsAfter, keepsTheSidesAndLeavesTheRestWhereThereIsRoom) {
  const Points course{{1300, 1500}, {1300, 2500}, {8900, 2500}, {8900, 4000}};
  const BoxChange still{kLower, kLower};
  EXPECT_EQ(bendsAfter(course, {kUpper, kUpper}, still, {}), (Points{{1300, 2500}, {8900, 2500}}));
  EXPECT_EQ(bendsAfter(course, {kUpper, kUpper.movedBy({-700, -200})}, still, {}),
            (Points{{600, 2500}, {8900, 2500}}));
  const Points pushed = bendsAfter(course, {kUpper, kUpper.movedBy({0, 1200})}, still, {});
  ASSERT_EQ(pushed.size(), 2U);
  EXPECT_EQ(pushed[0].y, pushed[1].y);
  EXPECT_GT(pushed[0].y, kUpper.bottom() + 1200) << "the bend does not stay under the box";
  const Points narrow = bendsAfter(course, {kUpper, {2000, 0, 2000, 1500}}, still, {});
  EXPECT_GT(narrow[0].x, 2000) << "an end stays on its side when that gets shorter";

  const Points straight{{1300, 1500}, {1300, 2500}, {1300, 4000}};
  const Rect below{1000, 4000, 3000, 1500};
  EXPECT_EQ(bendsAfter(straight, {kUpper, kUpper.movedBy({500, 0})}, {below, below}, {}),
            (Points{{1800, 2500}, {1300, 2500}}))
      << "a straight line gets a step";

  const Points slanted{{2500, 1500}, {4000, 3000}, {6000, 4000}};
  EXPECT_EQ(bendsAfter(slanted, {kUpper, kUpper.movedBy({50, 0})}, still, {}),
            (Points{{4000, 3000}}));
  EXPECT_EQ(bendsAfter(slanted, {kUpper, kUpper.movedBy({2000, 2000})}, still, {}), Points{})
      << "a box covers the bend";
}

TEST(BendsAfter, whereverTheBoxGoesTheLineKeepsItsRightAngles) {
  std::mt19937 random(7);
  const auto below = [&](int n) {
    return static_cast<double>(random() % static_cast<unsigned>(n));
  };
  const std::vector<Points> courses = {
      {{1300, 1500}, {1300, 2500}, {8900, 2500}, {8900, 4000}},
      {{4000, 700}, {7000, 700}, {7000, 4000}},
      {{1100, 0}, {1100, -500}, {9500, -500}, {9500, 5000}, {9000, 5000}}};
  int kept = 0;
  for (int i = 0; i < 3000; ++i) {
    const Points& course = courses[random() % courses.size()];
    const Rect moved{below(16000) - 4000, below(12000) - 4000, 3000, 1500};
    const bool first = random() % 2 == 0;
    const Rect source = first ? moved : kUpper;
    const Rect target = first ? kLower : moved;
    if (source.grownBy(130).intersects(target)) continue;
    const Points bends = bendsAfter(course, {kUpper, source}, {kLower, target}, {});
    const Points drawn = route(source, target, bends, {});
    SCOPED_TRACE(testing::Message() << (first ? "source" : "target") << " at " << moved.left << ','
                                    << moved.top << ", course " << course.size());
    ASSERT_TRUE(hasRightAngles(drawn));
    ASSERT_FALSE(layout::runsThrough(drawn, source));
    ASSERT_FALSE(layout::runsThrough(drawn, target));
    kept += bends.size() == course.size() - 2 ? 1 : 0;
  }
  EXPECT_GT(kept, 1000) << "mostly the line keeps its course";
}

TEST(RightAngled, severalBetweenTheSameBoxesNeitherTouchNorCross) {
  for (const Rect& target : {kLower, Rect{1500, 4000, 2600, 900}, Rect{9000, 300, 900, 3000},
                             Rect{-9000, 9000, 3000, 1500}, Rect{-9000, -9000, 3000, 1500}}) {
    std::vector<Points> lines;
    for (std::size_t i = 0; i < 5; ++i) {
      // Every second one runs the other way.
      const bool back = i % 2 == 1;
      const Rect& from = back ? target : kUpper;
      const Rect& to = back ? kUpper : target;
      lines.push_back(route(from, to, rightAngled(from, to, {i, 5, back}), {}));
      EXPECT_TRUE(hasRightAngles(lines.back()));
      for (std::size_t k = 0; k < i; ++k) {
        for (std::size_t p = 1; p < lines[i].size(); ++p) {
          for (std::size_t q = 1; q < lines[k].size(); ++q) {
            const Point a = lines[k][q - 1];
            const Point b = lines[k][q];
            const Rect thin = Rect{std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x),
                                   std::abs(a.y - b.y)}
                                  .grownBy(20);
            EXPECT_FALSE(layout::crosses(lines[i][p - 1], lines[i][p], thin))
                << i << " and " << k << " to " << target.left << ',' << target.top;
          }
        }
      }
    }
  }
}

TEST(LinesOfRightAngles, followTheHandAndComeBack) {
  test::DiagramBuilder diagram;
  Node& upper = diagram.box("u", "Upper", 0, 0, {"+one", "+two"});
  diagram.box("l", "Lower", 6000, 6000);
  Link& line = diagram.line("x", "u", "l");
  const double port = upper.bounds().left + 100;
  line.bends({{port, 4000}, {6300, 4000}});
  const auto before = test::describe(*diagram.control);
  const Point middle = upper.titleArea().center();
  auto& control = *diagram.control;
  control.PointerPress(middle.x, middle.y, "left", "");
  for (const Point by : {Point{900, 0}, {300, 2800}, {9000, 9000}, {600, 600}}) {
    control.PointerMove(middle.x + by.x, middle.y + by.y, "alt");
    EXPECT_TRUE(hasRightAngles(line.points())) << by.x << ' ' << by.y;
    EXPECT_EQ(test::checkInvariants(control), "");
  }
  EXPECT_EQ(line.bends().front(), (Point{port + 600, 4000}));
  control.KeyPress("Escape", "");
  EXPECT_EQ(test::describe(control), before) << "whatever was on the way";
}

}  // namespace
}  // namespace brisel::canvas
