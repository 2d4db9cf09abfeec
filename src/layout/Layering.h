#pragma once

#include <vector>

#include "layout/Grid.h"

namespace brisel::layout {

/// The number of nodes on the longest way down from super to sub classes.
/// Pre: inheritance is acyclic.
[[nodiscard]] int inheritanceDepth(const Component& component);

/// The layer of every node, from 0 at the top.
/// Pre: the arcs are acyclic and connect all nodes.
/// Post: "to" of every arc lies at least one layer below "from"; the lines span the fewest layers.
[[nodiscard]] std::vector<int> layersOf(const Component& component);

/// The layer of every node, from 0 at the top.
/// Pre: inheritance is acyclic.
/// Post: every sub class lies below its super class and no arc joins two nodes of one layer; every
/// layer has a node. A node stays in its row of the grid or goes as little below it as that needs.
[[nodiscard]] std::vector<int> layersFrom(const Component& component, const Grid& grid);

/// Turns those arcs round that lead up. Pre: none joins nodes of one layer.
void turnDown(Component& component, const std::vector<int>& layer);

}  // namespace brisel::layout
