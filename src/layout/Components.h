#pragma once

#include <vector>

#include "layout/LayerGraph.h"
#include "layout/Layout.h"

namespace brisel::layout {

/// The connected parts of a graph.
struct Parts {
  std::vector<Component> components;  ///< those with lines, in the order of their first box
  std::vector<int> alone;             ///< boxes without a line to another box
};

/// Pre: the graph is checked.
/// Post: every box is in one component or alone; every edge between two boxes is an arc that runs
/// from super to sub class or from source to target; loops are arcs of none, but a box that has
/// them is wider by "loopRoom" for each.
[[nodiscard]] Parts partsOf(const Graph& graph, double loopRoom);

}  // namespace brisel::layout
