#pragma once

#include <functional>
#include <vector>

#include "layout/FreePlaces.h"
#include "layout/Layout.h"

namespace brisel::layout {

/// Some boxes of a diagram that are to be laid out while the others stand.
struct Part {
  Graph graph;                                     ///< of these boxes alone
  std::vector<Point> places;                       ///< upper left corners as they are
  std::vector<std::vector<Neighbour>> neighbours;  ///< of each box among those that stand
  std::vector<Rect> standing;                      ///< all other boxes, with their outlines
  Outlines outlines;                               ///< of these boxes
  Spacing spacing;
  Point corner;  ///< left of and above it nothing is put
};

using DrawGroup = std::function<Drawing(const Graph&)>;

/// How much of a drawing may be turned round to come nearer to how the boxes stand.
enum class Turning {
  /// Nothing: boxes are handed over from left to right, for a drawing that keeps that, and that
  /// leaves room for lines from a box to itself.
  keepsOrder,
  mirrors  ///< left and right, top and bottom
};

/// Draws each connected group by itself around its own middle and moves it clear of the rest as
/// little as possible. Boxes without lines among the part stay, unless they overlap others, or
/// stand above a super or below a sub class: those go to where `wishedPlaces` has them, or the
/// nearest free place. What was laid out so, and is again, stays as it is. Lines are those of the
/// drawings. Errors as of `layered`.
[[nodiscard]] Drawing drawnInGroups(const Part& part, Turning turning, const DrawGroup& draw);

/// Draws all boxes as one group.
[[nodiscard]] Drawing drawnAsOne(const Part& part, const DrawGroup& draw);

/// Rows and columns in the order in which the boxes stand, as one group; lines are straight.
[[nodiscard]] Drawing drawnInRows(const Part& part);

}  // namespace brisel::layout
