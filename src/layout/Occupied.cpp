#include "layout/Occupied.h"

#include <algorithm>
#include <cmath>
#include <queue>
#include <set>

namespace brisel::layout {

using platform::Point;
using platform::Rect;

namespace {

constexpr double kMostCells = 64;

const Rect* anyOf(const std::vector<Rect>& rects, const Rect& area) {
  for (const Rect& rect : rects) {
    if (rect.intersects(area)) return &rect;
  }
  return nullptr;
}

}  // namespace

Occupied::Occupied(double side) : m_side(std::max(1.0, side)) {}

Rect Occupied::around(const Rect& a, const Rect& b) {
  const double left = std::min(a.left, b.left);
  const double top = std::min(a.top, b.top);
  return {left, top, std::max(a.right(), b.right()) - left, std::max(a.bottom(), b.bottom()) - top};
}

Occupied::Cells Occupied::cellsOf(const Rect& rect) const {
  return {std::floor(rect.left / m_side), std::floor(rect.top / m_side),
          std::floor(rect.right() / m_side), std::floor(rect.bottom() / m_side)};
}

void Occupied::add(const Rect& rect) {
  m_extent = m_count++ == 0 ? rect : around(m_extent, rect);
  const Cells cells = cellsOf(rect);
  if (!(cells.count() <= kMostCells)) {
    m_large.push_back(rect);
    return;
  }
  for (double x = cells.left; x <= cells.right; ++x) {
    for (double y = cells.top; y <= cells.bottom; ++y) m_cells[{x, y}].push_back(rect);
  }
}

const Rect* Occupied::anyIn(const Rect& area) const {
  if (const Rect* found = anyOf(m_large, area)) return found;
  const Cells cells = cellsOf(area);
  if (cells.count() > static_cast<double>(m_cells.size())) {
    for (const auto& [cell, rects] : m_cells) {
      if (const Rect* found = anyOf(rects, area)) return found;
    }
    return nullptr;
  }
  for (double x = cells.left; x <= cells.right; ++x) {
    for (double y = cells.top; y <= cells.bottom; ++y) {
      const auto cell = m_cells.find({x, y});
      if (cell == m_cells.end()) continue;
      if (const Rect* found = anyOf(cell->second, area)) return found;
    }
  }
  return nullptr;
}

std::optional<Point> Occupied::nearestFree(const std::vector<Rect>& moving, double gap,
                                           std::int64_t& budget, Point corner) const {
  struct Try {
    double distance;
    std::size_t number;  ///< earlier ones come first
    Point shift;
    bool operator>(const Try& other) const {
      return std::pair(distance, number) > std::pair(other.distance, other.number);
    }
  };
  std::priority_queue<Try, std::vector<Try>, std::greater<>> tries;
  std::set<std::pair<double, double>> tried;
  std::size_t number = 0;
  Point least = kNoCorner;
  for (const Rect& rect : moving) {
    least = {std::max(least.x, std::ceil(corner.x - rect.left)),
             std::max(least.y, std::ceil(corner.y - rect.top))};
  }
  const auto add = [&](Point shift) {
    shift = {std::max(std::round(shift.x), least.x), std::max(std::round(shift.y), least.y)};
    if (!tried.emplace(shift.x, shift.y).second) return;
    tries.push({std::hypot(shift.x, shift.y), number++, shift});
  };
  // Shifts are whole, so the room beside what is in the way is a little more than the gap.
  const auto blocker = [&](const Rect& rect) { return anyIn(rect.grownBy(gap)); };
  add({});
  while (budget > 0 && !tries.empty()) {
    const Point shift = tries.top().shift;
    tries.pop();
    const Rect* other = nullptr;
    const Rect* own = nullptr;
    for (std::size_t i = 0; i < moving.size() && !other; ++i, --budget) {
      other = blocker(moving[i].movedBy(shift));
      own = &moving[i];
    }
    if (!other) return shift;
    add({std::ceil(other->right() + gap - own->left), shift.y});
    add({shift.x, std::ceil(other->bottom() + gap - own->top)});
    add({std::floor(other->left - gap - own->right()), shift.y});
    add({shift.x, std::floor(other->top - gap - own->bottom())});
  }
  return {};
}

}  // namespace brisel::layout
