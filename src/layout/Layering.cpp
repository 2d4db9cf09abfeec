#include "layout/Layering.h"

#include <algorithm>
#include <numeric>
#include <tuple>
#include <utility>

#include "layout/NetworkSimplex.h"

namespace brisel::layout {
namespace {

using Order = std::vector<std::pair<int, int>>;  ///< the first above the second

Order inheritanceOf(const Component& component) {
  Order order;
  for (const Arc& arc : component.arcs) {
    if (arc.inheritance) order.emplace_back(arc.from, arc.to);
  }
  return order;
}

/// Moves nodes down as little as the order, which has no circles, needs.
void pushDown(const Order& order, std::vector<int>& layer) {
  const int nodes = count(layer);
  const Adjacency below = makeAdjacency(nodes, [&](auto&& add) {
    for (const auto& [upper, lower] : order) add(upper, lower);
  });
  std::vector<int> open(layer.size(), 0);
  for (const auto& [upper, lower] : order) ++open[lower];
  std::vector<int> ready;
  for (int n = 0; n < nodes; ++n) {
    if (open[n] == 0) ready.push_back(n);
  }
  for (std::size_t k = 0; k < ready.size(); ++k) {
    for (const int lower : below.of(ready[k])) {
      layer[lower] = std::max(layer[lower], layer[ready[k]] + 1);
      if (--open[lower] == 0) ready.push_back(lower);
    }
  }
}

/// Numbers the layers that have nodes in sequence.
void closeGaps(std::vector<int>& layer) {
  std::vector<int> used(1 + *std::max_element(layer.begin(), layer.end()), 0);
  for (const int l : layer) used[l] = 1;
  std::exclusive_scan(used.begin(), used.end(), used.begin(), 0);
  for (int& l : layer) l = used[l];
}

}  // namespace

int inheritanceDepth(const Component& component) {
  std::vector<int> layer(component.boxes.size(), 0);
  pushDown(inheritanceOf(component), layer);
  return 1 + *std::max_element(layer.begin(), layer.end());
}

std::vector<int> layersOf(const Component& component) {
  constexpr std::int64_t kBudget = 300'000'000;
  std::vector<Constraint> constraints;
  constraints.reserve(component.arcs.size());
  for (const Arc& arc : component.arcs) constraints.push_back({arc.from, arc.to, 1, 1});
  return networkSimplex(component.nodes(), constraints, kBudget);
}

std::vector<int> layersFrom(const Component& component, const Grid& grid) {
  std::vector<int> layer;
  for (int n = 0; n < component.nodes(); ++n) layer.push_back(grid.of(n).row);
  Order order = inheritanceOf(component);
  pushDown(order, layer);
  // Sorted by layer and column, nodes have no circle between them, whichever way their arcs lead.
  const auto place = [&](int n) { return std::tuple(layer[n], grid.of(n).column, n); };
  for (const Arc& arc : component.arcs) {
    if (arc.inheritance) continue;
    const bool down = place(arc.from) < place(arc.to);
    order.emplace_back(down ? arc.from : arc.to, down ? arc.to : arc.from);
  }
  pushDown(order, layer);
  closeGaps(layer);
  return layer;
}

void turnDown(Component& component, const std::vector<int>& layer) {
  for (Arc& arc : component.arcs) {
    if (layer[arc.from] <= layer[arc.to]) continue;
    std::swap(arc.from, arc.to);
    arc.reversed = !arc.reversed;
  }
}

}  // namespace brisel::layout
