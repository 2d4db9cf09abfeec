#include "layout/LongLines.h"

#include <algorithm>
#include <numeric>

namespace brisel::layout {
namespace {

constexpr int kLeftOut = -2;

/// Numbers the bends; gives for each arc its first bend, -1 or kLeftOut.
std::vector<int> numberBends(const Component& component, LayeredGraph& graph) {
  constexpr int kMostBends = 400'000;
  const auto span = [&](int i) {
    return graph.layer[component.arcs[i].to] - graph.layer[component.arcs[i].from];
  };
  std::vector<int> shortestFirst(component.arcs.size());
  std::iota(shortestFirst.begin(), shortestFirst.end(), 0);
  std::stable_sort(shortestFirst.begin(), shortestFirst.end(),
                   [&](int a, int b) { return span(a) < span(b); });
  std::vector<int> bends(component.arcs.size(), kLeftOut);
  int room = kMostBends;
  for (const int i : shortestFirst) {
    if (span(i) - 1 > room) break;
    room -= span(i) - 1;
    bends[i] = -1;
  }
  for (int i = 0; i < count(component.arcs); ++i) {
    if (bends[i] == kLeftOut || span(i) == 1) continue;
    bends[i] = graph.nodes();
    const int top = graph.layer[component.arcs[i].from];
    for (int k = 1; k < span(i); ++k) graph.layer.push_back(top + k);
  }
  return bends;
}

template <class Line>
void eachShortLine(const Component& component, const LayeredGraph& graph,
                   const std::vector<int>& bends, Line&& line) {
  for (int i = 0; i < count(component.arcs); ++i) {
    if (bends[i] == kLeftOut) continue;
    const Arc& arc = component.arcs[i];
    int upper = arc.from;
    if (bends[i] >= 0) {
      const int passed = graph.layer[arc.to] - graph.layer[arc.from] - 1;
      for (int k = 0; k < passed; ++k) {
        line(upper, bends[i] + k);
        upper = bends[i] + k;
      }
    }
    line(upper, arc.to);
  }
}

/// Fills the rows in the order in which a walk over the lines, depth first, meets the nodes.
void fillRows(LayeredGraph& graph) {
  const int layers = 1 + *std::max_element(graph.layer.begin(), graph.layer.end());
  graph.rows.assign(layers, {});
  graph.position.assign(graph.layer.size(), -1);
  std::vector<int> stack;
  const auto meet = [&](int node) {
    if (graph.position[node] >= 0) return;
    auto& row = graph.rows[graph.layer[node]];
    graph.position[node] = count(row);
    row.push_back(node);
    stack.push_back(node);
  };
  for (int start = 0; start < graph.nodes(); ++start) {
    if (graph.above.degree(start) > 0) continue;
    meet(start);
    while (!stack.empty()) {
      const int node = stack.back();
      stack.pop_back();
      for (const int next : graph.below.of(node)) meet(next);
      for (const int next : graph.above.of(node)) meet(next);
    }
  }
}

}  // namespace

LayeredGraph withBends(const Component& component, const std::vector<int>& layer) {
  LayeredGraph graph;
  graph.boxes = component.nodes();
  graph.layer = layer;
  graph.firstBend = numberBends(component, graph);
  graph.above = makeAdjacency(graph.nodes(), [&](auto&& add) {
    eachShortLine(component, graph, graph.firstBend, [&](int u, int v) { add(v, u); });
  });
  graph.below = makeAdjacency(graph.nodes(), [&](auto&& add) {
    eachShortLine(component, graph, graph.firstBend, [&](int u, int v) { add(u, v); });
  });
  for (int& first : graph.firstBend) first = std::max(first, -1);
  fillRows(graph);
  return graph;
}

void orderRows(const Component& component, const std::vector<double>& place, LayeredGraph& graph) {
  std::vector<double> x = place;
  x.resize(graph.layer.size());
  for (int i = 0; i < count(component.arcs); ++i) {
    if (graph.firstBend[i] < 0) continue;
    const Arc& arc = component.arcs[i];
    const int span = graph.layer[arc.to] - graph.layer[arc.from];
    for (int k = 1; k < span; ++k) {
      x[graph.firstBend[i] + k - 1] =
          place[arc.from] + (place[arc.to] - place[arc.from]) * k / span;
    }
  }
  for (int row = 0; row < count(graph.rows); ++row) {
    std::stable_sort(graph.rows[row].begin(), graph.rows[row].end(),
                     [&](int a, int b) { return x[a] < x[b]; });
    graph.numberRow(row);
  }
}

}  // namespace brisel::layout
