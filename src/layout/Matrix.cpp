#include <algorithm>
#include <cmath>
#include <limits>

#include "layout/LayerGraph.h"
#include "layout/Packing.h"
#include "layout/StraightLines.h"

namespace brisel::layout {
namespace {

/// Boxes in the order of a walk over the lines, breadth first, from the first box of each part.
std::vector<int> relatedOrder(const Graph& graph) {
  const int boxes = count(graph.boxes);
  const Adjacency near = makeAdjacency(boxes, [&](auto&& add) {
    for (const Edge& edge : graph.edges) {
      add(static_cast<int>(edge.source), static_cast<int>(edge.target));
      add(static_cast<int>(edge.target), static_cast<int>(edge.source));
    }
  });
  std::vector<bool> met(graph.boxes.size(), false);
  std::vector<int> order;
  for (int start = 0; start < boxes; ++start) {
    if (met[start]) continue;
    met[start] = true;
    std::size_t next = order.size();
    order.push_back(start);
    for (; next < order.size(); ++next) {
      for (const int other : near.of(order[next])) {
        if (met[other]) continue;
        met[other] = true;
        order.push_back(other);
      }
    }
  }
  return order;
}

class Grid {
 public:
  Grid(const Graph& graph, const std::vector<int>& order, double gap, int columns)
      : m_order(order),
        m_columns(columns),
        m_left(columns + 1, 0),
        m_top((order.size() + columns - 1) / columns + 1, 0) {
    for (int i = 0; i < count(order); ++i) {
      const Size& box = graph.boxes[order[i]];
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
  const std::vector<int>& m_order;
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
  const std::vector<int> order = relatedOrder(input);
  double least = std::numeric_limits<double>::infinity();
  int best = 1;
  for (int columns = 1; columns <= count(order); columns += 1 + columns / 16) {
    const double now = waste(Grid(input, order, spacing.node, columns).size(), spacing.aspect);
    if (now >= least) continue;
    least = now;
    best = columns;
  }
  if (!order.empty()) Grid(input, order, spacing.node, best).place(drawing);
  drawStraightLines(input, spacing.node, drawing);
  return drawing;
}

}  // namespace brisel::layout
