#include "layout/RoutingField.h"

#include <algorithm>

#include "layout/LayerGraph.h"

namespace brisel::layout {
namespace {

/// What stands is asked for by sectors of so many tiles a side.
constexpr std::int64_t kSector = 4;
constexpr double kFarthestTile = 1e8;

std::int64_t sectorOf(std::int64_t tile) {
  return tile >= 0 ? tile / kSector : (tile - kSector + 1) / kSector;
}

}  // namespace

RoutingField::RoutingField(const Surroundings& surroundings, const RoutingMeasures& measures)
    : m_surroundings(surroundings), m_measures(measures) {}

std::int64_t RoutingField::tileAt(double coordinate) const {
  return static_cast<std::int64_t>(
      std::clamp(std::floor(coordinate / m_measures.tile), -kFarthestTile, kFarthestTile));
}

RoutingField::Tiles RoutingField::tilesOf(const Rect& rect) const {
  return {tileAt(rect.left), tileAt(rect.top), tileAt(rect.right()), tileAt(rect.bottom())};
}

RoutingField::Tiles RoutingField::touched(const Rect& area) {
  const Tiles tiles = tilesOf(area);
  for (std::int64_t x = sectorOf(tiles.left); x <= sectorOf(tiles.right); ++x) {
    for (std::int64_t y = sectorOf(tiles.top); y <= sectorOf(tiles.bottom); ++y) load(x, y);
  }
  return tiles;
}

void RoutingField::load(std::int64_t x, std::int64_t y) {
  if (!m_loaded.insert(keyOf(x, y)).second) return;
  const double side = m_measures.tile * static_cast<double>(kSector);
  std::vector<StandingBox> boxes;
  std::vector<StandingLine> lines;
  m_surroundings.collect({static_cast<double>(x) * side, static_cast<double>(y) * side, side, side},
                         boxes, lines);
  for (const StandingBox& box : boxes) addBox(box);
  // Long lines are entered as far as was asked.
  const Tiles sector{x * kSector, y * kSector, (x + 1) * kSector - 1, (y + 1) * kSector - 1};
  for (const StandingLine& line : lines) {
    const auto [known, isNew] = m_numbers.try_emplace(line.connector.id, nextLine());
    if (isNew) m_lines.push_back(line);
    enter(known->second, sector, isNew);
  }
}

template <class Change>
void RoutingField::change(const Tiles& tiles, const Tiles& limits, Change&& change) {
  if (tiles.areMany()) return change(m_large);
  const Tiles part{std::max(tiles.left, limits.left), std::max(tiles.top, limits.top),
                   std::min(tiles.right, limits.right), std::min(tiles.bottom, limits.bottom)};
  for (std::int64_t x = part.left; x <= part.right; ++x) {
    for (std::int64_t y = part.top; y <= part.bottom; ++y) change(m_tiles[keyOf(x, y)]);
  }
}

void RoutingField::addBox(const StandingBox& box) {
  if (!m_knownBoxes.insert(box.id).second) return;
  const int number = count(m_boxes);
  m_boxes.push_back(box);
  change(tilesOf(box.rect), kEverywhere, [&](Tile& tile) { tile.boxes.push_back(number); });
}

template <class Take>
void RoutingField::eachPieceOf(int number, Take&& take) const {
  const auto& course = m_lines[number].course;
  const auto dot = [&](Point p) {
    take(Way::level, Piece{p.y, {p.x, p.x}, number});
    take(Way::upright, Piece{p.x, {p.y, p.y}, number});
  };
  for (std::size_t i = 1; i < course.size(); ++i) {
    const Point a = course[i - 1];
    const Point b = course[i];
    if (std::abs(a.y - b.y) < 1) {
      take(Way::level, Piece{a.y, {std::min(a.x, b.x), std::max(a.x, b.x)}, number});
    } else if (std::abs(a.x - b.x) < 1) {
      take(Way::upright, Piece{a.x, {std::min(a.y, b.y), std::max(a.y, b.y)}, number});
    } else {
      if (i == 1) dot(a);
      if (i + 1 == course.size()) dot(b);
    }
  }
}

int RoutingField::addLine(const StandingLine& line) {
  const int number = nextLine();
  m_lines.push_back(line);
  enter(number, kEverywhere, true);
  return number;
}

void RoutingField::enter(int number, const Tiles& limits, bool isNew) {
  eachPieceOf(number, [&](Way way, const Piece& piece) {
    const Tiles tiles = tilesOf(piece, way);
    if (tiles.areMany() && !isNew) return;
    Piece placed = piece;
    placed.left = static_cast<std::int32_t>(tiles.left);
    placed.top = static_cast<std::int32_t>(tiles.top);
    change(tiles, limits, [&](Tile& tile) { tile.pieces[indexOf(way)].push_back(placed); });
  });
}

void RoutingField::removeLine(int number) {
  eachPieceOf(number, [&](Way way, const Piece& piece) {
    change(tilesOf(piece, way), kEverywhere, [&](Tile& tile) {
      std::erase_if(tile.pieces[indexOf(way)], [&](const Piece& p) { return p.line == number; });
    });
  });
  m_lines[number].course.clear();
}

const std::array<double, 4>& RoutingField::lanesOf(const StandingBox& box) {
  const auto [found, isNew] = m_lanes.try_emplace(box.id);
  if (!isNew) return found->second;
  const double reach = 2 * m_measures.gap;
  std::array<double, 4> gaps;
  gaps.fill(reach);
  const Rect& own = box.rect;
  eachBox(own.grownBy(reach), [&](const StandingBox& other) {
    if (other.id == box.id) return;
    const Rect& rect = other.rect;
    const auto near = [&](Way way, std::size_t before, std::size_t after) {
      if (!acrossOf(rect, way).overlaps(acrossOf(own, way))) return;
      const Range there = alongOf(rect, way);
      const Range here = alongOf(own, way);
      if (there.high <= here.low) gaps[before] = std::min(gaps[before], here.low - there.high);
      if (there.low >= here.high) gaps[after] = std::min(gaps[after], there.low - here.high);
    };
    near(Way::level, 0, 1);
    near(Way::upright, 2, 3);
  });
  // The questions above may have led to others meanwhile.
  auto& lanes = m_lanes[box.id];
  lanes = {own.left - gaps[0] / 2, own.right() + gaps[1] / 2, own.top - gaps[2] / 2,
           own.bottom() + gaps[3] / 2};
  return lanes;
}

}  // namespace brisel::layout
