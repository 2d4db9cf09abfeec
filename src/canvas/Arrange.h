#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brisel::canvas {

class Scene;

/// Lays all boxes out anew: "%HIERARCHY%", "MATRIX", "RANDOM" (another one for each seed) or
/// "SPRING". Lines get the bends of the layout. Nothing is changed when the layout fails. Gives the
/// keys of the boxes that moved; an Error (invalidCall) for an unknown code.
std::vector<std::string> arrange(Scene& scene, std::string_view code, std::uint64_t seed);

/// Brings a side of the selected boxes to the outermost of them: "TADJST" tops, "BADJST" bottoms,
/// "LADJST" left sides, "RADJST" right sides. Nothing happens to fewer than two. Gives the keys of
/// the boxes that moved.
std::vector<std::string> align(Scene& scene, std::string_view code);

/// Whether the code is one of `align`.
[[nodiscard]] bool isAlignment(std::string_view code);

}  // namespace brisel::canvas
