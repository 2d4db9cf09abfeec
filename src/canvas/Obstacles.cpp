#include "canvas/Obstacles.h"

#include <algorithm>
#include <cmath>

#include "layout/LabelChoice.h"
#include "layout/Segments.h"

namespace brisel::canvas {

using platform::Rect;

namespace {

/// As a whole number: sums do not depend on the order.
double overlap(const Rect& a, const Rect& b) {
  const double width = std::min(a.right(), b.right()) - std::max(a.left, b.left);
  const double height = std::min(a.bottom(), b.bottom()) - std::max(a.top, b.top);
  return width > 0 && height > 0 ? std::ceil(width * height) : 0;
}

}  // namespace

double Obstacles::Piece::cellCount() const {
  return (std::abs(to.x - from.x) + std::abs(to.y - from.y)) / cells::kSide + 1;
}

void Obstacles::clear() {
  boxes.clear();
  texts.clear();
  pieces.clear();
}

double Surroundings::covered(const Rect& area, double enough) {
  if (!isKnown(area)) return coveredInAll(area, enough);
  double sum = 0;
  for (const Rect& solid : m_found.solids) {
    sum += overlap(solid, area);
    if (sum >= enough) break;
  }
  return sum;
}

Rect Surroundings::inTheWay(const Rect& area) {
  Rect all;
  const auto add = [&](const Rect& solid) {
    if (overlap(solid, area) > 0) all = all.united(solid);
  };
  if (isKnown(area)) {
    for (const Rect& solid : m_found.solids) add(solid);
    return all;
  }
  const auto addEarlier = [&](const Obstacles::Solid& solid) {
    if (solid.turn < m_turn) add(solid.area);
    return false;
  };
  m_all.boxes.visit(area, addEarlier);
  m_all.texts.visit(area, addEarlier);
  return all;
}

int Surroundings::crossed(const Rect& area, int enough) {
  if (!m_known.contains(area)) return crossedInAll(area, enough);
  int count = 0;
  for (const Obstacles::Piece& piece : m_found.pieces) {
    count += layout::strike(piece.from, piece.to, area);
    if (count >= enough) break;
  }
  return count;
}

bool Surroundings::isKnown(const Rect& area) {
  if (m_asked++ == 0 || m_crowded) return false;
  if (!m_known.contains(area)) lookAround(area);
  return !m_crowded;
}

void Surroundings::lookAround(const Rect& area) {
  constexpr double kAround = 400;
  constexpr double kWidest = 16000;
  constexpr std::size_t kMost = 256;
  const Rect both = (m_known.isEmpty() ? m_expected : m_known).united(area);
  const bool isNear = std::max(both.width, both.height) <= kWidest;
  m_known = (isNear ? both : area).grownBy(kAround);
  m_found.solids.clear();
  m_found.pieces.clear();
  const auto addSolid = [&](const Obstacles::Solid& solid) {
    if (solid.turn < m_turn && solid.area.intersects(m_known)) m_found.solids.push_back(solid.area);
    return m_found.solids.size() > kMost;
  };
  m_all.boxes.visit(m_known, addSolid);
  m_all.texts.visit(m_known, addSolid);
  m_all.pieces.visit(m_known, [&](const Obstacles::Piece& piece) {
    if (piece.line != m_line && layout::crosses(piece.from, piece.to, m_known)) {
      m_found.pieces.push_back(piece);
    }
    return m_found.pieces.size() > kMost;
  });
  m_crowded = m_found.solids.size() > kMost || m_found.pieces.size() > kMost;
  if (m_crowded) m_known = {};
}

double Surroundings::coveredInAll(const Rect& area, double enough) const {
  double sum = 0;
  const auto add = [&](const Obstacles::Solid& solid) {
    if (solid.turn < m_turn) sum += overlap(solid.area, area);
    return sum >= enough;
  };
  m_all.boxes.visit(area, add);
  if (sum < enough) m_all.texts.visit(area, add);
  return sum;
}

int Surroundings::crossedInAll(const Rect& area, int enough) const {
  int count = 0;
  m_all.pieces.visit(area, [&](const Obstacles::Piece& piece) {
    if (piece.line != m_line) count += layout::strike(piece.from, piece.to, area);
    return count >= enough;
  });
  return count;
}

}  // namespace brisel::canvas
