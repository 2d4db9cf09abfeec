#include <algorithm>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "layout/LabelPlacement.h"

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
                                   .crossed =
                                       [&](const Rect& area, int) {
                                         int sum = 0;
                                         for (const auto& [from, to] : lines)
                                           sum += strike(from, to, area);
                                         return sum;
                                       }};
    examined.clear();
    return bestOf({{on, true}, {above}, {far, false, true}}, course, around, {}, examined);
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

TEST(LabelPlacement, makesWayForSolidsFurtherThanForLines) {
  LabelPlaces places;
  EXPECT_EQ(places.best(), places.on);
  EXPECT_EQ(places.examined, std::vector{places.on.grownBy(LabelGaps{}.clear)});

  places.strikeAcross(places.on, 1);
  EXPECT_EQ(places.best(), places.above);
  places.strikeAcross(places.above, 2);
  EXPECT_EQ(places.best(), places.on) << "far away would be free, but for lines alone is too far";

  places.solids = {places.on};
  EXPECT_EQ(places.best(), places.above) << "any line rather than a box";
  places.solids.push_back(places.above);
  EXPECT_EQ(places.best(), places.far);

  places.solids.push_back(places.far);
  places.solids[1].width = 300;
  EXPECT_EQ(places.best(), places.above) << "the least of it where there is no room";
}

TEST(LabelPlacement, isStruckAcrossRatherThanAlongTheWords) {
  LabelPlaces places;
  places.strikeAlong(places.on);
  places.strikeAcross(places.above, 2);
  EXPECT_EQ(places.best(), places.above);
  places.strikeAcross(places.above, 4);
  EXPECT_EQ(places.best(), places.on);
  // A crowd is a crowd: the better place is taken.
  places.strikeAcross(places.on, 12);
  places.strikeAcross(places.above, 12);
  EXPECT_EQ(places.best(), places.on);
}

}  // namespace
}  // namespace brisel::layout
