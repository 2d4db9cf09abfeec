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

/// The same for the selected boxes and the lines between them alone, around where they stand and
/// clear of all others. Bent lines to others get new bends.
std::vector<std::string> arrangeSelected(Scene& scene, std::string_view code, std::uint64_t seed,
                                         const layout::GoOn& goOn);

/// Moves the boxes of these keys, which have no place yet, beside what they are joined to; the
/// others stay.
void placeAmong(Scene& scene, const std::vector<std::string>& keys);

/// Brings a side of the selected boxes to the outermost of them: "TADJST" tops, "BADJST" bottoms,
/// "LADJST" left sides, "RADJST" right sides. Nothing happens to fewer than two. Gives the keys of
/// the boxes that moved.
std::vector<std::string> align(Scene& scene, std::string_view code);

/// Whether the code is one of `align`.
[[nodiscard]] bool isAlignment(std::string_view code);

}  // namespace brisel::canvas
