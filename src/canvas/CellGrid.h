#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Geometry.h"

namespace brisel::canvas {

/// The square cells that things are found by. Numbers beyond all bounds are cut off there.
namespace cells {

inline constexpr double kSide = 4096;  ///< twips

struct Range {
  std::int64_t left, top, right, bottom;
  [[nodiscard]] double count() const {
    return static_cast<double>(right - left + 1) * static_cast<double>(bottom - top + 1);
  }
};
[[nodiscard]] std::int64_t cellOf(double coordinate);
[[nodiscard]] Range rangeOf(const platform::Rect& area);
[[nodiscard]] inline std::uint64_t keyOf(std::int64_t column, std::int64_t row) {
  return static_cast<std::uint64_t>(column) << 32U ^ (static_cast<std::uint64_t>(row) & 0xFFFFFFFF);
}

template <class Use>
void each(const Range& range, Use&& use) {
  for (std::int64_t column = range.left; column <= range.right; ++column) {
    for (std::int64_t row = range.top; row <= range.bottom; ++row) use(keyOf(column, row));
  }
}

/// Calls use(key) for every cell that the way from one point to another touches.
template <class Use>
void each(platform::Point from, platform::Point to, Use&& use) {
  if (from.x > to.x) std::swap(from, to);
  const double slope = to.x > from.x ? (to.y - from.y) / (to.x - from.x) : 0;
  const std::int64_t last = cellOf(to.x);
  double y = from.y;
  for (std::int64_t column = cellOf(from.x); column <= last; ++column) {
    const double right = static_cast<double>(column + 1) * kSide;
    const double next = column == last ? to.y : from.y + slope * (right - from.x);
    each({column, cellOf(std::min(y, next)), column, cellOf(std::max(y, next))}, use);
    y = next;
  }
}

}  // namespace cells

/// Things that are found by the cells in which they lie: quick where they are small, or long and
/// slender. A `Thing` has eachCell(use) and cellCount(); what has too many cells is looked at in
/// every question.
template <class Thing>
class CellGrid {
 public:
  using Id = std::uint32_t;
  static constexpr Id kNone = 0xFFFFFFFF;

  Id add(const Thing& thing) {
    Id id = m_free;
    if (id == kNone) {
      id = static_cast<Id>(m_entries.size());
      m_entries.emplace_back();
    } else {
      m_free = m_entries[id].nextFree;
    }
    m_entries[id] = {thing, 0, kNone, true};
    if (isLarge(thing)) {
      m_large.push_back(id);
    } else {
      thing.eachCell([&](std::uint64_t key) { m_cells[key].push_back(id); });
    }
    return id;
  }
  /// The identifier means nothing any more; that of nothing may be given.
  void remove(Id& id) {
    if (id == kNone) return;
    Entry& entry = m_entries[id];
    if (isLarge(entry.thing)) {
      take(id, m_large);
    } else {
      entry.thing.eachCell([&](std::uint64_t key) {
        const auto cell = m_cells.find(key);
        take(id, cell->second);
        if (cell->second.empty()) m_cells.erase(cell);
      });
    }
    entry.isThere = false;
    entry.nextFree = std::exchange(m_free, id);
    id = kNone;
  }
  /// All identifiers mean nothing any more.
  void clear() { *this = {}; }
  [[nodiscard]] const Thing& operator[](Id id) const { return m_entries[id].thing; }

  /// Calls isEnough(thing) once for everything that may touch the area, in no particular order,
  /// until it answers true.
  template <class IsEnough>
  void visit(const platform::Rect& area, IsEnough&& isEnough) const {
    const cells::Range range = cells::rangeOf(area);
    if (range.count() > static_cast<double>(m_entries.size()) + 16) {
      for (const Entry& entry : m_entries) {
        if (entry.isThere && isEnough(entry.thing)) return;
      }
      return;
    }
    ++m_asked;
    const auto visitAll = [&](const std::vector<Id>& ids) {
      for (const Id id : ids) {
        const Entry& entry = m_entries[id];
        if (std::exchange(entry.asked, m_asked) != m_asked && isEnough(entry.thing)) return true;
      }
      return false;
    };
    if (visitAll(m_large)) return;
    for (std::int64_t column = range.left; column <= range.right; ++column) {
      for (std::int64_t row = range.top; row <= range.bottom; ++row) {
        const auto cell = m_cells.find(cells::keyOf(column, row));
        if (cell != m_cells.end() && visitAll(cell->second)) return;
      }
    }
  }

 private:
  struct Entry {
    Thing thing;
    mutable std::uint64_t asked = 0;  ///< the last question that found it
    Id nextFree = kNone;
    bool isThere = false;
  };

  static bool isLarge(const Thing& thing) { return thing.cellCount() > 512; }
  static void take(Id id, std::vector<Id>& from) {
    *std::find(from.begin(), from.end(), id) = from.back();
    from.pop_back();
  }

  std::vector<Entry> m_entries;
  std::unordered_map<std::uint64_t, std::vector<Id>> m_cells;
  std::vector<Id> m_large;
  Id m_free = kNone;
  mutable std::uint64_t m_asked = 0;
};

}  // namespace brisel::canvas
