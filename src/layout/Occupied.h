#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/Geometry.h"

namespace brisel::layout {

/// Rectangles that stand, to look for free places among them. They are kept by the cells that they
/// touch; those that are large for the cells are looked through one by one.
class Occupied {
 public:
  static constexpr platform::Point kNoCorner{-std::numeric_limits<double>::infinity(),
                                             -std::numeric_limits<double>::infinity()};
  /// "side" is that of a cell: about twice what the rectangles measure.
  explicit Occupied(double side);

  void add(const platform::Rect& rect);
  /// One that shares more than an edge with the area; nothing when it is free.
  [[nodiscard]] const platform::Rect* anyIn(const platform::Rect& area) const;
  /// The shift by whole numbers to the nearest place where all of "moving" are "gap" clear, and not
  /// left of or above the corner; found from side to side of what is in the way. Nothing when the
  /// budget of comparisons, from which they are paid, ends before.
  [[nodiscard]] std::optional<platform::Point> nearestFree(
      const std::vector<platform::Rect>& moving, double gap, std::int64_t& budget,
      platform::Point corner = kNoCorner) const;

  [[nodiscard]] bool empty() const { return m_count == 0; }
  /// Around all of them, those without area included.
  [[nodiscard]] const platform::Rect& extent() const { return m_extent; }
  [[nodiscard]] static platform::Rect around(const platform::Rect& a, const platform::Rect& b);

 private:
  struct Cells {
    double left, top, right, bottom;
    [[nodiscard]] double count() const { return (right - left + 1) * (bottom - top + 1); }
  };
  struct Hash {
    std::size_t operator()(const std::pair<double, double>& cell) const {
      return std::hash<double>()(cell.first) * 31 + std::hash<double>()(cell.second);
    }
  };
  [[nodiscard]] Cells cellsOf(const platform::Rect& rect) const;

  double m_side;
  std::size_t m_count = 0;
  platform::Rect m_extent;
  std::vector<platform::Rect> m_large;
  std::unordered_map<std::pair<double, double>, std::vector<platform::Rect>, Hash> m_cells;
};

}  // namespace brisel::layout
