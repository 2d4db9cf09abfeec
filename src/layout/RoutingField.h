#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <deque>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "layout/ConnectorRouting.h"

namespace brisel::layout {

/// The two ways that pieces of lines run.
enum class Way { level, upright };

[[nodiscard]] inline Way crossWay(Way way) { return way == Way::level ? Way::upright : Way::level; }
/// The coordinate that grows along a piece, and the one across it.
[[nodiscard]] inline double along(Point p, Way way) { return way == Way::level ? p.x : p.y; }
[[nodiscard]] inline double across(Point p, Way way) { return way == Way::level ? p.y : p.x; }
[[nodiscard]] inline Point pointAt(double along, double across, Way way) {
  return way == Way::level ? Point{along, across} : Point{across, along};
}

/// An interval of a coordinate.
struct Range {
  double low;
  double high;

  [[nodiscard]] bool overlaps(const Range& other) const {
    return low < other.high && other.low < high;
  }
  [[nodiscard]] bool contains(double value) const { return value > low && value < high; }
  [[nodiscard]] Range grownBy(double margin) const { return {low - margin, high + margin}; }
};
[[nodiscard]] inline Range between(double a, double b) { return {std::min(a, b), std::max(a, b)}; }
[[nodiscard]] inline Range alongOf(const Rect& rect, Way way) {
  return way == Way::level ? Range{rect.left, rect.right()} : Range{rect.top, rect.bottom()};
}
[[nodiscard]] inline Range acrossOf(const Rect& rect, Way way) {
  return alongOf(rect, crossWay(way));
}
[[nodiscard]] inline Rect rectOf(const Range& along, const Range& across, Way way) {
  const Range& x = way == Way::level ? along : across;
  const Range& y = way == Way::level ? across : along;
  return {x.low, y.low, x.high - x.low, y.high - y.low};
}

/// The measures of routing, all in proportion to the distance between boxes.
struct RoutingMeasures {
  explicit RoutingMeasures(double node)
      : gap(node / 4),
        track(node / 4),
        least(node / 20),
        stub(node / 2),
        corner(node / 10),
        bend(2 * node),
        crossing(node / 2),
        tile(8 * node),
        band(4 * node) {}

  double gap;       ///< between a line and a foreign box, where there is room
  double track;     ///< between parallel lines, where there is room
  double least;     ///< between a line and a foreign box at least
  double stub;      ///< length of a piece at a box, where there is room
  double corner;    ///< between an end and the corner of its box
  double bend;      ///< that a bend may cost in length
  double crossing;  ///< that a crossing may cost
  double tile;      ///< side of the tiles by which what stands is found
  double band;      ///< beside a ray, boxes this near offer places to turn
};

/// What reaches further than so many tiles is neither looked through nor searched.
inline constexpr double kFarthestLed = 4000;
/// Parallel lines are no nearer to each other, in tracks, as long as there is room.
inline constexpr double kLeastTrack = 0.3;

/// What stands where lines are led: boxes, and the axis-parallel pieces of lines, found by tiles.
/// The surroundings are asked for what is in them when a question first comes there.
class RoutingField {
 public:
  struct Piece {
    double at;  ///< across
    Range span;
    int line;
    std::int32_t left = 0;  ///< the first tile that it is in
    std::int32_t top = 0;
  };

  RoutingField(const Surroundings& surroundings, const RoutingMeasures& measures);

  void addBox(const StandingBox& box);
  /// The number under which `line` gives it.
  int addLine(const StandingLine& line);
  void removeLine(int number);
  [[nodiscard]] const StandingLine& line(int number) const { return m_lines[number]; }

  /// Calls take(StandingBox) for every box that touches the area, each once.
  template <class Take>
  void eachBox(const Rect& area, Take&& take) {
    const Tiles tiles = touched(area);
    const auto touches = [&](const Rect& box) {
      return box.left <= area.right() && box.right() >= area.left && box.top <= area.bottom() &&
             box.bottom() >= area.top;
    };
    for (const int i : m_large.boxes) {
      if (touches(m_boxes[i].rect)) take(m_boxes[i]);
    }
    eachTile(tiles, [&](std::int64_t x, std::int64_t y, const Tile& tile) {
      for (const int i : tile.boxes) {
        const Rect& box = m_boxes[i].rect;
        if (!touches(box)) continue;
        const Tiles own = tilesOf(box);
        if (isFirst(x, y, tiles, own.left, own.top)) take(m_boxes[i]);
      }
    });
  }
  /// Calls take(Piece) for every piece of the way that touches the area, each once.
  template <class Take>
  void eachPiece(const Rect& area, Way way, Take&& take) {
    const Tiles tiles = touched(area);
    const Range reach = alongOf(area, way);
    const Range side = acrossOf(area, way);
    const auto touches = [&](const Piece& piece) {
      return piece.at >= side.low && piece.at <= side.high && piece.span.low <= reach.high &&
             piece.span.high >= reach.low;
    };
    for (const Piece& piece : m_large.pieces[indexOf(way)]) {
      if (touches(piece)) take(piece);
    }
    eachTile(tiles, [&](std::int64_t x, std::int64_t y, const Tile& tile) {
      for (const Piece& piece : tile.pieces[indexOf(way)]) {
        if (isFirst(x, y, tiles, piece.left, piece.top) && touches(piece)) take(piece);
      }
    });
  }

  /// Beside each side of the box, where a line passes it: a gap away, or half way to the next box.
  /// Left, right, top, bottom.
  [[nodiscard]] const std::array<double, 4>& lanesOf(const StandingBox& box);

 private:
  struct Tile {
    std::vector<int> boxes;
    std::array<std::vector<Piece>, 2> pieces;
  };
  struct Tiles {
    std::int64_t left, top, right, bottom;
    /// Larger things are looked through one by one.
    [[nodiscard]] bool areMany() const { return (right - left + 1) * (bottom - top + 1) > 1024; }
  };
  static constexpr Tiles kEverywhere{
      std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::int64_t>::min(),
      std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::max()};
  static std::size_t indexOf(Way way) { return way == Way::level ? 0 : 1; }
  /// Whether it is the first tile of the area in which a thing of these tiles is met.
  static bool isFirst(std::int64_t x, std::int64_t y, const Tiles& area, std::int64_t left,
                      std::int64_t top) {
    return x == std::max(left, area.left) && y == std::max(top, area.top);
  }
  [[nodiscard]] int nextLine() const { return static_cast<int>(m_lines.size()); }
  [[nodiscard]] std::int64_t tileAt(double coordinate) const;
  [[nodiscard]] Tiles tilesOf(const Rect& rect) const;
  [[nodiscard]] Tiles tilesOf(const Piece& piece, Way way) const {
    return tilesOf(rectOf(piece.span, {piece.at, piece.at}, way));
  }
  /// Calls change(tile) for all tiles within the limits, or for the one of large things.
  template <class Change>
  void change(const Tiles& tiles, const Tiles& limits, Change&& change);
  /// Enters the pieces of a line where they touch these tiles; large ones the first time only.
  void enter(int number, const Tiles& limits, bool isNew);
  /// All that may be in the area has been asked for.
  Tiles touched(const Rect& area);
  void load(std::int64_t x, std::int64_t y);
  static std::uint64_t keyOf(std::int64_t x, std::int64_t y) {
    return static_cast<std::uint64_t>(x) << 32 ^ (static_cast<std::uint64_t>(y) & 0xffffffff);
  }
  template <class Take>
  void eachTile(const Tiles& tiles, Take&& take) {
    for (std::int64_t x = tiles.left; x <= tiles.right; ++x) {
      for (std::int64_t y = tiles.top; y <= tiles.bottom; ++y) {
        const auto tile = m_tiles.find(keyOf(x, y));
        if (tile != m_tiles.end()) take(x, y, tile->second);
      }
    }
  }
  /// Calls take(way, piece) for the pieces of a line; slanted ones leave a dot at their ends.
  template <class Take>
  void eachPieceOf(int number, Take&& take) const;

  const Surroundings& m_surroundings;
  const RoutingMeasures& m_measures;
  std::vector<StandingBox> m_boxes;
  std::deque<StandingLine> m_lines;  ///< keeps its lines in place while others come
  std::unordered_set<std::uint64_t> m_knownBoxes;
  std::unordered_map<std::uint64_t, int> m_numbers;  ///< of standing lines by identifier
  std::unordered_map<std::uint64_t, Tile> m_tiles;
  Tile m_large;
  std::unordered_set<std::uint64_t> m_loaded;  ///< sectors of tiles
  std::unordered_map<std::uint64_t, std::array<double, 4>> m_lanes;
};

/// Generalizations, or realizations, into one super class: they share their trunk.
[[nodiscard]] inline bool areRelated(const Connector& a, const Connector& b) {
  return a.kind >= EdgeKind::generalization && a.kind == b.kind && a.target.id == b.target.id;
}

}  // namespace brisel::layout
