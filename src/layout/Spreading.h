#pragma once

#include <vector>

#include "platform/Geometry.h"

namespace brisel::layout {

/// Gives every box about the room that it needs, so that little is left to the removal of overlaps.
/// Pre: finite upper left corners. Post: the whole is large enough for all boxes with their gaps.
/// The places are drawn apart evenly; where they still lie on heaps, halves of the boxes get halves
/// of the room again and again, left ones the left and upper ones the upper (after the k-d trees of
/// Bentley: Multidimensional binary search trees used for associative searching, 1975).
void spread(const std::vector<platform::Size>& boxes, double gap,
            std::vector<platform::Point>& places);

}  // namespace brisel::layout
