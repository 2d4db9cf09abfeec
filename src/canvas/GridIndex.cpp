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

void GridIndex::put(Item& item, Place& place, std::span<const Rect> parts) {
  place.m_item = &item;
  shorten(place, parts.size());
  place.m_spots.reserve(parts.size());
  for (std::size_t i = 0; i < parts.size(); ++i) enter(place, i, parts[i]);
}

void GridIndex::enter(Place& place, std::size_t part, const Rect& extent) {
  const double size = std::max({extent.width, extent.height, std::ldexp(1.0, kSmallest)});
  const int level = std::min(static_cast<int>(std::ceil(std::log2(size))) - kSmallest,
                             static_cast<int>(kLevels) - 1);
  const double side = std::ldexp(1.0, level + kSmallest);
  const auto middle = extent.center();
  const std::uint64_t cell = keyOf(cellOf(middle.x, side), cellOf(middle.y, side));
  if (part < place.m_spots.size()) {
    const Place::Spot& spot = place.m_spots[part];
    if (spot.level == level && spot.cell == cell) {
      (*spot.entries)[spot.slot].extent = extent;
      return;
    }
    leave(spot);
  } else {
    place.m_spots.emplace_back();
  }
  auto& entries = m_levels[static_cast<std::size_t>(level)][cell];
  place.m_spots[part] = {level, cell, &entries, entries.size()};
  entries.push_back({extent, &place, part});
  ++m_counts[static_cast<std::size_t>(level)];
}

void GridIndex::leave(const Place::Spot& spot) {
  const auto [level, cell, entries, slot] = spot;  // the spot may be the one that is written
  const Entry last = entries->back();
  last.place->m_spots[last.part].slot = slot;
  (*entries)[slot] = last;
  entries->pop_back();
  const auto index = static_cast<std::size_t>(level);
  if (entries->empty()) m_levels[index].erase(cell);
  --m_counts[index];
}

void GridIndex::shorten(Place& place, std::size_t parts) {
  while (place.m_spots.size() > parts) {
    leave(place.m_spots.back());
    place.m_spots.pop_back();
  }
}

void GridIndex::clear() {
  for (Cells& cells : m_levels) {
    for (auto& [key, entries] : cells) {
      for (const Entry& entry : entries) entry.place->m_spots.clear();
    }
    cells.clear();
  }
  m_counts.fill(0);
}

void GridIndex::partsOf(const Place& place, std::vector<Rect>& parts) {
  for (const Place::Spot& spot : place.m_spots) parts.push_back((*spot.entries)[spot.slot].extent);
}

void GridIndex::collect(const Rect& area, std::vector<Item*>& found, double longest) const {
  ++m_asked;
  const auto take = [&](const std::vector<Entry>& entries) {
    for (const Entry& entry : entries) {
      if (!touches(entry.extent, area) || entry.place->m_asked == m_asked) continue;
      entry.place->m_asked = m_asked;
      found.push_back(entry.place->m_item);
    }
  };
  for (std::size_t level = 0; level < kLevels; ++level) {
    if (m_counts[level] == 0) continue;
    const Cells& cells = m_levels[level];
    const double side = std::ldexp(1.0, static_cast<int>(level) + kSmallest);
    if (side > longest) return;
    // A part reaches half a side beyond its cell at most.
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
