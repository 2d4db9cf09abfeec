#pragma once

#include <optional>
#include <vector>

#include "layout/Layout.h"

/// Placing among boxes that stand: pure functions that leave these where they are.
namespace brisel::layout {

/// A short shift that brings rectangles, which keep their places to each other, at least "gap"
/// clear of all that stand; none when they are clear already. Looks from side to side of what is in
/// the way, the nearest first; after a bounded search it goes right of everything.
[[nodiscard]] Point clearShift(const std::vector<Rect>& moving, const std::vector<Rect>& standing,
                               double gap);

/// The upper left corners of all boxes. `standing` gives those that stay; the others are placed one
/// by one, those with the most neighbours that have a place first: below their super classes, above
/// their sub classes, else beside what they are joined to, as near as there is room. Those that are
/// joined to nothing that stands are laid out by themselves below everything. No box that is placed
/// overlaps another. An Error as for `layered`, and (invalidCall) for another number of places.
[[nodiscard]] std::vector<Point> placedAmong(const Graph& graph,
                                             const std::vector<std::optional<Point>>& standing,
                                             const Spacing& spacing);

}  // namespace brisel::layout
