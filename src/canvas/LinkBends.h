#pragma once

#include <vector>

#include "canvas/LinkRoute.h"
#include "platform/Geometry.h"

/// Which bends a line needs to run as it should: pure functions over boxes and points, in twips.
namespace brisel::canvas {

/// The fewest bends with which `route` runs as the course does, which goes from border to border:
/// its ends within a pixel, its right angles kept. An end that the route would put elsewhere gets
/// a bend straight before its place.
[[nodiscard]] std::vector<platform::Point> bendsFor(const platform::Rect& source,
                                                    const platform::Rect& target,
                                                    const std::vector<platform::Point>& course);

/// A box before and after it was moved or resized.
struct BoxChange {
  platform::Rect before;
  platform::Rect after;
};

/// The bends of a line of at least one bend whose boxes changed. `course` are all its points as
/// they were. An end that met its box at a right angle does so at the same side, with the bend
/// next to it shifted or doubled; where there is no room for that the line gets the bends of
/// `rightAngled` with its rank among all lines of its boxes. Bends that a box came to cover are
/// dropped. Without a change they stay.
[[nodiscard]] std::vector<platform::Point> bendsAfter(const std::vector<platform::Point>& course,
                                                      const BoxChange& source,
                                                      const BoxChange& target, Rank rank);

/// The bends of a line of right angles between the sides that face each other, one of several
/// beside each other; none between boxes that overlap.
[[nodiscard]] std::vector<platform::Point> rightAngled(const platform::Rect& source,
                                                       const platform::Rect& target, Rank rank);

}  // namespace brisel::canvas
