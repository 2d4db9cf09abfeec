#pragma once

#include <cstdint>
#include <vector>

#include "platform/Geometry.h"

namespace brisel::layout {

using Polyline = std::vector<platform::Point>;

/// How often horizontal pieces of lines cross vertical ones; what only touches does not count.
/// Pre: the lines are axis-parallel. The time grows with the pieces and the crossings.
[[nodiscard]] std::int64_t lineCrossings(const std::vector<Polyline>& lines);

/// The length of all lines together.
[[nodiscard]] double lineLength(const std::vector<Polyline>& lines);

}  // namespace brisel::layout
