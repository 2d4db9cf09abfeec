#pragma once

#include "layout/Layout.h"

namespace brisel::layout {

/// The graph with every size finite and between zero and kLargestSide. An Error when an edge names
/// a box that is not there.
[[nodiscard]] Graph checked(const Graph& graph);
/// The spacing with every part finite and above zero.
[[nodiscard]] Spacing checked(const Spacing& spacing);

/// A loop at the right side of a box, the "rank"th from the inside out.
[[nodiscard]] std::vector<Point> loop(const Rect& box, int rank, double gap);

/// Draws every edge as a straight line between its boxes' borders, several between the same two
/// boxes beside each other, loops at the right side.
void drawStraightLines(const Graph& graph, double gap, Drawing& drawing);

}  // namespace brisel::layout
