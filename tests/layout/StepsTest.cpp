#include <algorithm>
#include <limits>
#include <numeric>

#include <gtest/gtest.h>

#include "layout/Blocks.h"
#include "layout/Components.h"
#include "layout/CrossingReduction.h"
#include "layout/CycleRemoval.h"
#include "layout/Graphs.h"
#include "layout/GridLines.h"
#include "layout/GridPlacement.h"
#include "layout/Layering.h"
#include "layout/LineRouting.h"
#include "layout/LongLines.h"
#include "layout/NetworkSimplex.h"
#include "layout/Numbers.h"
#include "layout/RowPlacement.h"
#include "layout/Sifting.h"
#include "layout/TrunkSifting.h"
#include "layout/WideLayers.h"

namespace brisel::layout {
namespace {

std::vector<Component> components() {
  std::vector<Component> all;
  auto graphs = test::usual();
  for (auto& graph : test::hostile()) graphs.push_back(std::move(graph));
  for (const auto& [name, graph] : graphs) {
    Graph plain = graph;
    for (Size& box : plain.boxes) box = {80, 60};
    for (Component& c : partsOf(plain, 10).components) all.push_back(std::move(c));
  }
  return all;
}

/// True when every node can be taken before all those that its arcs lead to.
bool isAcyclic(int nodes, const std::vector<Arc>& arcs) {
  std::vector<int> open(nodes, 0);
  const Adjacency below = makeAdjacency(nodes, [&](auto&& add) {
    for (const Arc& arc : arcs) add(arc.from, arc.to);
  });
  for (const Arc& arc : arcs) ++open[arc.to];
  std::vector<int> ready;
  for (int n = 0; n < nodes; ++n) {
    if (open[n] == 0) ready.push_back(n);
  }
  for (std::size_t next = 0; next < ready.size(); ++next) {
    for (const int n : below.of(ready[next])) {
      if (--open[n] == 0) ready.push_back(n);
    }
  }
  return count(ready) == nodes;
}

TEST(CycleRemoval, LeavesNoCircleAndTurnsInheritanceOnlyWhereItMust) {
  for (Component& c : components()) {
    std::vector<Arc> inheritance;
    std::copy_if(c.arcs.begin(), c.arcs.end(), std::back_inserter(inheritance),
                 [](const Arc& arc) { return arc.inheritance; });
    const bool inherits = isAcyclic(c.nodes(), inheritance);
    removeCycles(c);
    EXPECT_TRUE(isAcyclic(c.nodes(), c.arcs));
    const auto turned = std::count_if(c.arcs.begin(), c.arcs.end(),
                                      [](const Arc& a) { return a.inheritance && a.reversed; });
    EXPECT_EQ(turned > 0, !inherits);
  }
}

TEST(CycleRemoval, TurnsFewArcs) {
  struct Case {
    Graph graph;
    int most;
  };
  Graph mixed = test::circle(10, EdgeKind::generalization);
  mixed.edges[4].kind = EdgeKind::association;
  for (auto& [graph, most] : {Case{test::circle(500, EdgeKind::association), 1}, Case{mixed, 1},
                              Case{test::chain(100), 0}, Case{test::clique(30), 0}}) {
    Component c = partsOf(graph, 10).components.at(0);
    removeCycles(c);
    EXPECT_LE(std::count_if(c.arcs.begin(), c.arcs.end(), [](const Arc& a) { return a.reversed; }),
              most);
  }
}

void expectLayering(const Component& c, const std::vector<int>& layer) {
  EXPECT_EQ(*std::min_element(layer.begin(), layer.end()), 0);
  for (const Arc& arc : c.arcs) ASSERT_LT(layer[arc.from], layer[arc.to]);
}

TEST(Layering, EveryArcLeadsDownWhateverTheShape) {
  for (Component& c : components()) {
    removeCycles(c);
    const std::vector<int> plain = layersOf(c);
    expectLayering(c, plain);
    for (const double aspect : {0.1, 1.0, 50.0}) {
      std::vector<int> layer = plain;
      splitWideLayers(c, {30, 50, aspect}, layer);
      expectLayering(c, layer);
    }
  }
}

TEST(GridPlacement, SubClassesStandBelowAndNoLineJoinsTwoOfOneRow) {
  for (Component& c : components()) {
    if (c.nodes() > 2500) continue;
    breakInheritanceCycles(c);
    const Grid grid = placeOnGrid(c, {30, 50, 1.6}, 1);
    for (int n = 0; n < c.nodes(); ++n) ASSERT_EQ(grid.at(grid.of(n)), n);
    for (const Arc& arc : c.arcs) {
      const int down = grid.of(arc.to).row - grid.of(arc.from).row;
      ASSERT_TRUE(arc.inheritance ? down > 0 : down != 0);
    }
    const std::vector<int> layer = layersFrom(c, grid);
    turnDown(c, layer);
    expectLayering(c, layer);
  }
}

TEST(GridLines, CountsWhatTheRowsCount) {
  Component c = partsOf(test::classDiagram(60, 5), 10).components.at(0);
  breakInheritanceCycles(c);
  Grid grid = placeOnGrid(c, {30, 50, 1.6}, 1);
  GridLines lines(c, grid.rows());
  std::int64_t crossed = 0;
  for (int i = 0; i < count(c.arcs); ++i) crossed += lines.add(grid, i);
  std::int64_t dropped = 0;
  for (int i = 0; i < count(c.arcs); i += 2) dropped += lines.drop(grid, i);
  for (int i = 0; i < count(c.arcs); i += 2) lines.put(grid, i);
  for (int i = 0; i < count(c.arcs); i += 2) lines.take(grid, i);
  for (int i = 1; i < count(c.arcs); i += 2) dropped += lines.drop(grid, i);
  EXPECT_EQ(dropped, crossed);

  // Straight lines between the cells, cut at the rows, cross as often.
  struct Piece {
    int gap;
    double top;
    double bottom;
  };
  std::vector<Piece> pieces;
  std::int64_t expected = 0;
  for (int i = 0; i < count(c.arcs); ++i) {
    Cell a = grid.of(c.arcs[i].from);
    Cell b = grid.of(c.arcs[i].to);
    if (a.row > b.row) std::swap(a, b);
    if (b.row - a.row > 1) continue;
    pieces.push_back({a.row, static_cast<double>(a.column), static_cast<double>(b.column)});
  }
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      const auto& [gap, top, bottom] = pieces[i];
      if (gap != pieces[k].gap) continue;
      expected += (top - pieces[k].top) * (bottom - pieces[k].bottom) < 0;
    }
  }
  std::int64_t found = 0;
  for (int i = 0; i < count(c.arcs); ++i) {
    const int rows = grid.of(c.arcs[i].from).row - grid.of(c.arcs[i].to).row;
    if (std::abs(rows) == 1) found += lines.add(grid, i);
  }
  EXPECT_EQ(found, expected);
  EXPECT_GT(found, 0);
}

TEST(WideLayers, TakeTheWantedShape) {
  for (const double aspect : {0.5, 1.0, 2.0}) {
    Component c = partsOf(test::star(1000), 10).components.at(0);
    std::vector<int> layer = layersOf(c);
    splitWideLayers(c, {30, 50, aspect}, layer);
    std::vector<int> boxes(1 + *std::max_element(layer.begin(), layer.end()), 0);
    for (const int l : layer) ++boxes[l];
    const double width = *std::max_element(boxes.begin(), boxes.end()) * 130.0;
    EXPECT_NEAR(width / (count(boxes) * 110.0), aspect, 0.35 * aspect);
  }
}

std::int64_t cost(const std::vector<Constraint>& constraints, const std::vector<int>& value) {
  std::int64_t sum = 0;
  for (const Constraint& c : constraints) {
    if (value[c.lower] - value[c.upper] < c.length) return std::numeric_limits<std::int64_t>::max();
    sum += std::int64_t{c.weight} * (value[c.lower] - value[c.upper]);
  }
  return sum;
}

/// The least cost over all values up to "most".
std::int64_t leastCost(int nodes, int most, const std::vector<Constraint>& constraints) {
  std::vector<int> value(nodes, 0);
  std::int64_t least = std::numeric_limits<std::int64_t>::max();
  for (int n = 0; n < nodes;) {
    least = std::min(least, cost(constraints, value));
    for (n = 0; n < nodes && value[n] == most; ++n) value[n] = 0;
    if (n < nodes) ++value[n];
  }
  return least;
}

TEST(NetworkSimplex, FindsTheLeastSumOfAll) {
  Numbers numbers(5);
  for (int round = 0; round < 60; ++round) {
    constexpr int kNodes = 5;
    std::vector<Constraint> constraints;
    for (int lower = 1; lower < kNodes; ++lower) {
      const auto some = [&](int n) { return static_cast<int>(numbers.next() % n); };
      constraints.push_back({some(lower), lower, 1 + some(2), 1 + some(4)});
      const int upper = some(lower);
      constraints.push_back({upper, lower, 1, 1 + some(4)});
    }
    const std::vector<int> found = networkSimplex(kNodes, constraints, 1'000'000);
    EXPECT_EQ(cost(constraints, found), leastCost(kNodes, 8, constraints));
  }
}

LayeredGraph layeredGraph(Component& c) {
  removeCycles(c);
  return withBends(c, layersOf(c));
}

TEST(LongLines, AllLinesJoinNeighbouringRows) {
  for (Component& c : components()) {
    const LayeredGraph graph = layeredGraph(c);
    std::vector<int> seen(graph.layer.size(), 0);
    for (int row = 0; row < count(graph.rows); ++row) {
      for (const int node : graph.rows[row]) {
        ++seen[node];
        EXPECT_EQ(graph.layer[node], row);
        for (const int below : graph.below.of(node)) EXPECT_EQ(graph.layer[below], row + 1);
      }
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), graph.nodes());
    for (int n = graph.boxes; n < graph.nodes(); ++n) {
      // Lines of one trunk come and go together, or some end below.
      ASSERT_GE(graph.above.degree(n), 1);
      ASSERT_EQ(graph.below.degree(n), graph.above.degree(n));
      for (const int above : graph.above.of(n)) ASSERT_EQ(above, graph.above.of(n)[0]);
    }
  }
}

TEST(LongLines, LinesOfOneTrunkShareStemsWhereTheyEndNearEachOther) {
  // Sub classes of the first node two and three layers below it; another one far to the right.
  Component c;
  c.boxes = {0, 1, 2, 3, 4};
  for (int n = 1; n < 5; ++n) {
    c.arcs.push_back({0, n, n - 1, true, false, EdgeKind::generalization});
  }
  const std::vector<int> layer{0, 2, 3, 3, 2};
  const auto bendsOf = [&](const std::vector<double>& place) {
    return withBends(c, layer, place).firstBend;
  };
  EXPECT_EQ(bendsOf({}), (std::vector{5, 5, 5, 5}));
  EXPECT_EQ(bendsOf({2, 1, 2, 3, 8}), (std::vector{5, 5, 5, 7}));
  c.arcs[1].inheritance = false;
  const auto apart = bendsOf({});
  EXPECT_EQ(apart[0], apart[2]);
  EXPECT_NE(apart[0], apart[1]);
}

std::int64_t crossingsOneByOne(const LayeredGraph& graph) {
  std::int64_t sum = 0;
  for (const auto& row : graph.rows) {
    for (const int left : row) {
      for (const int right : row) {
        if (graph.position[left] >= graph.position[right]) continue;
        for (const int a : graph.below.of(left)) {
          for (const int b : graph.below.of(right)) sum += graph.position[a] > graph.position[b];
        }
      }
    }
  }
  return sum;
}

TEST(CrossingReduction, KeepsTheRowsAndNeverAddsCrossings) {
  for (Component& c : components()) {
    LayeredGraph graph = layeredGraph(c);
    auto rows = graph.rows;
    const std::int64_t before = crossings(graph);
    if (graph.nodes() < 700) {
      EXPECT_EQ(before, crossingsOneByOne(graph));
    }
    reduceCrossings(graph);
    EXPECT_LE(crossings(graph), before);
    for (int row = 0; row < count(rows); ++row) {
      for (int i = 0; i < count(graph.rows[row]); ++i) {
        ASSERT_EQ(graph.position[graph.rows[row][i]], i);
      }
      EXPECT_TRUE(std::is_permutation(rows[row].begin(), rows[row].end(), graph.rows[row].begin(),
                                      graph.rows[row].end()) ||
                  count(rows[row]) > 1000);
    }
  }
}

TEST(CrossingReduction, DrawsTreesWithoutCrossings) {
  for (const std::uint64_t seed : {1, 2, 3, 4}) {
    Numbers numbers(seed);
    Graph tree = test::isolated(400);
    for (std::size_t i = 1; i < 400; ++i) {
      tree.edges.push_back({i, numbers.next() % i, EdgeKind::generalization});
    }
    Component c = partsOf(tree, 10).components.at(0);
    LayeredGraph graph = layeredGraph(c);
    reduceCrossings(graph);
    EXPECT_EQ(crossings(graph), 0);
  }
}

/// The rows hold the nodes that they held, and each knows its place.
void checkRows(const LayeredGraph& graph, std::vector<std::vector<int>> before) {
  for (int row = 0; row < count(before); ++row) {
    std::vector<int> now = graph.rows[row];
    for (int i = 0; i < count(now); ++i) ASSERT_EQ(graph.position[now[i]], i);
    std::sort(before[row].begin(), before[row].end());
    std::sort(now.begin(), now.end());
    ASSERT_EQ(now, before[row]);
  }
}

TEST(Sifting, KeepsTheRowsAndNeverAddsCrossings) {
  for (Component& c : components()) {
    LayeredGraph graph = layeredGraph(c);
    const auto rows = graph.rows;
    const std::int64_t before = crossings(graph);
    siftRows(graph, 10'000'000);
    EXPECT_LE(crossings(graph), before);
    checkRows(graph, rows);
    for (Arc& arc : c.arcs) arc.inheritance = false;
    const std::int64_t sifted = crossings(graph);
    siftTrunks(c, graph, 1'000'000);
    EXPECT_LE(crossings(graph), sifted);
    checkRows(graph, rows);
  }
}

TEST(Sifting, LeadsLinesPastTrunks) {
  // Four sub classes of the first node, and below it among them what other lines lead to.
  Component c;
  for (int n = 0; n < 7; ++n) {
    c.boxes.push_back(n);
    c.width.push_back(100);
    c.room.push_back(0);
    c.height.push_back(50);
    if (n == 0) continue;
    const bool inherits = n % 3 != 0;
    c.arcs.push_back({0, n, n - 1, inherits, false,
                      inherits ? EdgeKind::generalization : EdgeKind::association});
  }
  LayeredGraph graph = withBends(c, {0, 1, 1, 1, 1, 1, 1});
  graph.rows[1] = {1, 3, 2, 4, 6, 5};
  graph.numberRow(1);
  siftTrunks(c, graph, 1'000'000);
  const auto inherits = [](int n) { return n % 3 != 0; };
  const auto& row = graph.rows[1];
  const auto first = std::find_if(row.begin(), row.end(), inherits);
  const auto last = std::find_if(row.rbegin(), row.rend(), inherits).base();
  EXPECT_TRUE(std::all_of(first, last, inherits));
}

TEST(Blocks, AreNumberedFromTheLeftAndDoNotCross) {
  for (Component& c : components()) {
    LayeredGraph graph = layeredGraph(c);
    std::vector<double> x(graph.layer.size());
    for (std::size_t n = 0; n < x.size(); ++n) x[n] = 10.0 * graph.position[n];
    const Blocks blocks = straightBlocks(graph, x, 200);
    int joined = 0;
    for (const auto& row : graph.rows) {
      for (int i = 0; i + 1 < count(row); ++i) {
        ASSERT_LT(blocks.of[row[i]], blocks.of[row[i + 1]]);
      }
    }
    for (int b = 0; b < blocks.size(); ++b) {
      const auto members = blocks.members.of(b);
      for (std::size_t i = 1; i < members.size(); ++i) {
        ASSERT_EQ(graph.above.of(members[i])[0], members[i - 1]);
        ASSERT_TRUE(graph.isBend(members[i - 1]));
        ++joined;
      }
    }
    EXPECT_EQ(joined, graph.nodes() - blocks.size());
  }
}

TEST(LineRouting, AnArcThatWasLeftOutRunsRoundTheRows) {
  Component c = partsOf(test::chain(4), 10).components.at(0);
  LayeredGraph graph = withBends(c, {0, 1, 2, 3});
  c.arcs.push_back({0, 3, 3});
  graph.firstBend.push_back(-1);
  const Spacing spacing{30, 50, 1.6};
  const std::vector<double> x = placeInRows(graph, c.width, {30, 15});
  const Routing routing = routeLines(c, graph, x, spacing);
  const auto& line = routing.lines.back();
  EXPECT_TRUE(test::isAxisParallel(line));
  ASSERT_EQ(line.size(), 6U);
  EXPECT_GT(line[2].x, x[1] + c.width[1] / 2);
  EXPECT_EQ(line.front().y, routing.rowTop[0] + c.height[0]);
  EXPECT_EQ(line.back().y, routing.rowTop[3]);
}

TEST(RowPlacement, NeighboursKeepOrderAndGap) {
  for (Component& c : components()) {
    LayeredGraph graph = layeredGraph(c);
    reduceCrossings(graph);
    std::vector<double> width = c.width;
    width.resize(graph.layer.size(), 0);
    const RowGaps gaps{30, 10};
    const std::vector<double> x = placeInRows(graph, width, gaps);
    for (const auto& row : graph.rows) {
      for (int i = 0; i + 1 < count(row); ++i) {
        const bool boxes = !graph.isBend(row[i]) && !graph.isBend(row[i + 1]);
        const double between = x[row[i + 1]] - x[row[i]] - (width[row[i]] + width[row[i + 1]]) / 2;
        ASSERT_GE(between, (boxes ? gaps.box : gaps.line) - 1e-6);
      }
    }
  }
}

TEST(RowPlacement, SubClassesStandCentredUnderTheirSuperClass) {
  for (const int leaves : {1, 2, 5, 8}) {
    Component c = partsOf(test::star(leaves), 10).components.at(0);
    LayeredGraph graph = layeredGraph(c);
    const std::vector<double> x = placeInRows(graph, c.width, {30, 10});
    const double middle = std::accumulate(x.begin() + 1, x.end(), 0.0) / leaves;
    EXPECT_NEAR(x[0], middle, 1e-6) << leaves;
  }
}

}  // namespace
}  // namespace brisel::layout
