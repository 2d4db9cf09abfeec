#include <cmath>

#include <gtest/gtest.h>

#include "layout/PartLayout.h"

namespace brisel::layout {
namespace {

const Spacing kPartRoom{40, 60, 1.6};

/// Boxes of 100 by 50 at places, without lines and with nothing around.
Part partAt(const std::vector<Point>& places) {
  Part part;
  part.places = places;
  part.graph.boxes.assign(places.size(), Size{100, 50});
  part.neighbours.resize(places.size());
  part.spacing = kPartRoom;
  return part;
}

const DrawGroup kDrawLayered = [](const Graph& graph) { return layered(graph, kPartRoom); };
const DrawGroup kDrawSpring = [](const Graph& graph) { return spring(graph, kPartRoom); };

TEST(PartLayout, leavesWhatStandsWellAndMovesTheRest) {
  Part part = partAt({{500, 500}, {1000, 20}, {2000, 500}});
  part.standing = {{520, 520, 60, 20}};
  part.neighbours[1] = {{{900, 100, 100, 50}, EdgeKind::generalization, true}};
  part.neighbours[2] = {{{900, 100, 100, 50}, EdgeKind::generalization, true}};
  const auto places = drawnInGroups(part, Turning::keepsOrder, kDrawLayered).positions;
  EXPECT_FALSE((Rect{places[0].x, places[0].y, 100, 50}).intersects(part.standing[0]));
  EXPECT_LT(std::hypot(places[0].x - 500, places[0].y - 500), 120) << "just clear";
  EXPECT_EQ(places[1], (Point{900, 210})) << "below its super class";
  EXPECT_EQ(places[2], (Point{2000, 500})) << "is so already";
}

TEST(PartLayout, drawsEachGroupAroundItsOwnMiddle) {
  for (const Turning turning : {Turning::keepsOrder, Turning::mirrors}) {
    Part part = partAt({{1000, 1000}, {1300, 1010}, {1000, 5000}, {1300, 5020}, {1150, 5040}});
    part.graph.edges = {{0, 1, EdgeKind::generalization},
                        {2, 4, EdgeKind::association},
                        {3, 4, EdgeKind::association}};
    const DrawGroup& draw = turning == Turning::mirrors ? kDrawSpring : kDrawLayered;
    const Drawing drawing = drawnInGroups(part, turning, draw);
    for (std::size_t i = 0; i < part.places.size(); ++i) {
      const Point way = drawing.positions[i] - part.places[i];
      EXPECT_LT(std::hypot(way.x, way.y), 350) << i;
    }
    EXPECT_LT(drawing.positions[2].x, drawing.positions[3].x) << "left stays left";

    part.places = drawing.positions;
    EXPECT_EQ(drawnInGroups(part, turning, draw).positions, drawing.positions) << "and stays";
  }
}

TEST(PartLayout, putsNothingLeftOfOrAboveTheCorner) {
  Part part = partAt({{310, 310}, {320, 320}, {330, 300}});
  part.corner = {300, 300};
  part.standing = {{300, 450, 1000, 1000}};
  part.graph.edges = {{1, 0, EdgeKind::generalization}, {2, 1, EdgeKind::generalization}};
  for (const Drawing& drawing :
       {drawnInGroups(part, Turning::keepsOrder, kDrawLayered), drawnInRows(part)}) {
    for (std::size_t i = 0; i < part.places.size(); ++i) {
      const Point at = drawing.positions[i];
      EXPECT_TRUE(at.x >= 300 && at.y >= 300) << at.x << " " << at.y;
      EXPECT_FALSE((Rect{at.x, at.y, 100, 50}).intersects(part.standing[0]));
    }
  }
}

TEST(PartLayout, rowsKeepTheOrder) {
  Part part = partAt({{900, 20}, {0, 0}, {400, 40}, {30, 300}, {700, 310}, {300, 290}});
  part.graph.boxes[2] = {100, 200};
  const auto places = drawnInRows(part).positions;
  EXPECT_EQ(places[0].y, places[1].y);
  EXPECT_EQ(places[0].y, places[2].y);
  EXPECT_LT(places[1].x, places[2].x);
  EXPECT_LT(places[2].x, places[0].x);
  EXPECT_EQ(places[3].x, places[1].x) << "columns";
  EXPECT_LT(places[5].x, places[4].x);
  EXPECT_GT(places[3].y, places[2].y + 200) << "below the highest";
  part.places = places;
  EXPECT_EQ(drawnInRows(part).positions, places);
  EXPECT_TRUE(drawnInRows(partAt({})).positions.empty());
}

}  // namespace
}  // namespace brisel::layout
