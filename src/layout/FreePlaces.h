#pragma once

#include <optional>
#include <vector>

#include "layout/Layout.h"

/// Placing among boxes that stand: pure functions that leave these where they are.
namespace brisel::layout {

class Occupied;

/// A short shift that brings rectangles, which keep their places to each other, at least "gap"
/// clear of all that stand, and none left of or above the corner; none when they are so already.
/// Looks from side to side of what is in the way, the nearest first; after a bounded search it goes
/// right of everything.
[[nodiscard]] Point clearShift(const std::vector<Rect>& moving, const Occupied& standing,
                               double gap, Point corner);

/// What boxes take together with the lines from each to itself: of each box, from its upper left
/// corner. None are the boxes alone.
using Outlines = std::vector<Rect>;
[[nodiscard]] inline Rect outlineAt(const Outlines& outlines, std::size_t box, Size size,
                                    Point corner) {
  const Rect outline = outlines.empty() ? Rect{0, 0, size.width, size.height} : outlines[box];
  return outline.movedBy(corner);
}

/// A box that has its place, and how another one is joined to it.
struct Neighbour {
  Rect rect;
  EdgeKind kind = EdgeKind::association;
  bool isSuper = false;  ///< it is the target of the edge
};
/// Where the corner of a box would be best, the best place first: below its super classes and above
/// its sub classes, else amid its neighbours, or beside the only one. Pre: there are some.
[[nodiscard]] std::vector<Point> wishedPlaces(Size size, const std::vector<Neighbour>& neighbours,
                                              const Spacing& spacing);

/// The upper left corners of all boxes. `standing` gives those that stay; the others are placed one
/// by one, those with the most neighbours that have a place first: below their super classes, above
/// their sub classes, else beside what they are joined to, as near as there is room. Those that are
/// joined to nothing that stands are laid out by themselves below everything. No box that is placed
/// overlaps another, nor do outlines of those that stand, or lies left of or above the corner. An
/// Error as for `layered`, and (invalidCall) for another number of places.
[[nodiscard]] std::vector<Point> placedAmong(const Graph& graph,
                                             const std::vector<std::optional<Point>>& standing,
                                             const Spacing& spacing, Point corner,
                                             const Outlines& outlines = {});

}  // namespace brisel::layout
