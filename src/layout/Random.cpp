#include <algorithm>
#include <cmath>
#include <numeric>

#include "layout/Numbers.h"
#include "layout/StraightLines.h"

namespace brisel::layout {

/// Boxes in random order fill rows with random gaps; in its row a box hangs at a random height.
Drawing random(const Graph& graph, const Spacing& wanted, std::uint64_t seed) {
  constexpr double kLooseness = 2.5;
  const Graph input = checked(graph);
  const Spacing spacing = checked(wanted);
  Numbers numbers(seed);
  Drawing drawing;
  drawing.positions.resize(input.boxes.size());
  std::vector<int> order(input.boxes.size());
  std::iota(order.begin(), order.end(), 0);
  for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[numbers.next() % i]);

  double area = 0;
  double meanWidth = 0;
  for (const Size& box : input.boxes) {
    area += (box.width + spacing.node) * (box.height + spacing.node) * kLooseness;
    meanWidth += box.width / static_cast<double>(input.boxes.size());
  }
  const double rowWidth = std::sqrt(area * spacing.aspect);
  double top = 0;
  for (std::size_t begin = 0; begin < order.size();) {
    double x = numbers.part() * meanWidth;
    double height = 0;
    std::size_t end = begin;
    for (; end < order.size() && (end == begin || x < rowWidth); ++end) {
      const Size& box = input.boxes[order[end]];
      drawing.positions[order[end]].x = x;
      x += box.width + spacing.node + numbers.part() * meanWidth;
      height = std::max(height, box.height);
    }
    const double room = height * 1.3;
    for (; begin < end; ++begin) {
      const double slack = room - input.boxes[order[begin]].height;
      drawing.positions[order[begin]].y = top + numbers.part() * slack;
    }
    top += room + spacing.node;
  }
  drawStraightLines(input, spacing.node, drawing);
  return drawing;
}

}  // namespace brisel::layout
