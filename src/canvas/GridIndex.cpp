#include "canvas/GridIndex.h"

#include <algorithm>
#include <cmath>

namespace brisel::canvas {

using platform::Rect;

namespace {

/// As Rect::intersects, but a rectangle without area counts, and so does a shared edge.
bool touches(const Rect& a, const Rect& b) {
  return a.left <= b.right() && b.left <= a.right() && a.top <= b.bottom() && b.top <= a.bottom();
}

std::int64_t cellOf(double coordinate, double side) {
  // What is asked for may be anything, even no number at all.
  constexpr double kFarthest = 1e15;
  if (!(coordinate > -kFarthest)) coordinate = -kFarthest;
  coordinate = std::min(coordinate, kFarthest);
  return static_cast<std::int64_t>(std::floor(coordinate / side));
}

std::uint64_t keyOf(std::int64_t column, std::int64_t row) {
  return static_cast<std::uint64_t>(column) << 32U ^ (static_cast<std::uint64_t>(row) & 0xFFFFFFFF);
}

}  // namespace

void GridIndex::put(Item& item, Place& place, const Rect& extent) {
  const double side = std::max({extent.width, extent.height, std::ldexp(1.0, kSmallest)});
  const int level = std::min(static_cast<int>(std::ceil(std::log2(side))) - kSmallest,
                             static_cast<int>(kLevels) - 1);
  const double cell = std::ldexp(1.0, level + kSmallest);
  const auto middle = extent.center();
  const std::uint64_t key = keyOf(cellOf(middle.x, cell), cellOf(middle.y, cell));
  place.extent = extent;
  if (place.level == level && place.cell == key) return;
  remove(place);
  auto& entries = m_levels[static_cast<std::size_t>(level)][key];
  place.level = level;
  place.cell = key;
  place.slot = entries.size();
  entries.push_back({&item, &place});
  ++m_counts[static_cast<std::size_t>(level)];
}

void GridIndex::remove(Place& place) {
  if (place.level < 0) return;
  Cells& cells = m_levels[static_cast<std::size_t>(place.level)];
  const auto cell = cells.find(place.cell);
  auto& entries = cell->second;
  entries[place.slot] = entries.back();
  entries[place.slot].place->slot = place.slot;
  entries.pop_back();
  if (entries.empty()) cells.erase(cell);
  --m_counts[static_cast<std::size_t>(place.level)];
  place.level = -1;
}

void GridIndex::clear() {
  for (Cells& cells : m_levels) {
    for (auto& [key, entries] : cells) {
      for (const Entry& entry : entries) entry.place->level = -1;
    }
    cells.clear();
  }
  m_counts.fill(0);
}

void GridIndex::collect(const Rect& area, std::vector<Item*>& found) const {
  const auto take = [&](const std::vector<Entry>& entries) {
    for (const Entry& entry : entries) {
      if (touches(entry.place->extent, area)) found.push_back(entry.item);
    }
  };
  for (std::size_t level = 0; level < kLevels; ++level) {
    if (m_counts[level] == 0) continue;
    const Cells& cells = m_levels[level];
    const double side = std::ldexp(1.0, static_cast<int>(level) + kSmallest);
    // An item reaches half a side beyond its cell at most.
    const Rect wide = area.grownBy(side / 2);
    const std::int64_t right = cellOf(wide.right(), side);
    const std::int64_t bottom = cellOf(wide.bottom(), side);
    const std::int64_t left = cellOf(wide.left, side);
    const std::int64_t top = cellOf(wide.top, side);
    const double asked =
        static_cast<double>(right - left + 1) * static_cast<double>(bottom - top + 1);
    if (asked > static_cast<double>(cells.size())) {
      for (const auto& [key, entries] : cells) take(entries);
      continue;
    }
    for (std::int64_t column = left; column <= right; ++column) {
      for (std::int64_t row = top; row <= bottom; ++row) {
        const auto cell = cells.find(keyOf(column, row));
        if (cell != cells.end()) take(cell->second);
      }
    }
  }
}

}  // namespace brisel::canvas
