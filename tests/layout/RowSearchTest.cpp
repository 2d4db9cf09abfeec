#include <algorithm>
#include <limits>
#include <numeric>

#include <gtest/gtest.h>

#include "layout/Components.h"
#include "layout/CrossingReduction.h"
#include "layout/CycleRemoval.h"
#include "layout/Graphs.h"
#include "layout/Layering.h"
#include "layout/LineWays.h"
#include "layout/LongLines.h"
#include "layout/Numbers.h"
#include "layout/RowSearch.h"

namespace brisel::layout {
namespace {

constexpr Spacing kUsual{30, 50, 1.6};

struct Rows {
  Component component;
  LayeredGraph graph;
};

Rows rowsOf(const Graph& input) {
  Rows rows{partsOf(input, 10).components.at(0), {}};
  removeCycles(rows.component);
  rows.graph = withBends(rows.component, layersOf(rows.component));
  return rows;
}

Graph associations(int boxes, const std::vector<std::pair<int, int>>& ends) {
  Graph graph;
  graph.boxes.assign(static_cast<std::size_t>(boxes), {80, 60});
  for (const auto& [from, to] : ends) {
    graph.edges.push_back(
        {static_cast<std::size_t>(from), static_cast<std::size_t>(to), EdgeKind::association});
  }
  return graph;
}

std::vector<int> linesAt(const Component& component, int box) {
  std::vector<int> lines;
  for (int i = 0; i < count(component.arcs); ++i) {
    const Arc& arc = component.arcs[i];
    if (arc.from == box || arc.to == box) lines.push_back(i);
  }
  return lines;
}

TEST(LineWays, knowsItsCostAfterAnyMoves) {
  const Rows rows = rowsOf(test::classDiagram(40, 3));
  LineWays ways(rows.component, rows.graph, kUsual);
  Numbers numbers(7);
  for (int move = 0; move < 300; ++move) {
    const int box = numbers.below(rows.component.nodes());
    const std::vector<int> lines = linesAt(rows.component, box);
    const auto isTaken = [&](int row) {
      return std::any_of(lines.begin(), lines.end(), [&](int i) {
        const Arc& arc = rows.component.arcs[i];
        return ways.rowOf(arc.from == box ? arc.to : arc.from) == row;
      });
    };
    const int row = numbers.below(ways.rows());
    if (isTaken(row)) continue;
    for (const int line : lines) ways.takeOutLine(line);
    ways.takeOutBox(box);
    ways.putBox(box, row, numbers.below(count(ways.order().rows[row]) + 1));
    for (const int line : lines) ways.lead(line);
    const double cost = ways.cost();
    const int crossed = ways.crossings();
    ways.restore(ways.order());
    ASSERT_DOUBLE_EQ(ways.cost(), cost);
    ASSERT_EQ(ways.crossings(), crossed);
  }
}

/// Every slot of the one row that a line passes, tried one by one.
int fewestCrossings(const Rows& rows, const LineWays::Order& order, int line, int row) {
  LineWays ways(rows.component, rows.graph, kUsual);
  LineWays::Order tried = order;
  auto& nodes = tried.rows[row];
  nodes.erase(std::find(nodes.begin(), nodes.end(), ways.bend(line, row)));
  const std::vector<int> others = nodes;
  int fewest = std::numeric_limits<int>::max();
  for (std::size_t slot = 0; slot <= others.size(); ++slot) {
    nodes = others;
    nodes.insert(nodes.begin() + static_cast<std::ptrdiff_t>(slot), ways.bend(line, row));
    ways.restore(tried);
    fewest = std::min(fewest, ways.crossings());
  }
  return fewest;
}

TEST(LineWays, leadsALineWhereItCrossesLeast) {
  int looked = 0;
  for (std::uint64_t seed = 1; seed < 9; ++seed) {
    const Rows rows = rowsOf(test::classDiagram(30, seed));
    LineWays ways(rows.component, rows.graph, kUsual);
    for (int i = 0; i < count(rows.component.arcs); ++i) {
      const Arc& arc = rows.component.arcs[i];
      if (rows.graph.layer[arc.to] - rows.graph.layer[arc.from] != 2) continue;
      ways.takeOutLine(i);
      ways.lead(i);
      const int fewest = fewestCrossings(rows, ways.order(), i, ways.rowOf(arc.from) + 1);
      // A crossing is worth so much length that there is never more than one too many.
      EXPECT_LE(ways.crossings(), fewest + 1);
      ++looked;
    }
  }
  EXPECT_GT(looked, 20);
}

TEST(LineWays, countsWhatLeavesASuperClassBetweenItsSubClasses) {
  Graph graph = associations(6, {{0, 1}, {0, 2}, {0, 3}, {0, 4}, {0, 5}});
  for (std::size_t i = 0; i < 4; ++i) {
    // From the sub class to the super class.
    std::swap(graph.edges[i].source, graph.edges[i].target);
    graph.edges[i].kind = EdgeKind::generalization;
  }
  const Rows rows = rowsOf(graph);
  LineWays ways(rows.component, rows.graph, kUsual);
  const auto crossed = [&](std::vector<int> row) {
    LineWays::Order order = ways.order();
    order.rows[1] = std::move(row);
    ways.restore(order);
    return ways.crossings();
  };
  EXPECT_EQ(crossed({1, 2, 3, 4, 5}), 0);
  EXPECT_EQ(crossed({1, 5, 2, 3, 4}), 1);
  EXPECT_EQ(crossed({1, 2, 3, 5, 4}), 1);
}

TEST(RowSearch, endsInTimeHoweverManyRowsAndLinesThereAre) {
  Rows chain = rowsOf(test::chain(500));
  int told = 0;
  searchRows(chain.component, chain.graph, kUsual, 1, 1'000'000, [&](double) { ++told; });
  EXPECT_LT(told, 1'000) << "a look at all rows counts as work";
  Rows bundle = rowsOf(test::severalBetweenTwo(47'000, 0));
  searchRows(bundle.component, bundle.graph, kUsual, 1, 100'000);
  EXPECT_EQ(crossings(bundle.graph), 0);
}

TEST(RowSearch, keepsWhatRowsMustBe) {
  for (std::uint64_t seed = 1; seed < 5; ++seed) {
    Rows rows = rowsOf(test::classDiagram(50, seed));
    const std::int64_t before = crossings(rows.graph);
    searchRows(rows.component, rows.graph, kUsual, seed, 2'000'000);
    EXPECT_LT(crossings(rows.graph), before);
    std::vector<int> seen(rows.graph.layer.size(), 0);
    for (int row = 0; row < count(rows.graph.rows); ++row) {
      EXPECT_FALSE(rows.graph.rows[row].empty());
      for (const int node : rows.graph.rows[row]) {
        EXPECT_EQ(rows.graph.layer[node], row);
        ++seen[node];
      }
    }
    EXPECT_EQ(std::count(seen.begin(), seen.end(), 1), count(seen));
    for (const Arc& arc : rows.component.arcs) {
      EXPECT_LT(rows.graph.layer[arc.from], rows.graph.layer[arc.to]);
      EXPECT_FALSE(arc.inheritance && arc.reversed);
    }
  }
}

TEST(RowSearch, crossesLessThanTheBestOrdersOfTheSameRows) {
  std::int64_t ordered = 0;
  std::int64_t searched = 0;
  for (std::uint64_t seed = 1; seed < 5; ++seed) {
    Rows rows = rowsOf(test::classDiagram(40, seed));
    LayeredGraph swept = rows.graph;
    reduceCrossings(swept);
    ordered += crossings(swept);
    searchRows(rows.component, rows.graph, kUsual, seed, 10'000'000);
    searched += crossings(rows.graph);
  }
  EXPECT_LT(searched, 0.8 * static_cast<double>(ordered));
}

}  // namespace
}  // namespace brisel::layout
