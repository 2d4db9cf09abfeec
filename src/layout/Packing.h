#pragma once

#include <vector>

#include "platform/Geometry.h"

namespace brisel::layout {

/// Places for rectangles that do not overlap and together come near the wanted width by height.
/// Post: pairwise "gap" apart, all at or right of and below 0, the same for the same input.
/// Skyline packing, highest first, over several widths.
[[nodiscard]] std::vector<platform::Point> packed(const std::vector<platform::Size>& items,
                                                  double gap, double aspect);

/// Places in rows from left to right, highest first, no row wider than "width" where an item fits.
[[nodiscard]] std::vector<platform::Point> shelved(const std::vector<platform::Size>& items,
                                                   double gap, double width);

/// The size of what such places cover.
[[nodiscard]] platform::Size extent(const std::vector<platform::Size>& items,
                                    const std::vector<platform::Point>& places);

/// How much a size fails to fill the wanted shape: its area, stretched to the shape.
[[nodiscard]] double waste(platform::Size size, double aspect);

}  // namespace brisel::layout
