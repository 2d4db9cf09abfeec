#include "layout/RowSearch.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "layout/Layering.h"
#include "layout/LineWays.h"
#include "layout/LongLines.h"
#include "layout/Numbers.h"

namespace brisel::layout {
namespace {

class RowSearch {
 public:
  RowSearch(const Component& component, const Spacing& spacing, LineWays& ways, std::uint64_t seed)
      : m_component(component), m_gap(spacing.node), m_ways(ways), m_numbers(seed) {
    m_lines = linesAtNodes(component);
    m_isBarred.resize(ways.rows(), false);
    m_costs.resize(ways.rows());
    m_width.resize(ways.rows(), 0);
    m_boxes.resize(ways.rows(), 0);
    for (int n = 0; n < component.nodes(); ++n) enter(n, 1);
    m_widest = *std::max_element(m_width.begin(), m_width.end());
  }

  /// Leaves the best order that was found.
  void run(std::int64_t work, const Step& step) {
    double least = m_ways.cost();
    bool isPlane = m_ways.crossings() == 0;
    if (isPlane) work /= 4;
    LineWays::Order best = m_ways.order();
    while (m_ways.work() < work) {
      const double part = static_cast<double>(m_ways.work()) / static_cast<double>(work);
      if (step) step(part);
      m_temperature = kHot * std::pow(kCold / kHot, part);
      reinsert(m_numbers.below(m_component.nodes()));
      const double cost = m_ways.cost();
      if (cost >= least || (isPlane && m_ways.crossings() > 0)) continue;
      isPlane = m_ways.crossings() == 0;
      least = cost;
      best = m_ways.order();
    }
    m_ways.restore(std::move(best));
  }

 private:
  static constexpr double kHot = 2 * LineWays::kCrossing;
  static constexpr double kCold = 0.2 * LineWays::kCrossing;
  /// How much wider rows may get, and how far beyond its neighbours' rows a box may go.
  static constexpr double kWider = 1.3;
  static constexpr int kBeyond = 3;

  /// Rows that a box may go to, from "first" to before "end".
  struct Range {
    int first;
    int end;
  };

  [[nodiscard]] int otherEnd(int line, int box) const {
    const Arc& arc = m_component.arcs[line];
    return arc.from == box ? arc.to : arc.from;
  }

  void enter(int box, int sign) {
    m_width[m_ways.rowOf(box)] += sign * (m_component.width[box] + m_gap);
    m_boxes[m_ways.rowOf(box)] += sign;
  }

  void reinsert(int box) {
    const int before = m_ways.rowOf(box);
    for (const int line : m_lines.of(box)) m_ways.takeOutLine(line);
    enter(box, -1);
    m_ways.takeOutBox(box);
    const auto [row, slot] = choose(box, before);
    m_ways.putBox(box, row, slot);
    enter(box, 1);
    for (const int line : m_lines.of(box)) m_ways.lead(line);
  }

  /// Below its super classes, above its sub classes and not far from where its lines end.
  [[nodiscard]] Range rangeOf(int box, int before) const {
    Range near{before, before + 1};
    Range most{0, m_ways.rows()};
    for (const int line : m_lines.of(box)) {
      const int row = m_ways.rowOf(otherEnd(line, box));
      near = {std::min(near.first, row - kBeyond), std::max(near.end, row + kBeyond + 1)};
      const Arc& arc = m_component.arcs[line];
      if (!arc.inheritance) continue;
      if (arc.from == box) {
        most.end = std::min(most.end, row);
      } else {
        most.first = std::max(most.first, row + 1);
      }
    }
    return {std::max(near.first, most.first), std::min(near.end, most.end)};
  }

  /// The row and the slot where a box costs least, or not much more.
  std::pair<int, int> choose(int box, int before) {
    const Range range = rangeOf(box, before);
    sumCosts(box, range);
    std::pair<int, int> best{before, 0};
    double least = std::numeric_limits<double>::infinity();
    for (int row = range.first; row < range.end; ++row) {
      if (m_isBarred[row] || (row != before && !fits(box, before, row))) continue;
      const auto at = std::min_element(m_costs[row].begin(), m_costs[row].end());
      const double cost = *at - m_temperature * std::log(m_numbers.part() + 1e-12);
      if (cost >= least) continue;
      least = cost;
      best = {row, static_cast<int>(at - m_costs[row].begin())};
    }
    return best;
  }

  /// No row is left empty and none gets too wide.
  [[nodiscard]] bool fits(int box, int before, int row) const {
    const double width = m_component.width[box] + m_gap;
    return m_boxes[before] > 0 && m_width[row] + width <= kWider * m_widest;
  }

  /// What all lines of a box cost in each slot; rows of its neighbours are barred.
  void sumCosts(int box, Range range) {
    for (int row = range.first; row < range.end; ++row) {
      m_isBarred[row] = false;
      m_costs[row].assign(m_ways.order().rows[row].size() + 1, 0);
    }
    for (const int line : m_lines.of(box)) {
      const int other = otherEnd(line, box);
      m_isBarred[m_ways.rowOf(other)] = true;
      const auto& costs = m_ways.costsFrom(other, line, range.first, range.end);
      for (int row = range.first; row < range.end; ++row) {
        for (std::size_t slot = 0; slot < costs[row].size(); ++slot) {
          m_costs[row][slot] += costs[row][slot];
        }
      }
    }
  }

  const Component& m_component;
  double m_gap;
  LineWays& m_ways;
  Numbers m_numbers;
  Adjacency m_lines;            ///< of each box
  std::vector<double> m_width;  ///< of the boxes of each row
  std::vector<int> m_boxes;     ///< how many
  double m_widest = 0;
  double m_temperature = 0;
  std::vector<bool> m_isBarred;  ///< of each row
  std::vector<std::vector<float>> m_costs;
};

bool isComplete(const Component& component, const LayeredGraph& graph) {
  for (int i = 0; i < count(component.arcs); ++i) {
    if (graph.isLeftOut(component, i)) return false;
  }
  return true;
}

}  // namespace

void searchRows(Component& component, LayeredGraph& graph, const Spacing& spacing,
                std::uint64_t seed, std::int64_t work, const Step& step) {
  if (!isComplete(component, graph)) return;
  LineWays ways(component, graph, spacing);
  RowSearch(component, spacing, ways, seed).run(work, step);
  const int boxes = component.nodes();
  double across = 0;
  for (const double width : component.width) across += (width + spacing.node) / boxes;
  std::vector<double> column;
  std::vector<double> place;
  for (int n = 0; n < boxes; ++n) {
    column.push_back(ways.xOf(n, ways.rowOf(n)) / across);
    place.push_back(ways.placeOf(n));
  }
  turnDown(component, ways.order().row);
  graph = withBends(component, ways.order().row, column);
  const auto placeInRow = [&](int line, int row) { return ways.placeOf(ways.bend(line, row)); };
  orderRows(component, place, placeInRow, graph);
}

}  // namespace brisel::layout
