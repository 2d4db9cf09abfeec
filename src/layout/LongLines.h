#pragma once

#include <functional>
#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// Puts a bend on every layer that a line passes. Lines of one trunk that end near each other share
/// their bends: a stem, from which arms lead to the sub classes.
/// Pre: "layer" is a layering of the component; "place" says how far to the right each box stands,
/// in columns, and is empty where that is not known.
/// Post: all lines of the result join neighbouring layers, except where their bends together would
/// be more than 400,000: the longest are then left out and have no bends. Rows hold
/// every node once, in the order of a walk over the lines, so that related nodes start near each
/// other.
[[nodiscard]] LayeredGraph withBends(const Component& component, const std::vector<int>& layer,
                                     const std::vector<double>& place = {});

/// Orders the rows by a place for every box; bends stand on the straight way between their boxes.
void orderRows(const Component& component, const std::vector<double>& place, LayeredGraph& graph);

/// The same with a place for every line in each row that it passes; bends that lines share stand in
/// the middle of theirs.
using PlaceInRow = std::function<double(int line, int row)>;
void orderRows(const Component& component, const std::vector<double>& place,
               const PlaceInRow& placeInRow, LayeredGraph& graph);

}  // namespace brisel::layout
