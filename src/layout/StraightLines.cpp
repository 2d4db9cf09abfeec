#include "layout/StraightLines.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <utility>

#include "platform/Error.h"

namespace brisel::layout {
namespace {

double checkedSide(double side) {
  if (std::isnan(side) || side < 0) return 0;
  return std::min(side, kLargestSide);
}

double above(double value, double otherwise) {
  return std::isfinite(value) && value > 0 ? std::min(value, kLargestSide) : otherwise;
}

/// Where the way from a point in a box to one outside leaves the box.
Point leaving(const Rect& box, Point from, Point to) {
  const Point way = to - from;
  double part = 1;
  if (way.x > 0) part = std::min(part, (box.right() - from.x) / way.x);
  if (way.x < 0) part = std::min(part, (box.left - from.x) / way.x);
  if (way.y > 0) part = std::min(part, (box.bottom() - from.y) / way.y);
  if (way.y < 0) part = std::min(part, (box.top - from.y) / way.y);
  return from + way * std::max(0.0, part);
}

}  // namespace

Graph checked(const Graph& graph) {
  Graph result = graph;
  for (Size& box : result.boxes) box = {checkedSide(box.width), checkedSide(box.height)};
  for (std::size_t i = 0; i < result.edges.size(); ++i) {
    const Edge& edge = result.edges[i];
    if (edge.source < result.boxes.size() && edge.target < result.boxes.size()) continue;
    throw platform::Error(platform::ErrorNumber::subscript,
                          "Edge " + std::to_string(i) + " joins a box that is not there.");
  }
  return result;
}

Spacing checked(const Spacing& spacing) {
  const Spacing usual;
  const double node = above(spacing.node, usual.node);
  return {node, above(spacing.layer, usual.layer),
          std::clamp(above(spacing.aspect, usual.aspect), 0.01, 100.0), above(spacing.alone, node)};
}

std::vector<Point> loop(const Rect& box, int rank, double gap) {
  const double out = box.right() + gap * (rank + 1);
  const double reach = box.height * (0.15 + 0.3 * rank / (rank + 1.0));
  const double middle = box.center().y;
  return {{box.right(), middle - reach},
          {out, middle - reach},
          {out, middle + reach},
          {box.right(), middle + reach}};
}

void drawStraightLines(const Graph& graph, double gap, Drawing& drawing) {
  std::map<std::pair<std::size_t, std::size_t>, std::pair<int, int>> pairs;  // total, drawn
  const auto pairOf = [](const Edge& edge) { return std::minmax(edge.source, edge.target); };
  for (const Edge& edge : graph.edges) ++pairs[pairOf(edge)].first;
  drawing.lines.assign(graph.edges.size(), {});
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    const Edge& edge = graph.edges[i];
    const auto boxOf = [&](std::size_t n) {
      const Point at = drawing.positions[n];
      return Rect{at.x, at.y, graph.boxes[n].width, graph.boxes[n].height};
    };
    auto& [total, drawn] = pairs[pairOf(edge)];
    const int rank = drawn++;
    const auto [low, high] = pairOf(edge);
    const Rect first = boxOf(low);
    if (low == high) {
      drawing.lines[i] = loop(first, rank, gap / (total + 1));
      continue;
    }
    const Rect second = boxOf(high);
    const Point way = second.center() - first.center();
    const double length = std::hypot(way.x, way.y);
    Point aside{0, 0};
    if (length > 0 && total > 1) {
      const double room = 0.6 * std::min({first.width, first.height, second.width, second.height});
      const double step = std::min(gap / 2, room / total);
      aside = Point{-way.y, way.x} * ((rank - (total - 1) / 2.0) * step / length);
    }
    const Point a = first.center() + aside;
    const Point b = second.center() + aside;
    std::vector<Point> line{leaving(first, a, b), leaving(second, b, a)};
    if (edge.source != low) std::reverse(line.begin(), line.end());
    drawing.lines[i] = std::move(line);
  }
}

}  // namespace brisel::layout
