#pragma once

#include <algorithm>

#include "platform/Geometry.h"

namespace brisel::layout {

/// Whether the way from one point to another runs through the inside of a rectangle; along its
/// border does not count.
[[nodiscard]] inline bool crosses(platform::Point from, platform::Point to,
                                  const platform::Rect& box) {
  double first = 0;
  double last = 1;
  const auto cut = [&](double start, double way, double low, double high) {
    if (way == 0) return start > low && start < high;
    const double a = (low - start) / way;
    const double b = (high - start) / way;
    first = std::max(first, std::min(a, b));
    last = std::min(last, std::max(a, b));
    return first < last;
  };
  return cut(from.x, to.x - from.x, box.left, box.right()) &&
         cut(from.y, to.y - from.y, box.top, box.bottom());
}

}  // namespace brisel::layout
