#include <cmath>

#include <gtest/gtest.h>

#include "layout/FreePlaces.h"
#include "layout/Graphs.h"
#include "layout/Occupied.h"
#include "platform/Error.h"

namespace brisel::layout {
namespace {

const Spacing kRoom{30, 50, 1.6};
constexpr Point kFarCorner{-1000, -1000};

using Places = std::vector<std::optional<Point>>;

Rect rectOf(const Graph& graph, const std::vector<Point>& places, std::size_t i) {
  return {places[i].x, places[i].y, graph.boxes[i].width, graph.boxes[i].height};
}

/// Pairs of boxes over each other of which at least one was placed.
int overlaps(const Graph& graph, const Places& standing, const std::vector<Point>& places) {
  int pairs = 0;
  for (std::size_t i = 0; i < places.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      if (standing[i] && standing[k]) continue;
      pairs += rectOf(graph, places, i).grownBy(-0.01).intersects(rectOf(graph, places, k));
    }
  }
  return pairs;
}

TEST(PlacedAmong, keepsWhatStandsAndCoversNothing) {
  for (const std::uint64_t seed : {1, 2, 3}) {
    const Graph graph = test::classDiagram(70, seed);
    const Drawing before = layered(graph, kRoom);
    Places standing(before.positions.begin(), before.positions.end());
    double joined = 0;
    for (std::size_t i = seed; i < standing.size(); i += 5) standing[i].reset();
    const auto places = placedAmong(graph, standing, kRoom, kFarCorner);
    EXPECT_EQ(places, placedAmong(graph, standing, kRoom, kFarCorner));
    double length = 0;
    double whole = 0;
    for (std::size_t i = 0; i < places.size(); ++i) {
      ASSERT_EQ(places[i], standing[i].value_or(places[i]));
      whole = std::max(whole, std::hypot(places[i].x, places[i].y));
    }
    EXPECT_EQ(overlaps(graph, standing, places), 0);
    for (const Edge& edge : graph.edges) {
      if (edge.source == edge.target || (standing[edge.source] && standing[edge.target])) continue;
      const Point way =
          rectOf(graph, places, edge.source).center() - rectOf(graph, places, edge.target).center();
      length += std::hypot(way.x, way.y);
      ++joined;
    }
    EXPECT_LT(length / joined, whole / 4) << "near what they are joined to";
  }
}

TEST(PlacedAmong, putsSubClassesBelowSuperClassesAboveAndOthersBeside) {
  const Graph graph{{{200, 100}, {100, 50}, {100, 50}, {100, 50}, {100, 50}},
                    {{1, 0, EdgeKind::generalization},
                     {0, 2, EdgeKind::realization},
                     {3, 0, EdgeKind::association}}};
  const auto places = placedAmong(graph, {Point{1000, 1000}, {}, {}, {}, {}}, kRoom, kFarCorner);
  EXPECT_EQ(places[1], (Point{1050, 1150}));
  EXPECT_EQ(places[2], (Point{1050, 900}));
  EXPECT_EQ(places[3], (Point{1230, 1025}));
  EXPECT_GT(places[4].y, 1200) << "joined to nothing: below everything";
}

TEST(PlacedAmong, takesWhatNobodyDraws) {
  for (const auto& [name, graph] : test::hostile()) {
    SCOPED_TRACE(name);
    Places standing(graph.boxes.size());
    if (!standing.empty()) standing[0] = Point{-500, 300};
    const auto places = placedAmong(graph, standing, kRoom, kFarCorner);
    for (const Point p : places) ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
    if (graph.boxes.size() < 400 && name != "odd sizes") {
      EXPECT_EQ(overlaps(graph, standing, places), 0);
    }
  }
  EXPECT_THROW(static_cast<void>(placedAmong(test::isolated(2), {}, kRoom, kFarCorner)),
               platform::Error);
}

Point shifted(const std::vector<Rect>& moving, const std::vector<Rect>& standing, double gap,
              Point corner = kFarCorner) {
  Occupied occupied(40);
  for (const Rect& rect : standing) occupied.add(rect);
  return clearShift(moving, occupied, gap, corner);
}

TEST(ClearShift, isShortAndClear) {
  EXPECT_EQ(shifted({{0, 0, 10, 10}}, {{50, 0, 10, 10}}, 5), (Point{}));
  EXPECT_EQ(shifted({{0, 0, 10, 10}}, {{-3, 2, 40, 40}}, 5), (Point{0, -13}));
  EXPECT_EQ(shifted({{0, 0, 10, 10}, {20, 0, 10, 10}}, {{22, -2, 100, 100}}, 2), (Point{-10, 0}));
  EXPECT_EQ(shifted({}, {{0, 0, 1, 1}}, 5), (Point{}));

  std::vector<Rect> wall;
  for (int x = 0; x < 60; ++x) {
    for (int y = 0; y < 60; ++y) wall.push_back({x * 20.0, y * 20.0, 15, 15});
  }
  const std::vector<Rect> block{{600, 700, 40, 30}, {660, 740, 40, 30}};
  const Point shift = shifted(block, wall, 4);
  EXPECT_LT(std::hypot(shift.x, shift.y), 900);
  for (const Rect& rect : block) {
    for (const Rect& other : wall) EXPECT_FALSE(rect.movedBy(shift).intersects(other));
  }
}

TEST(ClearShift, staysBelowAndRightOfTheCorner) {
  EXPECT_EQ(shifted({{0, 0, 10, 10}}, {{-3, 2, 40, 40}}, 5, {0, 0}), (Point{42, 0}));
  EXPECT_EQ(shifted({{-20, -30, 10, 10}}, {}, 5, {0, 0}), (Point{20, 30}));
  EXPECT_EQ(shifted({{0, 0, 10, 10}, {20, 0, 10, 10}}, {{22, -2, 100, 100}}, 2, {-5, -5}),
            (Point{0, 100}));
}

}  // namespace
}  // namespace brisel::layout
