#include "layout/Components.h"

#include <utility>

namespace brisel::layout {
namespace {

bool isInheritance(EdgeKind kind) {
  return kind == EdgeKind::generalization || kind == EdgeKind::realization;
}

/// The number of each box's part; parts are numbered in the order of their first boxes.
std::vector<int> partNumbers(const Graph& graph, int& parts) {
  const int boxes = count(graph.boxes);
  const Adjacency near = makeAdjacency(boxes, [&](auto&& add) {
    for (const Edge& edge : graph.edges) {
      add(static_cast<int>(edge.source), static_cast<int>(edge.target));
      add(static_cast<int>(edge.target), static_cast<int>(edge.source));
    }
  });
  std::vector<int> part(graph.boxes.size(), -1);
  std::vector<int> stack;
  parts = 0;
  for (int start = 0; start < boxes; ++start) {
    if (part[start] >= 0) continue;
    part[start] = parts;
    stack.push_back(start);
    while (!stack.empty()) {
      const int node = stack.back();
      stack.pop_back();
      for (const int next : near.of(node)) {
        if (part[next] >= 0) continue;
        part[next] = parts;
        stack.push_back(next);
      }
    }
    ++parts;
  }
  return part;
}

}  // namespace

Parts partsOf(const Graph& graph, double loopRoom) {
  int parts = 0;
  const std::vector<int> part = partNumbers(graph, parts);
  std::vector<int> size(parts, 0);
  for (const int p : part) ++size[p];
  std::vector<int> component(parts, -1);
  std::vector<int> number(graph.boxes.size(), 0);
  Parts result;
  for (int box = 0; box < count(graph.boxes); ++box) {
    int& own = component[part[box]];
    if (size[part[box]] == 1) {
      result.alone.push_back(box);
      continue;
    }
    if (own < 0) {
      own = count(result.components);
      result.components.emplace_back();
    }
    Component& c = result.components[own];
    number[box] = c.nodes();
    c.boxes.push_back(box);
    c.width.push_back(graph.boxes[box].width);
    c.room.push_back(0);
    c.height.push_back(graph.boxes[box].height);
  }
  for (int i = 0; i < count(graph.edges); ++i) {
    const Edge& edge = graph.edges[i];
    const int own = component[part[edge.source]];
    if (own < 0) continue;
    Component& c = result.components[own];
    int from = number[edge.source];
    int to = number[edge.target];
    if (from == to) {
      c.room[from] += loopRoom;
      c.width[from] += loopRoom;
      continue;
    }
    const bool inherits = isInheritance(edge.kind);
    if (inherits) std::swap(from, to);
    c.arcs.push_back({from, to, i, inherits, false, edge.kind});
  }
  return result;
}

}  // namespace brisel::layout
