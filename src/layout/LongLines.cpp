#include "layout/LongLines.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <numeric>
#include <utility>

namespace brisel::layout {
namespace {

constexpr int kLeftOut = -2;

/// Lines that share their bends: those of a trunk, or one alone.
struct Bundle {
  std::vector<int> arcs;
  int passed = 0;  ///< layers between the upper box and the lowest
};

/// Lines of a trunk that end at most so far from the next one's end belong together.
constexpr double kNear = 1;

/// The lines that pass layers: those of each trunk that end near each other in one bundle.
std::vector<Bundle> bundlesOf(const Component& component, const std::vector<int>& layer,
                              const std::vector<double>& place) {
  const auto passed = [&](int i) {
    return layer[component.arcs[i].to] - layer[component.arcs[i].from] - 1;
  };
  const auto endOf = [&](int i) { return place.empty() ? 0 : place[component.arcs[i].to]; };
  std::vector<Bundle> bundles;
  std::map<std::pair<int, int>, std::vector<int>> trunks;
  for (int i = 0; i < count(component.arcs); ++i) {
    const Arc& arc = component.arcs[i];
    if (passed(i) == 0) continue;
    if (trunkOf(arc) >= 0) {
      trunks[{arc.from, trunkOf(arc)}].push_back(i);
    } else {
      bundles.push_back({{i}, passed(i)});
    }
  }
  for (auto& [trunk, arcs] : trunks) {
    std::stable_sort(arcs.begin(), arcs.end(), [&](int a, int b) { return endOf(a) < endOf(b); });
    double last = -INFINITY;
    for (const int i : arcs) {
      if (endOf(i) - last > kNear) bundles.emplace_back();
      last = endOf(i);
      bundles.back().arcs.push_back(i);
      bundles.back().passed = std::max(bundles.back().passed, passed(i));
    }
  }
  return bundles;
}

/// Numbers the bends; gives for each arc its first bend, -1 or kLeftOut.
std::vector<int> numberBends(const Component& component, const std::vector<double>& place,
                             LayeredGraph& graph) {
  constexpr int kMostBends = 400'000;
  const std::vector<Bundle> bundles = bundlesOf(component, graph.layer, place);
  std::vector<int> shortestFirst(bundles.size());
  std::iota(shortestFirst.begin(), shortestFirst.end(), 0);
  std::stable_sort(shortestFirst.begin(), shortestFirst.end(),
                   [&](int a, int b) { return bundles[a].passed < bundles[b].passed; });
  std::vector<int> bends(component.arcs.size(), -1);
  int room = kMostBends;
  for (const int b : shortestFirst) {
    room -= bundles[b].passed;
    if (room >= 0) continue;
    for (const int i : bundles[b].arcs) bends[i] = kLeftOut;
  }
  for (const Bundle& bundle : bundles) {
    const int first = bundle.arcs.front();
    if (bends[first] == kLeftOut) continue;
    for (const int i : bundle.arcs) bends[i] = graph.nodes();
    const int top = graph.layer[component.arcs[first].from];
    for (int k = 1; k <= bundle.passed; ++k) graph.layer.push_back(top + k);
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

LayeredGraph withBends(const Component& component, const std::vector<int>& layer,
                       const std::vector<double>& place) {
  LayeredGraph graph;
  graph.boxes = component.nodes();
  graph.layer = layer;
  graph.firstBend = numberBends(component, place, graph);
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
  orderRows(
      component, place,
      [&](int line, int row) {
        const Arc& arc = component.arcs[line];
        const int top = graph.layer[arc.from];
        return place[arc.from] +
               (place[arc.to] - place[arc.from]) * (row - top) / (graph.layer[arc.to] - top);
      },
      graph);
}

void orderRows(const Component& component, const std::vector<double>& place,
               const PlaceInRow& placeInRow, LayeredGraph& graph) {
  std::vector<double> x = place;
  x.resize(graph.layer.size(), 0);
  std::vector<int> lines(graph.layer.size(), 0);
  for (int i = 0; i < count(component.arcs); ++i) {
    if (graph.firstBend[i] < 0) continue;
    const int first = graph.layer[component.arcs[i].from] + 1;
    for (int row = first; row < graph.layer[component.arcs[i].to]; ++row) {
      const int bend = graph.firstBend[i] + row - first;
      x[bend] += placeInRow(i, row);
      ++lines[bend];
    }
  }
  for (std::size_t n = 0; n < x.size(); ++n) x[n] /= std::max(1, lines[n]);
  for (int row = 0; row < count(graph.rows); ++row) {
    std::stable_sort(graph.rows[row].begin(), graph.rows[row].end(),
                     [&](int a, int b) { return x[a] < x[b]; });
    graph.numberRow(row);
  }
}

}  // namespace brisel::layout
