#include "canvas/Labels.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "canvas/Link.h"
#include "canvas/Node.h"
#include "canvas/Scene.h"
#include "layout/Segments.h"

namespace brisel::canvas {

using layout::LabelCandidate;
using layout::LabelObstacles;
using platform::Point;
using platform::Rect;

namespace {

constexpr layout::LabelGaps kGaps{
    .box = kTextGap, .line = kTextLineGap, .beside = kNameGap, .clear = kTextClearance};

/// A line is looked around in pieces of this length.
constexpr double kPieceLength = 8192;

/// What is entered in longer parts is not looked for.
constexpr double kLongestPart = 16384;

/// Lines that cross half of the diagram do not count as obstacles: there is no way round them. All
/// parts of the others are shorter than the longest.
bool countsAsObstacle(const std::vector<Point>& course) {
  constexpr double kLongest = 180'000;
  double length = 0;
  for (std::size_t i = 1; i < course.size(); ++i) {
    const Point way = course[i] - course[i - 1];
    length += std::max(std::abs(way.x), std::abs(way.y));
  }
  return length <= kLongest;
}

}  // namespace

void Labels::changed(const Node& node, const Rect& before, const Rect& after) {
  if (before == after) return;
  changed(before);
  changed(after);
  noteSize(node, std::max(after.width, after.height));
}

void Labels::noteSize(const Item& item, double side) {
  if (side > kLongestPart) {
    m_large.insert(&item);
  } else if (!m_large.empty()) {
    m_large.erase(&item);
  }
}

void Labels::forget(const Node& node, const Rect& before) {
  changed(before);
  m_large.erase(&node);
}

void Labels::changed(Link& link) {
  auto& [points, around, name, begin, end] = link.m_geometry;
  for (Rect* text : {&name, &begin, &end}) changed(std::exchange(*text, Rect{}));
  addPieces(link.m_courseTold);
  link.m_courseTold = link.points();
  addPieces(link.m_courseTold);
  queue(link);
}

void Labels::forget(Link& link) {
  const auto& [points, around, name, begin, end] = link.m_geometry;
  for (const Rect& text : {name, begin, end}) changed(text);
  m_large.erase(&link);
  addPieces(link.m_courseTold);
  link.m_courseTold.clear();
  m_regions.remove(link.m_labelPlace);
  m_queue.erase({Stage::ends, link.order()});
  m_queue.erase({Stage::name, link.order()});
}

void Labels::clear() {
  m_regions.clear();
  m_large.clear();
  m_areas.clear();
  m_pieces.clear();
  m_queue.clear();
}

void Labels::addPieces(const std::vector<Point>& course) {
  if (!countsAsObstacle(course)) return;
  for (std::size_t i = 1; i < course.size(); ++i) m_pieces.push_back({course[i - 1], course[i]});
}

void Labels::queue(Link& link) {
  m_queue.emplace(Turn{Stage::ends, link.order()}, &link);
  m_queue.emplace(Turn{Stage::name, link.order()}, &link);
}

void Labels::findConcerned() {
  // Of a large change all is concerned: that is quicker than looking around each place.
  if (m_areas.size() + m_pieces.size() > m_scene.links().size() + 1000) {
    for (Link& link : m_scene.links()) {
      if (!link.m_labelPlace.isEmpty()) queue(link);
    }
  } else {
    for (const Rect& area : m_areas) {
      m_found.clear();
      m_regions.collect(area, m_found);
      for (Item* item : m_found) queue(static_cast<Link&>(*item));
    }
    for (const Piece& piece : m_pieces) findConcerned(piece);
  }
  m_areas.clear();
  m_pieces.clear();
}

void Labels::findConcerned(const Piece& piece) {
  const Point way = piece.to - piece.from;
  const double longer = std::max(std::abs(way.x), std::abs(way.y));
  const double count = std::clamp(std::ceil(longer / kPieceLength), 1.0, 64.0);
  for (double i = 0; i < count; ++i) {
    const Point a = piece.from + way * (i / count);
    const Point b = piece.from + way * ((i + 1) / count);
    m_found.clear();
    m_regions.collect(
        {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)},
        m_found);
    for (Item* item : m_found) {
      Link& link = static_cast<Link&>(*item);
      const auto& regions = link.m_regions;
      const auto isCrossed = [&](const Rect& region) {
        return !region.isEmpty() && layout::crosses(piece.from, piece.to, region.grownBy(1));
      };
      if (std::any_of(regions.begin(), regions.end(), isCrossed)) queue(link);
    }
  }
}

void Labels::queueBehind(Turn turn, const Rect& area) {
  if (area.isEmpty()) return;
  m_found.clear();
  m_regions.collect(area, m_found);
  for (Item* item : m_found) {
    Link& link = static_cast<Link&>(*item);
    for (const Stage stage : {Stage::ends, Stage::name}) {
      const Turn its{stage, link.order()};
      if (its > turn) m_queue.emplace(its, &link);
    }
  }
}

void Labels::place(Link& link, Stage stage, std::vector<Moved>& moved) {
  Link::Geometry& geometry = link.m_geometry;
  const auto put = [&](Rect& area, Rect before, Link::Label label) {
    const auto candidates = link.candidates(label, kGaps);
    layout::PlacedLabel best;
    if (!candidates.empty()) best = bestOf(candidates, link, stage);
    area = best.area;
    link.m_regions[static_cast<std::size_t>(label)] = best.examined;
    if (area != before) moved.push_back({&link, before, area});
  };
  if (stage == Stage::name) {
    put(geometry.label, geometry.label, Link::Label::name);
  } else {
    // A text is no obstacle to one that is placed before it.
    const Rect begin = std::exchange(geometry.beginText, Rect{});
    const Rect end = std::exchange(geometry.endText, Rect{});
    put(geometry.beginText, begin, Link::Label::begin);
    put(geometry.endText, end, Link::Label::end);
  }
  double longest = 0;
  for (const Rect& text : {geometry.label, geometry.beginText, geometry.endText}) {
    longest = std::max({longest, text.width, text.height});
  }
  noteSize(link, longest);
  m_parts.clear();
  for (const Rect& region : link.m_regions) {
    if (!region.isEmpty()) m_parts.push_back(region);
  }
  m_regions.put(link, link.m_labelPlace, m_parts);
}

layout::PlacedLabel Labels::bestOf(const std::vector<LabelCandidate>& candidates, const Link& link,
                                   Stage stage) const {
  const auto around = [&](const Rect& area, LabelObstacles& found) {
    addObstacles(area, link, stage, found);
  };
  return layout::bestOf(candidates, link.points(), around, kGaps);
}

void Labels::addObstacles(const Rect& area, const Link& link, Stage stage,
                          LabelObstacles& found) const {
  m_near.clear();
  m_scene.m_index.collect(area, m_near, kLongestPart);
  for (const Item* item : m_near) {
    if (m_large.empty() || !m_large.contains(item)) addObstacle(*item, area, link, stage, found);
  }
  for (const Item* item : m_large) addObstacle(*item, area, link, stage, found);
  // Its own texts are not yet found where they stand.
  found.solid.push_back(link.m_geometry.beginText);
  found.solid.push_back(link.m_geometry.endText);
}

void Labels::addObstacle(const Item& item, const Rect& area, const Link& link, Stage stage,
                         LabelObstacles& found) {
  // Of a long line that passes by, most lies elsewhere.
  const auto addSolid = [&](const Rect& solid) {
    if (solid.intersects(area)) found.solid.push_back(solid);
  };
  if (!item.isLink()) {
    addSolid(static_cast<const Node&>(item).bounds());
    return;
  }
  if (&item == &link) return;
  const Link& other = static_cast<const Link&>(item);
  const Link::Geometry& geometry = other.m_geometry;
  const bool comesBefore = other.order() < link.order();
  if (stage == Stage::name || comesBefore) {
    addSolid(geometry.beginText);
    addSolid(geometry.endText);
  }
  if (stage == Stage::name && comesBefore) addSolid(geometry.label);
  if (!countsAsObstacle(geometry.points)) return;
  for (std::size_t i = 1; i < geometry.points.size(); ++i) {
    const Point from = geometry.points[i - 1];
    const Point to = geometry.points[i];
    const bool isNear = std::min(from.x, to.x) <= area.right() &&
                        std::max(from.x, to.x) >= area.left &&
                        std::min(from.y, to.y) <= area.bottom() && std::max(from.y, to.y) >= area.top;
    if (isNear) found.pieces.push_back({from, to});
  }
}

}  // namespace brisel::canvas
