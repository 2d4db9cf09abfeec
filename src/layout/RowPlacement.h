#pragma once

#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// Room beside the nodes of one row.
struct RowGaps {
  double box;     ///< between two boxes
  double line;    ///< between two lines, or a line and a box
  double up = 1;  ///< how strongly a node is pulled to what is above it, beside 1 to what is below
};

/// The x of the middle of every node.
/// Pre: the rows are ordered; "width" is that of every node, 0 for bends.
/// Post: neighbours in a row keep their order and their gaps; the leftmost border is at 0.
/// Sweeps over the rows, each placed at the least squares from where its neighbours pull it, under
/// its gaps (pool adjacent violators: Barlow, Bartholomew, Bremner, Brunk: Statistical inference
/// under order restrictions, 1972); then what is nearly straight is made so.
[[nodiscard]] std::vector<double> placeInRows(const LayeredGraph& graph,
                                              const std::vector<double>& width,
                                              const RowGaps& gaps);

}  // namespace brisel::layout
