#include "layout/ConnectorNudging.h"

#include <algorithm>
#include <cmath>

namespace brisel::layout {
namespace {

/// A piece is shifted this many times the usual gap at most.
constexpr double kLongestShift = 16;
/// So many of the nearest places for a piece are compared.
constexpr std::size_t kMostPlaces = 12;
constexpr double kSame = 1e-6;

bool isLevel(Point a, Point b) { return std::abs(a.y - b.y) < kSame; }

void move(std::vector<Point>& course, std::size_t piece, double level) {
  const Way way = isLevel(course[piece], course[piece + 1]) ? Way::level : Way::upright;
  for (const std::size_t i : {piece, piece + 1})
    course[i] = pointAt(along(course[i], way), level, way);
}

/// Without points that are doubled or on a straight way.
void dropNeedless(std::vector<Point>& course) {
  std::vector<Point> kept;
  for (const Point p : course) {
    if (!kept.empty() && std::abs(kept.back().x - p.x) < kSame &&
        std::abs(kept.back().y - p.y) < kSame) {
      continue;
    }
    if (kept.size() > 1) {
      const Point a = kept[kept.size() - 2];
      const Point b = kept.back();
      if ((std::abs(a.x - b.x) < kSame && std::abs(b.x - p.x) < kSame) ||
          (std::abs(a.y - b.y) < kSame && std::abs(b.y - p.y) < kSame)) {
        kept.pop_back();
      }
    }
    kept.push_back(p);
  }
  if (kept.size() >= 2) course = std::move(kept);
}

}  // namespace

void ConnectorNudging::shift(const Connector& connector, const Trunk& trunk,
                             std::vector<Point>& course) {
  m_connector = &connector;
  m_trunk = &trunk;
  m_course = &course;
  dropNeedless(course);
  for (int round = 0; round < 2; ++round) {
    for (std::size_t i = 0; i + 1 < course.size(); ++i) {
      if (const auto level = placeOf(i)) move(course, i, *level);
    }
    dropNeedless(course);
  }
}

Range ConnectorNudging::limitsOf(const Connector& connector, const std::vector<Point>& course,
                                 std::size_t piece) {
  static const Trunk none;
  m_connector = &connector;
  m_trunk = &none;
  m_course = &course;
  return roomOf(piece).limits;
}

Way ConnectorNudging::wayOf(std::size_t i) const {
  return isLevel((*m_course)[i], (*m_course)[i + 1]) ? Way::level : Way::upright;
}

double ConnectorNudging::levelOf(std::size_t i) const { return across((*m_course)[i], wayOf(i)); }

Range ConnectorNudging::spanOf(std::size_t i) const {
  return between(along((*m_course)[i], wayOf(i)), along((*m_course)[i + 1], wayOf(i)));
}

/// Nothing for a piece that stays.
std::optional<double> ConnectorNudging::placeOf(std::size_t i) {
  if (m_trunk->covers(wayOf(i), levelOf(i), spanOf(i))) return {};
  const Room room = roomOf(i);
  const auto pieces = neighboursOf(i, room.limits);
  const bool isEnd = i == 0 || i + 2 == m_course->size();
  for (const double track : {2.0, 1.0, 0.5, kLeastTrack}) {
    if (track > 1 && !isEnd) continue;
    std::vector<Range> forbidden;
    for (const auto& piece : pieces) {
      forbidden.push_back(Range{piece.at, piece.at}.grownBy(
          std::min(track, piece.span.low == piece.span.high ? 1 : track) * m_measures.track));
    }
    if (const auto level = best(i, room, forbidden)) return level;
  }
  return {};
}

/// Boxes beside the piece bound where it may go.
void ConnectorNudging::limitByBoxes(std::size_t i, Range& boxes) {
  const Way way = wayOf(i);
  const double level = levelOf(i);
  const Range span = spanOf(i).grownBy(m_measures.least / 2);
  const bool first = i == 0;
  const bool last = i + 2 == m_course->size();
  m_field.eachBox(rectOf(span, boxes, way), [&](const StandingBox& box) {
    if (first && box.id == m_connector->source.id) return;
    if (last && box.id == m_connector->target.id) return;
    const Range extent = acrossOf(box.rect, way);
    if (!alongOf(box.rect, way).overlaps(span)) return;
    if (extent.high <= level + kSame) boxes.low = std::max(boxes.low, extent.high);
    if (extent.low >= level - kSame) boxes.high = std::min(boxes.high, extent.low);
  });
}

ConnectorNudging::Room ConnectorNudging::roomOf(std::size_t i) {
  const std::vector<Point>& course = *m_course;
  const Way way = wayOf(i);
  const double level = levelOf(i);
  const std::size_t last = course.size() - 1;
  Range boxes = Range{level, level}.grownBy(kLongestShift * m_measures.gap);
  boxes.low = std::max(boxes.low, std::min(level, across(m_corner, way)));
  limitByBoxes(i, boxes);
  const double breadth = boxes.high - boxes.low;
  const double least = std::min(m_measures.least, breadth / 4);
  Range limits{std::min(level, boxes.low + least), std::max(level, boxes.high - least)};
  const double gap = std::min(m_measures.gap, breadth / 2);
  Range roomy{boxes.low + gap, boxes.high - gap};

  const auto limitBySide = [&](const Rect& box) {
    const Range ports = portRange(acrossOf(box, way), m_measures.corner);
    limits = {std::max(limits.low, ports.low), std::min(limits.high, ports.high)};
  };
  if (i == 0) limitBySide(m_connector->source.rect);
  if (i + 1 == last) limitBySide(m_connector->target.rect);

  // The pieces before and after keep their direction, and room for arrows at the boxes.
  bool isBoundBelow = false;
  bool isBoundAbove = false;
  const auto limitByBend = [&](double far, bool atBox) {
    const double room = atBox ? m_measures.stub : m_measures.least;
    if (far < level) {
      limits.low = std::max(limits.low, std::min(level, far + room));
      boxes.low = std::max(boxes.low, far);
      isBoundBelow = true;
    } else {
      limits.high = std::min(limits.high, std::max(level, far - room));
      boxes.high = std::min(boxes.high, far);
      isBoundAbove = true;
    }
  };
  if (i > 0) limitByBend(across(course[i - 1], way), i == 1);
  if (i + 1 < last) limitByBend(across(course[i + 2], way), i + 2 == last);

  double wish = level;
  const bool isInner = i > 0 && i + 1 < last;
  if (isInner && isBoundBelow && isBoundAbove) wish = (boxes.low + boxes.high) / 2;
  if (isInner && isBoundBelow != isBoundAbove) wish = isBoundBelow ? roomy.low : roomy.high;
  wish = std::clamp(wish, std::min(roomy.low, roomy.high), std::max(roomy.low, roomy.high));
  // The branches of a trunk part at one height.
  for (const Trunk::Piece& piece : m_trunk->pieces) {
    const bool fits = piece.at >= limits.low && piece.at <= limits.high;
    if (isInner && i + 2 == last && piece.way == way && fits) wish = piece.at;
  }
  if (limits.low > limits.high) limits = {level, level};
  return {limits, std::clamp(wish, limits.low, limits.high)};
}

/// Unrelated pieces that the piece would touch somewhere within the limits.
std::vector<RoutingField::Piece> ConnectorNudging::neighboursOf(std::size_t i,
                                                                const Range& limits) {
  const Way way = wayOf(i);
  std::vector<RoutingField::Piece> pieces;
  const Range span = spanOf(i).grownBy(m_measures.track / 4);
  m_field.eachPiece(rectOf(span, limits.grownBy(2 * m_measures.track), way), way,
                    [&](const RoutingField::Piece& piece) {
                      const Connector& other = m_field.line(piece.line).connector;
                      if (!areRelated(other, *m_connector)) pieces.push_back(piece);
                    });
  return pieces;
}

/// The best place that is not forbidden.
std::optional<double> ConnectorNudging::best(std::size_t i, const Room& room,
                                             const std::vector<Range>& forbidden) {
  std::vector<double> places;
  const auto add = [&](double place) {
    if (place < room.limits.low || place > room.limits.high) return;
    const auto forbids = [&](const Range& range) {
      return place > range.low + kSame && place < range.high - kSame;
    };
    if (std::none_of(forbidden.begin(), forbidden.end(), forbids)) places.push_back(place);
  };
  add(room.wish);
  for (const Range& range : forbidden) {
    add(range.low);
    add(range.high);
  }
  if (places.empty()) return {};
  const auto nearer = [&](double a, double b) {
    return std::pair(std::abs(a - room.wish), a) < std::pair(std::abs(b - room.wish), b);
  };
  std::sort(places.begin(), places.end(), nearer);
  places.erase(std::unique(places.begin(), places.end()), places.end());
  if (places.size() > kMostPlaces) places.resize(kMostPlaces);
  if (places.size() == 1) return places.front();
  double least = INFINITY;
  double found = places.front();
  for (const double place : places) {
    const double away = std::abs(place - room.wish);
    if (away >= least) break;
    const double cost = away + m_measures.crossing * crossings(i, place);
    if (cost >= least) continue;
    least = cost;
    found = place;
  }
  return found;
}

/// Of the piece and those beside it, were it there.
int ConnectorNudging::crossings(std::size_t i, double level) {
  const std::vector<Point>& course = *m_course;
  const Way way = wayOf(i);
  const Point a = pointAt(along(course[i], way), level, way);
  const Point b = pointAt(along(course[i + 1], way), level, way);
  int sum = crossings(a, b);
  if (i > 0) sum += crossings(course[i - 1], a);
  if (i + 2 < course.size()) sum += crossings(b, course[i + 2]);
  return sum;
}

int ConnectorNudging::crossings(Point a, Point b) {
  const Way way = isLevel(a, b) ? Way::level : Way::upright;
  const double level = across(a, way);
  const Range span = between(along(a, way), along(b, way));
  int sum = 0;
  m_field.eachPiece(rectOf(span, {level, level}, way), crossWay(way),
                    [&](const RoutingField::Piece& piece) {
                      const Connector& other = m_field.line(piece.line).connector;
                      sum += piece.span.contains(level) && span.contains(piece.at) &&
                             !areRelated(other, *m_connector);
                    });
  // Beside another piece of the same way the line counts as crossing it: it is to go elsewhere.
  m_field.eachPiece(rectOf(span, Range{level, level}.grownBy(m_measures.track / 4), way), way,
                    [&](const RoutingField::Piece& piece) {
                      const Connector& other = m_field.line(piece.line).connector;
                      sum += piece.span.overlaps(span) && !areRelated(other, *m_connector);
                    });
  return sum;
}

}  // namespace brisel::layout
