#pragma once

#include <cstdint>
#include <vector>

#include "canvas/CellGrid.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

/// What texts of lines keep away from, found by where it lies: boxes and the heads of lines, texts,
/// and the pieces of lines.
struct Obstacles {
  /// Where a text stands in the order of placing; 0 for boxes and heads, which come before all.
  using Turn = std::uint64_t;
  struct Solid {
    platform::Rect area;
    Turn turn = 0;

    [[nodiscard]] double cellCount() const { return cells::rangeOf(area).count(); }
    template <class Use>
    void eachCell(Use&& use) const {
      cells::each(cells::rangeOf(area), use);
    }
  };
  struct Piece {
    platform::Point from;
    platform::Point to;
    std::uint64_t line = 0;  ///< the order of the link

    [[nodiscard]] double cellCount() const;
    template <class Use>
    void eachCell(Use&& use) const {
      cells::each(from, to, use);
    }
  };

  CellGrid<Solid> boxes;  ///< and heads
  CellGrid<Solid> texts;
  CellGrid<Piece> pieces;

  void clear();
};

/// The obstacles of one text: those that come before its turn, and pieces of other lines. When it
/// is asked for a second place it looks around once for all of those that more questions will be
/// about.
class Surroundings {
 public:
  using Turn = Obstacles::Turn;
  /// What was found when it looked around: room that may serve one text after the other.
  struct Found {
    std::vector<platform::Rect> solids;
    std::vector<Obstacles::Piece> pieces;
  };

  /// `line` is the order of the text's line, `expected` an area in which most questions will lie.
  Surroundings(const Obstacles& all, Turn turn, std::uint64_t line, const platform::Rect& expected,
               Found& room)
      : m_all(all), m_turn(turn), m_line(line), m_expected(expected), m_found(room) {}

  /// How much of boxes, heads and texts lies over the area, in square twips, a whole number; no
  /// less than `enough` when that is reached.
  [[nodiscard]] double covered(const platform::Rect& area, double enough);
  /// Around all boxes, heads and texts that lie over the area; empty where there is none.
  [[nodiscard]] platform::Rect inTheWay(const platform::Rect& area);
  /// How badly pieces run through the area; no less than `enough` when that is reached.
  [[nodiscard]] int crossed(const platform::Rect& area, int enough);

 private:
  [[nodiscard]] bool isKnown(const platform::Rect& area);
  void lookAround(const platform::Rect& area);
  [[nodiscard]] double coveredInAll(const platform::Rect& area, double enough) const;
  [[nodiscard]] int crossedInAll(const platform::Rect& area, int enough) const;

  const Obstacles& m_all;
  Turn m_turn;
  std::uint64_t m_line;
  platform::Rect m_expected;
  int m_asked = 0;
  bool m_crowded = false;  ///< where looking around would find too much
  platform::Rect m_known;
  Found& m_found;
};

}  // namespace brisel::canvas
