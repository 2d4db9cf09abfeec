#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "layout/LayerGraph.h"
#include "layout/Packing.h"
#include "layout/StraightLines.h"

namespace brisel::layout {
namespace {

/// The boxes from the top to the bottom of a drawing by springs, which brings related ones near
/// each other, then those without lines, the highest first.
class MatrixOrder {
 public:
  explicit MatrixOrder(const Graph& graph, const Spacing& spacing)
      : m_places(spring(graph, spacing).positions), m_down(graph.boxes.size()) {
    for (std::size_t i = 0; i < m_places.size(); ++i) {
      m_places[i] = m_places[i] + Point{graph.boxes[i].width / 2, graph.boxes[i].height / 2};
    }
    std::vector<bool> joined(graph.boxes.size(), false);
    for (const Edge& edge : graph.edges) {
      if (edge.source != edge.target) joined[edge.source] = joined[edge.target] = true;
    }
    std::iota(m_down.begin(), m_down.end(), 0);
    const auto alone =
        std::stable_partition(m_down.begin(), m_down.end(), [&](int n) { return joined[n]; });
    m_joined = static_cast<int>(alone - m_down.begin());
    std::stable_sort(m_down.begin(), alone,
                     [&](int a, int b) { return m_places[a].y < m_places[b].y; });
    std::stable_sort(alone, m_down.end(),
                     [&](int a, int b) { return graph.boxes[a].height > graph.boxes[b].height; });
  }

  /// Row by row, each from the left to the right.
  [[nodiscard]] std::vector<int> inRows(int columns) const {
    std::vector<int> order = m_down;
    for (int first = 0; first < m_joined; first += columns) {
      const auto begin = order.begin() + first;
      const auto end = order.begin() + std::min(first + columns, m_joined);
      std::stable_sort(begin, end, [&](int a, int b) { return m_places[a].x < m_places[b].x; });
    }
    return order;
  }
  [[nodiscard]] int boxes() const { return count(m_down); }

 private:
  std::vector<Point> m_places;  ///< middles
  std::vector<int> m_down;
  int m_joined = 0;  ///< so many of them have lines
};

class MatrixGrid {
 public:
  MatrixGrid(const Graph& graph, std::vector<int> order, double gap, int columns)
      : m_order(std::move(order)),
        m_columns(columns),
        m_left(columns + 1, 0),
        m_top((m_order.size() + columns - 1) / columns + 1, 0) {
    for (int i = 0; i < count(m_order); ++i) {
      const Size& box = graph.boxes[m_order[i]];
      double& width = m_left[i % columns + 1];
      double& height = m_top[i / columns + 1];
      width = std::max(width, box.width + gap);
      height = std::max(height, box.height + gap);
    }
    for (int c = 0; c < columns; ++c) m_left[c + 1] += m_left[c];
    for (std::size_t r = 0; r + 1 < m_top.size(); ++r) m_top[r + 1] += m_top[r];
  }

  [[nodiscard]] Size size() const { return {m_left.back(), m_top.back()}; }
  void place(Drawing& drawing) const {
    for (int i = 0; i < count(m_order); ++i) {
      drawing.positions[m_order[i]] = {m_left[i % m_columns], m_top[i / m_columns]};
    }
  }

 private:
  std::vector<int> m_order;
  int m_columns;
  std::vector<double> m_left;
  std::vector<double> m_top;
};

}  // namespace

Drawing matrix(const Graph& graph, const Spacing& wanted) {
  const Graph input = checked(graph);
  const Spacing spacing = checked(wanted);
  Drawing drawing;
  drawing.positions.resize(input.boxes.size());
  const MatrixOrder order(input, spacing);
  double least = std::numeric_limits<double>::infinity();
  int best = 1;
  for (int columns = 1; columns <= order.boxes(); columns += 1 + columns / 16) {
    const MatrixGrid grid(input, order.inRows(columns), spacing.node, columns);
    if (waste(grid.size(), spacing.aspect) >= least) continue;
    least = waste(grid.size(), spacing.aspect);
    best = columns;
  }
  if (order.boxes() > 0) MatrixGrid(input, order.inRows(best), spacing.node, best).place(drawing);
  drawStraightLines(input, spacing.node, drawing);
  return drawing;
}

}  // namespace brisel::layout
