#pragma once

#include <vector>

#include "layout/LayerGraph.h"
#include "platform/Geometry.h"

namespace brisel::layout {

/// Where the nodes of one component stand.
struct Placement {
  std::vector<double> x;          ///< middle of every node
  std::vector<double> rowTop;     ///< of each row; boxes hang from it
  std::vector<double> rowBottom;  ///< of each row: that of its highest box
};

/// The line of every arc, from the bottom of its upper box to the top of its lower box.
/// Pre: nodes of a row keep their gaps.
/// Post: no line enters a foreign box; lines that share a side of a box start apart from each
/// other in the order of their next nodes, except that inheritance meets a super class at one
/// point.
[[nodiscard]] std::vector<std::vector<platform::Point>> routeLines(const Component& component,
                                                                   const LayeredGraph& graph,
                                                                   const Placement& placement,
                                                                   double gap);

}  // namespace brisel::layout
