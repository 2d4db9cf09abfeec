#pragma once

#include <vector>

#include "layout/LayerGraph.h"
#include "layout/Layout.h"

namespace brisel::layout {

/// The rows of one component and the lines between them.
struct Routing {
  std::vector<double> rowTop;  ///< boxes hang from it
  double bottom = 0;           ///< of the lowest row
  std::vector<std::vector<platform::Point>>
      lines;  ///< of each arc, from the upper to the lower box
};

/// Leads the line of every arc from the bottom of its upper box to the top of its lower box, with
/// right angles, and opens the rows as far as the lines need.
/// Pre: "x" is the middle of every node; nodes of a row keep their gaps.
/// Post: lines are axis-parallel and enter no foreign box. Vertical pieces run through the rows,
/// horizontal ones between them on tracks. Generalizations into one super class share their points
/// up to where they part, realizations likewise. An arc that was left out of the rows runs round
/// them on the right.
[[nodiscard]] Routing routeLines(const Component& component, const LayeredGraph& graph,
                                 const std::vector<double>& x, const Spacing& spacing);

}  // namespace brisel::layout
