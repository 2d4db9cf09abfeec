#pragma once

#include <array>
#include <cstddef>

#include "platform/Geometry.h"

namespace brisel::canvas {

/// The eight handles of a selected box, clockwise from its upper left corner.
enum class Handle { topLeft, top, topRight, right, bottomRight, bottom, bottomLeft, left };
inline constexpr std::size_t kHandleCount = 8;

/// The middle of each handle, in the order of Handle. A handle is a square of kHandlePixels at
/// every zoom. A selected line has one at each of its points.
[[nodiscard]] std::array<platform::Point, kHandleCount> handlesOf(const platform::Rect& box);

/// Which sides go along when the handle is pulled.
struct PulledSides {
  bool left, right, top, bottom;
};
[[nodiscard]] PulledSides sidesOf(Handle handle);

/// The box with the handle pulled to a point; the opposite sides stay, and the size does not go
/// below the smallest one.
[[nodiscard]] platform::Rect pulled(const platform::Rect& box, Handle handle, platform::Point to,
                                    platform::Size smallest);

}  // namespace brisel::canvas
