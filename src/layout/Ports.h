#pragma once

#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// Where every arc meets its boxes.
struct Ports {
  std::vector<double> start;  ///< x at the bottom side of the upper box
  std::vector<double> end;    ///< x at the top side of the lower box
  std::vector<int> trunk;     ///< arcs with the same number, from 0 on, leave their upper box as
                              ///< one line; -1: alone
};

/// Spreads the ends of lines along the sides of the boxes.
/// Pre: "x" is the middle of every node; rows are ordered.
/// Post: lines that share a side start apart from each other in the order of their next nodes, a
/// line that can be straight is; generalizations into one super class share one port there, and so
/// do realizations.
[[nodiscard]] Ports spreadPorts(const Component& component, const LayeredGraph& graph,
                                const std::vector<double>& x, double gap);

}  // namespace brisel::layout
