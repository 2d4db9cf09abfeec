#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "layout/LayerGraph.h"
#include "layout/PartLayout.h"
#include "layout/StraightLines.h"

namespace brisel::layout {
namespace {

/// So many boxes in a row that the whole has about the wanted shape, whatever their order.
int columnsFor(const Graph& graph, const Spacing& spacing) {
  double width = 0;
  double height = 0;
  for (const Size& box : graph.boxes) {
    width += box.width + spacing.node;
    height += box.height + spacing.node;
  }
  const double wanted = std::sqrt(spacing.aspect * count(graph.boxes) * height / width);
  return std::clamp(static_cast<int>(std::round(wanted)), 1, count(graph.boxes));
}

}  // namespace

Drawing drawnInRows(const Part& part) {
  const Spacing spacing = checked(part.spacing);
  return drawnAsOne(part, [&](const Graph& graph) {
    const int columns = columnsFor(graph, spacing);
    std::vector<int> order(graph.boxes.size());
    std::iota(order.begin(), order.end(), 0);
    const auto before = [&](double Point::*first, double Point::*second) {
      return [&, first, second](int a, int b) {
        const Point p = part.places[a];
        const Point q = part.places[b];
        return std::pair(p.*first, p.*second) < std::pair(q.*first, q.*second);
      };
    };
    std::stable_sort(order.begin(), order.end(), before(&Point::y, &Point::x));
    std::vector<double> left(static_cast<std::size_t>(columns) + 1, 0);
    std::vector<double> top{0};
    for (int first = 0; first < count(order); first += columns) {
      const auto begin = order.begin() + first;
      const auto end = order.begin() + std::min(first + columns, count(order));
      std::stable_sort(begin, end, before(&Point::x, &Point::y));
      double height = 0;
      for (auto it = begin; it != end; ++it) {
        double& width = left[static_cast<std::size_t>(it - begin) + 1];
        width = std::max(width, graph.boxes[*it].width + spacing.node);
        height = std::max(height, graph.boxes[*it].height + spacing.node);
      }
      top.push_back(top.back() + height);
    }
    for (int c = 0; c < columns; ++c) left[c + 1] += left[c];
    Drawing drawing;
    drawing.positions.resize(order.size());
    for (int i = 0; i < count(order); ++i) {
      drawing.positions[order[i]] = {left[i % columns], top[i / columns]};
    }
    drawStraightLines(graph, spacing.node, drawing);
    return drawing;
  });
}

}  // namespace brisel::layout
