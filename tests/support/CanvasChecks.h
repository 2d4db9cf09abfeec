#pragma once

#include <string>

namespace brisel::canvas {
class DiagramControl;
}

namespace brisel::test {

/// What always holds on a canvas, after whatever was done to it: one line for each thing that does
/// not, empty when all is well.
[[nodiscard]] std::string checkInvariants(const canvas::DiagramControl& control);

/// All that a person sees and a host reads, a line an item: two canvases of the same description
/// are alike.
[[nodiscard]] std::string describe(const canvas::DiagramControl& control);

}  // namespace brisel::test
