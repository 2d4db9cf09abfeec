#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "canvas/Metrics.h"
#include "layout/LabelPlacement.h"
#include "platform/Geometry.h"

/// Where lines run and where their texts stand: pure functions over boxes and bends, in twips.
namespace brisel::canvas {

/// Which of how many straight lines that join the same two boxes. They spread side by side in the
/// order of the index, seen from the pair's first box: `reversed` is a line that runs towards it.
struct Rank {
  std::size_t index = 0;
  std::size_t count = 1;
  bool reversed = false;

  friend bool operator==(const Rank&, const Rank&) = default;
};

/// All points: from the border of the source over the bends to the border of the target. An end
/// next to a bend that lies straight beside its box meets the box at a right angle, any other
/// points to the box's middle.
[[nodiscard]] std::vector<platform::Point> route(const platform::Rect& source,
                                                 const platform::Rect& target,
                                                 const std::vector<platform::Point>& bends,
                                                 Rank rank);
/// A line from a box to itself that has no bends: round the upper right corner, further out for
/// each that comes later.
[[nodiscard]] std::vector<platform::Point> loop(const platform::Rect& box, Rank rank);

/// Where the ray from the middle of the box through a point leaves the box.
[[nodiscard]] platform::Point leaving(const platform::Rect& box, platform::Point from,
                                      platform::Point through);

/// An end of a line: where it is, and the nearest point that differs from it, or one beside it when
/// there is none. A bend may lie on an end.
struct LineEnd {
  platform::Point tip;
  platform::Point from;
};
[[nodiscard]] LineEnd beginOf(const std::vector<platform::Point>& points);
[[nodiscard]] LineEnd endOf(const std::vector<platform::Point>& points);
/// Around the arrow or diamond at an end; empty without one.
[[nodiscard]] platform::Rect headArea(int arrow, const LineEnd& end);

[[nodiscard]] platform::Rect rectAround(platform::Point a, platform::Point b);

/// The room that text needs; nothing for no text.
[[nodiscard]] platform::Size textSize(std::string_view text, const Font& font);
/// The room of a text of a line, which has nothing above and below its letters.
[[nodiscard]] platform::Size labelSize(std::string_view text, const Font& font);
/// Where the name of a loop could stand, on the points that `loop` gives: over its upper side,
/// which is shorter than most texts, and under the next loop's; else around the corner.
[[nodiscard]] std::vector<layout::LabelCandidate> loopNameCandidates(
    const std::vector<platform::Point>& points, platform::Size size);

/// The point half way along a line of at least one point.
[[nodiscard]] platform::Point middleOf(const std::vector<platform::Point>& points);
/// The point at a share of its length, from 0 to 1.
[[nodiscard]] platform::Point placeOn(const std::vector<platform::Point>& points, double share);
/// How far a point is from the line between two others.
[[nodiscard]] double distance(platform::Point point, platform::Point from, platform::Point to);

/// Text as lines, separated by "\r\n" or "\n"; one empty line for empty text.
[[nodiscard]] std::vector<std::string_view> linesOf(std::string_view text);

}  // namespace brisel::canvas
