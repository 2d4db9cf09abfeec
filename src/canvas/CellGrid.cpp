#include "canvas/CellGrid.h"

#include <algorithm>

namespace brisel::canvas::cells {

std::int64_t cellOf(double coordinate) {
  constexpr double kFarthest = 1e8;
  double cell = coordinate / kSide;
  if (!(cell > -kFarthest)) cell = -kFarthest;
  cell = std::min(cell, kFarthest);
  const auto whole = static_cast<std::int64_t>(cell);
  return whole - (cell < static_cast<double>(whole) ? 1 : 0);
}

Range rangeOf(const platform::Rect& area) {
  return {cellOf(area.left), cellOf(area.top), cellOf(area.right()), cellOf(area.bottom())};
}

}  // namespace brisel::canvas::cells
