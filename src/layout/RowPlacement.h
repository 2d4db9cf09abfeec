#pragma once

#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// Room beside the nodes of one row.
struct RowGaps {
  double box;   ///< between two boxes
  double line;  ///< between two lines, or a line and a box
};

/// The x of the middle of every node.
/// Pre: the rows are ordered; "width" is that of every node, 0 for bends.
/// Post: neighbours in a row keep their order and their gaps; the leftmost border is at 0.
/// Brandes, Koepf: Fast and simple horizontal coordinate assignment, 2001, with widths.
[[nodiscard]] std::vector<double> placeInRows(const LayeredGraph& graph,
                                              const std::vector<double>& width,
                                              const RowGaps& gaps);

}  // namespace brisel::layout
