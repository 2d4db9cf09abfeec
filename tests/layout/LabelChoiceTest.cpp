#include <algorithm>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "layout/LabelChoice.h"

namespace brisel::layout {
namespace {

using platform::Point;
using platform::Rect;

/// A level line with three places for a text: on it, above it, and far above it.
struct LabelPlaces {
  const std::vector<Point> course{{0, 0}, {4000, 0}};
  const Rect on{1500, -120, 1000, 240};
  const Rect above{1500, -400, 1000, 240};
  const Rect far{1500, -1400, 1000, 240};
  std::vector<Rect> solids;
  std::vector<std::pair<Point, Point>> lines;
  std::vector<Rect> examined;

  Rect best() {
    const LabelSurroundings around{.covered =
                                       [&](const Rect& area, double) {
                                         double sum = 0;
                                         for (const Rect& solid : solids) {
                                           const double width =
                                               std::min(area.right(), solid.right()) -
                                               std::max(area.left, solid.left);
                                           sum += area.intersects(solid) ? width : 0;
                                         }
                                         return sum;
                                       },
                                   .inTheWay =
                                       [&](const Rect& area) {
                                         Rect all;
                                         for (const Rect& solid : solids) {
                                           if (area.intersects(solid)) all = all.united(solid);
                                         }
                                         return all;
                                       },
                                   .crossed =
                                       [&](const Rect& area, int) {
                                         int sum = 0;
                                         for (const auto& [from, to] : lines)
                                           sum += strike(from, to, area);
                                         return sum;
                                       }};
    examined.clear();
    return bestOf({{on, true}, {above, false, 2}, {far, false, kCrowd}}, course, around, {},
                  examined);
  }
  void strikeAcross(const Rect& place, int times) {
    for (int i = 0; i < times; ++i) {
      lines.push_back({place.topLeft() + Point{50.0 * i + 50, -5},
                       place.topLeft() + Point{50.0 * i + 50, place.height + 5}});
    }
  }
  void strikeAlong(const Rect& place) {
    lines.push_back({place.center() - Point{900, 0}, place.center() + Point{900, 0}});
  }
};

TEST(LabelChoice, makesWayForSolidsFurtherThanForLines) {
  LabelPlaces places;
  EXPECT_EQ(places.best(), places.on);
  EXPECT_EQ(places.examined, std::vector{places.on.grownBy(LabelGaps{}.clear)});

  places.strikeAcross(places.on, 2);
  EXPECT_EQ(places.best(), places.on) << "as little as that it had better suffer";
  places.strikeAcross(places.on, 1);
  EXPECT_EQ(places.best(), places.above);
  places.strikeAcross(places.above, 2);
  EXPECT_EQ(places.best(), places.on) << "far away would be free, but for lines alone is too far";

  places.solids = {places.on};
  EXPECT_EQ(places.best(), places.above) << "any line rather than a box";
  places.solids.push_back(places.above);
  EXPECT_EQ(places.best(), places.far);
}

TEST(LabelChoice, isStruckAcrossRatherThanAlongTheWords) {
  LabelPlaces places;
  places.strikeAlong(places.on);
  EXPECT_EQ(places.best(), places.above);
  places.strikeAcross(places.above, 2);
  EXPECT_EQ(places.best(), places.on);
  // A crowd is a crowd: the better place is taken.
  places.strikeAcross(places.on, 12);
  places.strikeAcross(places.above, 12);
  EXPECT_EQ(places.best(), places.on);
}

TEST(LabelChoice, isPushedAsideWhereThereIsRoomOnlyBesideItsPlaces) {
  constexpr double kClear = LabelGaps{}.clear;
  LabelPlaces places;
  // A wall that all three places reach into by a little.
  places.solids = {{2400, -3000, 3000, 6000}};
  const Rect pushed = places.best();
  EXPECT_LE(pushed.right(), 2400 - kClear);
  EXPECT_GT(pushed.right(), 2400 - kClear - 10) << "no further than it has to";
  EXPECT_EQ(pushed.top, places.above.top) << "off its own line";
  EXPECT_TRUE(std::any_of(places.examined.begin(), places.examined.end(),
                          [&](const Rect& area) { return area.contains(pushed); }));

  // No room but far away: what covers least.
  places.solids = {{-9000, -9000, 20000, 20000}};
  EXPECT_EQ(places.best(), places.on) << "the first of those that cover the same";
  places.solids.push_back(places.on);
  EXPECT_EQ(places.best(), places.above);
}

}  // namespace
}  // namespace brisel::layout
