#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "layout/Graphs.h"
#include "layout/Layout.h"
#include "layout/LineCrossings.h"
#include "layout/Numbers.h"
#include "layout/Packing.h"
#include "platform/Error.h"

namespace brisel::layout {
namespace {

const Spacing kSpacing{30, 50, 1.6};

struct Style {
  std::string name;
  std::function<Drawing(const Graph&)> draw;
};

class EveryStyle : public testing::TestWithParam<Style> {};

INSTANTIATE_TEST_SUITE_P(
    Layout, EveryStyle,
    testing::Values(Style{"layered", [](const Graph& g) { return layered(g, kSpacing); }},
                    Style{"matrix", [](const Graph& g) { return matrix(g, kSpacing); }},
                    Style{"random", [](const Graph& g) { return random(g, kSpacing, 7); }},
                    Style{"spring", [](const Graph& g) { return spring(g, kSpacing); }}),
    [](const auto& style) { return style.param.name; });

TEST_P(EveryStyle, DrawsAnyGraphCleanAndAlikeTwice) {
  auto graphs = test::usual();
  for (auto& graph : test::hostile()) graphs.push_back(std::move(graph));
  for (const auto& [name, graph] : graphs) {
    SCOPED_TRACE(name);
    const Drawing drawing = GetParam().draw(graph);
    test::checkDrawing(graph, drawing);
    if (graph.boxes.size() > 1000) continue;
    EXPECT_TRUE(test::same(drawing, GetParam().draw(graph)));
  }
}

TEST_P(EveryStyle, RefusesAnEdgeToABoxThatIsNotThere) {
  for (const Edge edge : {Edge{0, 3}, Edge{3, 0}, Edge{0, static_cast<std::size_t>(-1)}}) {
    Graph graph = test::isolated(3);
    graph.edges = {{0, 1}, edge};
    EXPECT_THROW(static_cast<void>(GetParam().draw(graph)), platform::Error);
  }
}

TEST_P(EveryStyle, TakesSpacingsThatMakeNoSense) {
  const Graph graph = test::classDiagram(30, 1);
  for (const double odd : {0.0, -3.0, 1e300, static_cast<double>(NAN)}) {
    SCOPED_TRACE(odd);
    const Spacing spacing{odd, odd, odd};
    test::checkDrawing(graph, layered(graph, spacing));
    test::checkDrawing(graph, matrix(graph, spacing));
    test::checkDrawing(graph, random(graph, spacing, 1));
    test::checkDrawing(graph, spring(graph, spacing));
  }
}

struct Drawn {
  std::string name;
  Graph graph;
  Drawing drawing;
};

/// Class diagrams of several sizes, drawn once for all tests.
const std::vector<Drawn>& drawnOnes() {
  static const std::vector<Drawn> drawn = [] {
    std::vector<Drawn> all;
    for (auto& [name, graph] : test::usual()) {
      Drawing drawing = layered(graph, kSpacing);
      all.push_back({name, std::move(graph), std::move(drawing)});
    }
    return all;
  }();
  return drawn;
}

TEST(Layered, SuperClassesStandAboveTheirSubClasses) {
  for (const auto& [name, graph, drawing] : drawnOnes()) {
    SCOPED_TRACE(name);
    for (const Edge& edge : graph.edges) {
      if (edge.kind < EdgeKind::generalization) continue;
      EXPECT_LT(drawing.positions[edge.target].y + graph.boxes[edge.target].height,
                drawing.positions[edge.source].y);
    }
  }
}

TEST(Layered, NoLineRunsThroughAForeignBox) {
  for (const auto& [name, graph, drawing] : drawnOnes()) {
    SCOPED_TRACE(name);
    EXPECT_EQ(test::linesThroughBoxes(graph, drawing), 0);
  }
  const Graph several = test::severalBetweenTwo(300, 40);
  EXPECT_EQ(test::linesThroughBoxes(several, layered(several, kSpacing)), 0);
}

TEST(Layered, LinesHaveRightAnglesAndLieOnEachOtherInTrunksOnly) {
  for (const auto& [name, graph, drawing] : drawnOnes()) {
    SCOPED_TRACE(name);
    EXPECT_EQ(test::piecesOnEachOther(graph, drawing), 0);
    for (const auto& line : drawing.lines) EXPECT_TRUE(test::isAxisParallel(line));
  }
}

TEST(Layered, SubClassesMeetInOneTrunkForEachKind) {
  Graph graph = test::star(40);
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    if (i % 4 == 0) graph.edges[i].kind = EdgeKind::realization;
  }
  graph.boxes.push_back(graph.boxes.back());
  graph.edges.push_back({41, 0, EdgeKind::association});
  const Drawing drawing = layered(graph, kSpacing);
  std::map<EdgeKind, std::set<double>> ends;
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    ends[graph.edges[i].kind].insert(drawing.lines[i].back().x);
  }
  for (const auto& [kind, places] : ends) EXPECT_EQ(places.size(), 1U);
  EXPECT_NE(ends.at(EdgeKind::generalization), ends.at(EdgeKind::realization));
  EXPECT_EQ(test::piecesOnEachOther(graph, drawing), 0);
}

TEST(Layered, SubClassesThatUseTheirSuperClassHangFromOneTrunk) {
  Graph graph = test::star(5);
  for (std::size_t leaf = 1; leaf <= 5; ++leaf) {
    graph.edges.push_back({leaf, 0, EdgeKind::association});
  }
  const Drawing drawing = layered(graph, kSpacing);
  for (std::size_t leaf = 1; leaf < 5; ++leaf) {
    EXPECT_EQ(drawing.lines[leaf].back(), drawing.lines[0].back());
  }
  EXPECT_EQ(test::piecesOnEachOther(graph, drawing), 0);
  // The outer two pass the trunk, the next cross one arm each, and the one in the middle two.
  EXPECT_LE(lineCrossings(drawing.lines), 4);
}

TEST(Layered, TakesTheWantedShapeWhereInheritanceLeavesTheChoice) {
  for (const Graph& graph : {test::classDiagram(80, 1), test::chain(1000), test::star(1000),
                             test::circle(1000, EdgeKind::association)}) {
    const Drawing drawing = layered(graph, kSpacing);
    Size size;
    for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
      size.width = std::max(size.width, drawing.positions[i].x + graph.boxes[i].width);
      size.height = std::max(size.height, drawing.positions[i].y + graph.boxes[i].height);
    }
    EXPECT_GT(size.width / size.height, kSpacing.aspect / 4);
    EXPECT_LT(size.width / size.height, kSpacing.aspect * 4);
  }
}

TEST(Layered, DrawsTreesWithoutCrossings) {
  for (const std::uint64_t seed : {1, 2, 3}) {
    Numbers numbers(seed);
    Graph tree = test::isolated(300);
    for (std::size_t i = 1; i < 300; ++i) {
      tree.edges.push_back({i, numbers.next() % i, EdgeKind::generalization});
    }
    EXPECT_EQ(lineCrossings(layered(tree, kSpacing).lines), 0);
  }
}

TEST(Layered, SmallFamiliesStandInOneRowUnderTheMiddleOfTheirSuperClass) {
  Graph tree = test::isolated(15);
  for (Size& box : tree.boxes) box = {150, 90};
  for (std::size_t i = 1; i < 15; ++i) {
    tree.edges.push_back({i, (i - 1) / 2, EdgeKind::generalization});
  }
  const Drawing drawing = layered(tree, kSpacing);
  for (std::size_t i = 0; i < 7; ++i) {
    const Point left = drawing.positions[2 * i + 1];
    const Point right = drawing.positions[2 * i + 2];
    EXPECT_EQ(left.y, right.y);
    EXPECT_NEAR((left.x + right.x) / 2, drawing.positions[i].x, 40);
  }
}

TEST(Layered, LoopsAndLinesBetweenTheSameBoxesStayApart) {
  const Graph graph = test::severalBetweenTwo(20, 10);
  const Drawing drawing = layered(graph, kSpacing);
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      EXPECT_NE(drawing.lines[i].front(), drawing.lines[k].front()) << i << " and " << k;
    }
  }
}

TEST(Random, AnotherSeedGivesAnotherDrawing) {
  const Graph graph = test::classDiagram(20, 1);
  EXPECT_FALSE(test::same(random(graph, kSpacing, 1), random(graph, kSpacing, 2)));
}

/// The mean distance of the middles of joined boxes, to that of any two.
double nearness(const Graph& graph, const Drawing& drawing) {
  const auto distance = [&](std::size_t a, std::size_t b) {
    const Point way = drawing.positions[a] - drawing.positions[b] +
                      Point{(graph.boxes[a].width - graph.boxes[b].width) / 2,
                            (graph.boxes[a].height - graph.boxes[b].height) / 2};
    return std::hypot(way.x, way.y);
  };
  double joined = 0;
  double all = 0;
  double pairs = 0;
  for (const Edge& edge : graph.edges) joined += distance(edge.source, edge.target);
  for (std::size_t i = 0; i < graph.boxes.size(); i += 7) {
    for (std::size_t k = 0; k < i; ++k, ++pairs) all += distance(i, k);
  }
  return joined / static_cast<double>(graph.edges.size()) / (all / pairs);
}

TEST(SpringAndMatrix, JoinedBoxesStandNearerThanOthers) {
  EXPECT_LT(nearness(test::chain(40), spring(test::chain(40), kSpacing)), 0.33);
  for (const std::uint64_t seed : {1, 2, 3}) {
    const Graph graph = test::classDiagram(300, seed);
    const double byChance = nearness(graph, random(graph, kSpacing, seed));
    EXPECT_LT(nearness(graph, spring(graph, kSpacing)), 0.55 * byChance) << seed;
    EXPECT_LT(nearness(graph, matrix(graph, kSpacing)), 0.6 * byChance) << seed;
  }
}

TEST(EveryShape, IsNearTheWantedOneAndNotWasteful) {
  const struct {
    std::string name;
    Graph graph;
  } kGraphs[] = {{"star", test::star(5000)},
                 {"clique", test::clique(200)},
                 {"classes", test::classDiagram(1000, 5)},
                 {"isolated", test::isolated(5000)}};
  for (const auto& [name, graph] : kGraphs) {
    double needed = 0;
    for (const Size& box : graph.boxes) needed += (box.width + 30) * (box.height + 30);
    for (const Drawing& drawing :
         {spring(graph, kSpacing), matrix(graph, kSpacing), random(graph, kSpacing, 3)}) {
      test::checkDrawing(graph, drawing);
      const Size whole = extent(graph.boxes, drawing.positions);
      EXPECT_LT(whole.width * whole.height, 4 * needed) << name;
      EXPECT_GT(whole.width / whole.height, 0.5) << name;
      EXPECT_LT(whole.width / whole.height, 3) << name;
    }
  }
}

using Draw = Drawing (*)(const Graph& graph, const Spacing& spacing, const GoOn& goOn);

class Progressing : public testing::TestWithParam<Draw> {};
INSTANTIATE_TEST_SUITE_P(Layout, Progressing, testing::Values(&layered, &spring));

TEST_P(Progressing, TellsHowFarItIsAndStopsWhenItIsNotToGoOn) {
  const Graph graph = test::classDiagram(600, 1);
  double last = 0;
  int asked = 0;
  static_cast<void>(GetParam()(graph, kSpacing, [&](double share) {
    EXPECT_GE(share, last);
    EXPECT_LE(share, 1);
    EXPECT_LE(share, last + 0.5);
    last = share;
    ++asked;
    return true;
  }));
  EXPECT_GT(asked, 20);
  EXPECT_GT(last, 0.6);
  const GoOn stop = [&](double) { return --asked > 0; };
  EXPECT_THROW(static_cast<void>(GetParam()(graph, kSpacing, stop)), Cancelled);
}

}  // namespace
}  // namespace brisel::layout
