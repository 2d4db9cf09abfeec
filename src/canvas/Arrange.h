#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "layout/Layout.h"

namespace brisel::canvas {

class Scene;

/// Lays all boxes out anew: "%HIERARCHY%", "MATRIX", "RANDOM" (another one for each seed) or
/// "SPRING". Lines get the bends of the layout. Nothing is changed when the layout fails, or is
/// cancelled (layout::Cancelled), which it is too when boxes were changed while it was asked. Gives
/// the keys of the boxes that moved; an Error (invalidCall) for an unknown code.
std::vector<std::string> arrange(Scene& scene, std::string_view code, std::uint64_t seed,
                                 const layout::GoOn& goOn);

/// The same for the selected boxes alone: each group of boxes that lines join is laid out around
/// where it stands and moved clear of all others, as little as that needs and never left of or above
/// the diagram's own corner; boxes without lines among them stay where they can. "MATRIX" and
/// "RANDOM" lay out all of them as one group. The other boxes stay. All lines of the selected ones,
/// and those over which they came to stand, are led around the boxes at right angles. Once more on
/// the same selection it changes nothing, "RANDOM" excepted.
std::vector<std::string> arrangeSelected(Scene& scene, std::string_view code, std::uint64_t seed,
                                         const layout::GoOn& goOn);

/// Moves the boxes of these keys, which have no place yet, beside what they are joined to; the other
/// boxes stay. Lines of them that have no bends yet, and others over which they came to stand, are
/// led around the boxes at right angles.
void placeAmong(Scene& scene, const std::vector<std::string>& keys);

/// Brings a side of the selected boxes to the outermost of them: "TADJST" tops, "BADJST" bottoms,
/// "LADJST" left sides, "RADJST" right sides. Nothing happens to fewer than two. Gives the keys of
/// the boxes that moved.
std::vector<std::string> align(Scene& scene, std::string_view code);

/// Whether the code is one of `align`.
[[nodiscard]] bool isAlignment(std::string_view code);

}  // namespace brisel::canvas
