#include "layout/GridPlacement.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "layout/GridCost.h"
#include "layout/GridLines.h"
#include "layout/Layering.h"
#include "layout/Numbers.h"

namespace brisel::layout {
namespace {

constexpr int kCoolings = 200;

/// Temperatures fall by the same share each time, as multiples of a step across and down.
struct Cooling {
  double first;
  double last;

  [[nodiscard]] double at(double part) const { return first * std::pow(last / first, part); }
};
/// The ends were found by trying: hotter starts bring nothing more, and a placement that is not
/// quite cold leaves more to gain to the second cooling, which counts crossings.
constexpr Cooling kShortening{6, 1};
constexpr Cooling kUntangling{4, 0.3};
constexpr float kCrossing = 1.5F;  ///< steps across and down that a crossing is worth

/// Random moves that get shorter and pickier while it cools.
class Moves {
 public:
  Moves(const GridCost& cost, std::uint64_t seed) : m_cost(cost), m_numbers(seed) {}

  /// "part" runs from 0 to 1.
  void cool(const Cooling& cooling, double part, const Grid& grid) {
    const float step = m_cost.across() + m_cost.down();
    m_temperature = step * static_cast<float>(cooling.at(part));
    const int longest = std::max(grid.rows(), grid.columns());
    m_reach = std::max(1, static_cast<int>(longest * (1 - part) / 2));
  }
  /// How much worse the next move may make it.
  float bound() {
    return m_temperature * patiences()[static_cast<std::size_t>(m_numbers.below(kPatiences))];
  }
  /// A node and a cell, near the node's own or near a neighbour's; false when there is none.
  bool next(const Grid& grid, int& node, Cell& to) {
    node = m_numbers.below(m_cost.nodes());
    const bool follows = m_numbers.next() % 2 == 0;
    const int near = follows ? m_cost.neighbour(node, m_numbers.below(m_cost.degree(node))) : node;
    const int reach = follows ? std::max(2, m_reach / 4) : m_reach;
    const Cell cell = grid.of(near);
    to.row = cell.row + m_numbers.below(2 * reach + 1) - reach;
    to.column = cell.column + m_numbers.below(2 * reach + 1) - reach;
    return grid.has(to) && grid.at(to) != node;
  }

 private:
  static constexpr int kPatiences = 4096;
  /// Logarithms of evenly spread chances.
  static const std::array<float, kPatiences>& patiences() {
    static const std::array<float, kPatiences> values = [] {
      std::array<float, kPatiences> v{};
      for (std::size_t i = 0; i < v.size(); ++i) {
        v[i] = -std::log((static_cast<float>(i) + 0.5F) / static_cast<float>(kPatiences));
      }
      return v;
    }();
    return values;
  }

  const GridCost& m_cost;
  Numbers m_numbers;
  float m_temperature = 0;
  int m_reach = 1;
};

class Annealer {
 public:
  Annealer(const Component& component, const Spacing& spacing, std::uint64_t seed)
      : m_component(component),
        m_grid(startingGrid(spacing)),
        m_cost(component, m_across, m_down, component.nodes()),
        m_moves(m_cost, seed) {}

  Grid place(const Step& step) {
    shorten(step);
    m_grid = withRows(m_grid, layersFrom(m_component, m_grid));
    constexpr std::int64_t kMostNumbers = 5'000'000;
    const std::int64_t numbers = std::int64_t{m_grid.rows()} * count(m_component.arcs);
    if (numbers <= kMostNumbers) untangle(step);
    return std::move(m_grid);
  }

 private:
  Grid startingGrid(const Spacing& spacing) {
    const int nodes = m_component.nodes();
    double width = 0;
    double height = 0;
    for (int n = 0; n < nodes; ++n) {
      width += m_component.width[n];
      height += m_component.height[n];
    }
    m_across = static_cast<float>(width / nodes + spacing.node);
    // A row is as high as its highest box.
    m_down = static_cast<float>(1.5 * height / nodes + spacing.layer);
    // Lines that go round make rows wider, where they pass boxes, and higher still, where they need
    // tracks: the more, the more of the height is theirs.
    const int round = count(m_component.arcs) - nodes + 1;
    const double aspect = spacing.aspect * std::clamp(0.5 + round / 1000.0, 0.5, 2.0);
    const double fitting = std::sqrt(static_cast<double>(nodes) * m_across / (aspect * m_down));
    const int rows = std::clamp(static_cast<int>(std::lround(fitting)), 2, nodes);
    return wound(std::max(rows, inheritanceDepth(m_component)));
  }

  /// The nodes in the order of a walk over the lines, down one column and up the next, with some
  /// cells left empty.
  [[nodiscard]] Grid wound(int rows) const {
    const int nodes = m_component.nodes();
    Grid grid(rows, 1 + nodes * 23 / 20 / rows, nodes);
    int next = 0;
    for (const int node : walk()) {
      const int column = next / rows;
      const int row = next % rows;
      grid.put(node, {column % 2 == 0 ? row : rows - 1 - row, column});
      ++next;
    }
    return grid;
  }

  /// The nodes in the order of a walk over the lines, breadth first.
  [[nodiscard]] std::vector<int> walk() const {
    const Adjacency near = makeAdjacency(m_component.nodes(), [&](auto&& add) {
      for (const Arc& arc : m_component.arcs) {
        add(arc.from, arc.to);
        add(arc.to, arc.from);
      }
    });
    std::vector<int> order{0};
    std::vector<bool> met(m_component.boxes.size(), false);
    met[0] = true;
    for (std::size_t k = 0; k < order.size(); ++k) {
      for (const int next : near.of(order[k])) {
        if (met[next]) continue;
        met[next] = true;
        order.push_back(next);
      }
    }
    return order;
  }

  /// Fewer moves a node in the middle: small graphs can afford many, large ones need them.
  void shorten(const Step& step) {
    constexpr double kMostWork = 100e6;
    const double nodes = m_component.nodes();
    const double most = kMostWork * nodes / (4 * count(m_component.arcs));
    const double wanted =
        nodes * std::min({1200.0, 12 * nodes, std::max(0.33 * nodes, 1400 - 1.3 * nodes)});
    const auto moves = static_cast<int>(std::min(wanted, most) / kCoolings) + 1;
    for (int i = 0; i < kCoolings; ++i) {
      if (step) step(0.5 * i / kCoolings);
      m_moves.cool(kShortening, i / (kCoolings - 1.0), m_grid);
      for (int k = 0; k < moves; ++k) {
        int node = 0;
        Cell to{};
        if (!m_moves.next(m_grid, node, to)) continue;
        const float longer = m_cost.change(m_grid, node, to);
        if (longer <= 0 || longer <= m_moves.bound()) m_grid.exchange(node, to);
      }
    }
  }

  /// Bounds the work, not the time, so that the same graph always ends the same.
  void untangle(const Step& step) {
    constexpr double kMostWork = 1.5e9;
    const double nodes = m_component.nodes();
    const double work = std::min(kMostWork, std::max(30 * nodes * nodes, 4.5e5 * (890 - nodes)));
    m_cost.forbid();
    GridLines lines(m_component, m_grid.rows());
    for (int i = 0; i < count(m_component.arcs); ++i) lines.put(m_grid, i);
    m_lines = linesAtNodes(m_component);
    const auto moves = static_cast<int>(nodes * std::min(1000.0, 40 * nodes) / kCoolings) + 1;
    for (int i = 0; i < kCoolings; ++i) {
      const double part = i / (kCoolings - 1.0);
      if (step) step(0.5 + 0.5 * part);
      m_moves.cool(kUntangling, part, m_grid);
      const double end = work * (i + 1) / kCoolings;
      for (int k = 0; k < moves && static_cast<double>(lines.work()) < end; ++k) tryMove(lines);
    }
  }

  void tryMove(GridLines& lines) {
    int node = 0;
    Cell to{};
    if (!m_moves.next(m_grid, node, to)) return;
    const float longer = m_cost.change(m_grid, node, to);
    if (longer >= GridCost::kForbidden / 2) return;
    const float bound = m_moves.bound();
    const float crossing = kCrossing * (m_cost.across() + m_cost.down());
    const Cell from = m_grid.of(node);
    touch(node, m_grid.at(to));
    int fewer = 0;
    for (const int i : m_touched) fewer += lines.drop(m_grid, i);
    // Not even a place without any crossing would make up for the length.
    if (longer - crossing * static_cast<float>(fewer) > bound) {
      for (const int i : m_touched) lines.put(m_grid, i);
      return;
    }
    m_grid.exchange(node, to);
    int more = 0;
    for (const int i : m_touched) more += lines.add(m_grid, i);
    if (longer + crossing * static_cast<float>(more - fewer) <= bound) return;
    for (const int i : m_touched) lines.take(m_grid, i);
    m_grid.exchange(node, from);
    for (const int i : m_touched) lines.put(m_grid, i);
  }

  /// Notes the lines of two nodes, each once.
  void touch(int node, int other) {
    const auto own = m_lines.of(node);
    m_touched.assign(own.begin(), own.end());
    if (other < 0) return;
    for (const int i : m_lines.of(other)) {
      const Arc& arc = m_component.arcs[i];
      if (arc.from != node && arc.to != node) m_touched.push_back(i);
    }
  }

  const Component& m_component;
  float m_across = 0;
  float m_down = 0;
  Grid m_grid;
  GridCost m_cost;
  Moves m_moves;
  Adjacency m_lines;  ///< of each node
  std::vector<int> m_touched;
};

}  // namespace

Grid placeOnGrid(const Component& component, const Spacing& spacing, std::uint64_t seed,
                 const Step& step) {
  return Annealer(component, spacing, seed).place(step);
}

}  // namespace brisel::layout
