#pragma once

#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// The layer of every node, from 0 at the top.
/// Pre: the arcs are acyclic and connect all nodes.
/// Post: "to" of every arc lies at least one layer below "from"; the lines span the fewest layers,
/// those of inheritance counted three times.
[[nodiscard]] std::vector<int> layersOf(const Component& component);

}  // namespace brisel::layout
