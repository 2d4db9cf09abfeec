#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "platform/Geometry.h"

namespace brisel::layout {

/// Whether the way from one point to another runs through the inside of a rectangle; along its
/// border does not count.
[[nodiscard]] inline bool crosses(platform::Point from, platform::Point to,
                                  const platform::Rect& box) {
  // Most ways pass far by, which needs no division.
  if (std::max(from.x, to.x) <= box.left || std::min(from.x, to.x) >= box.right() ||
      std::max(from.y, to.y) <= box.top || std::min(from.y, to.y) >= box.bottom()) {
    return false;
  }
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

/// The same for a way over several points.
[[nodiscard]] inline bool runsThrough(const std::vector<platform::Point>& course,
                                      const platform::Rect& box) {
  for (std::size_t i = 1; i < course.size(); ++i) {
    if (crosses(course[i - 1], course[i], box)) return true;
  }
  return false;
}

}  // namespace brisel::layout
