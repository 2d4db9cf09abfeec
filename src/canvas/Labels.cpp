#include "canvas/Labels.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "canvas/Link.h"
#include "canvas/LinkRoute.h"
#include "canvas/Node.h"
#include "canvas/Scene.h"
#include "layout/LabelChoice.h"
#include "layout/Segments.h"

namespace brisel::canvas {

using layout::LabelCandidate;
using platform::Point;
using platform::Rect;

namespace {

constexpr layout::LabelGaps kGaps{.box = kTextGap,
                                  .head = kTextHeadGap,
                                  .line = kTextLineGap,
                                  .beside = kNameGap,
                                  .clear = kTextClearance,
                                  .hair = kHairClearance};

/// A line is looked around in pieces of this length, or in this many if it is very long.
constexpr double kPieceLength = 8192;
constexpr double kMostPieces = 64;

/// Pieces that cross half of the diagram do not count as obstacles: there is no way round them.
bool isObstacle(const Obstacles::Piece& piece) {
  constexpr double kMostSlanted = 65'536;
  constexpr double kMostCells = 512;
  const Point way = piece.to - piece.from;
  return std::min(std::abs(way.x), std::abs(way.y)) <= kMostSlanted &&
         piece.cellCount() <= kMostCells;
}

}  // namespace

Labels::Turn Labels::turnOf(const Link& link, Stage stage) {
  constexpr Turn kNames = Turn{1} << 63U;
  return 2 * link.order() + (stage == name ? kNames : 0);
}

void Labels::changed(const Rect& area) {
  if (!area.isEmpty()) m_changedAreas.push_back(area);
}

void Labels::put(CellGrid<Obstacles::Solid>& grid, Id& id, const Rect& area, Turn turn) {
  grid.remove(id);
  if (!area.isEmpty()) id = grid.add({area, turn});
}

void Labels::changed(Node& node) {
  Id& id = node.m_labels.box;
  const Rect before = id == kNone ? Rect() : m_obstacles.boxes[id].area;
  const Rect after = node.bounds();
  if (before == after) return;
  changed(before);
  changed(after);
  put(m_obstacles.boxes, id, after, 0);
}

void Labels::forget(Node& node) {
  Id& id = node.m_labels.box;
  if (id == kNone) return;
  changed(m_obstacles.boxes[id].area);
  m_obstacles.boxes.remove(id);
}

void Labels::changed(Link& link) {
  takeOut(link);
  link.m_labels.course = link.points();
  addPieces(link);
  addHeads(link);
  queue(link);
}

void Labels::takeOut(Link& link) {
  OfLink& its = link.m_labels;
  Link::Geometry& geometry = link.m_geometry;
  for (Rect* text : {&geometry.label, &geometry.beginText, &geometry.endText}) {
    changed(std::exchange(*text, Rect{}));
  }
  for (Id& id : its.texts) m_obstacles.texts.remove(id);
  for (Id& id : its.heads) {
    if (id != kNone) changed(m_obstacles.boxes[id].area);
    m_obstacles.boxes.remove(id);
  }
  for (Id& id : its.pieces) {
    m_changedPieces.push_back(m_obstacles.pieces[id]);
    m_obstacles.pieces.remove(id);
  }
  its.pieces.clear();
  for (const Stage stage : {ends, name}) m_regions[stage].remove(its.regions[stage]);
}

void Labels::addPieces(Link& link) {
  const auto& course = link.m_labels.course;
  for (std::size_t i = 1; i < course.size(); ++i) {
    const Piece piece{course[i - 1], course[i], link.order()};
    if (!isObstacle(piece)) continue;
    link.m_labels.pieces.push_back(m_obstacles.pieces.add(piece));
    m_changedPieces.push_back(piece);
  }
}

void Labels::addHeads(Link& link) {
  const auto& course = link.m_labels.course;
  const std::array heads{headArea(link.beginArrow(), beginOf(course)),
                         headArea(link.endArrow(), endOf(course))};
  for (std::size_t i = 0; i < heads.size(); ++i) {
    changed(heads[i]);
    put(m_obstacles.boxes, link.m_labels.heads[i], heads[i], 0);
  }
}

void Labels::forget(Link& link) {
  takeOut(link);
  link.m_labels.course.clear();
  m_queue.erase(turnOf(link, ends));
  m_queue.erase(turnOf(link, name));
}

void Labels::clear() {
  m_obstacles.clear();
  for (GridIndex& regions : m_regions) regions.clear();
  m_changedAreas.clear();
  m_changedPieces.clear();
  m_queue.clear();
  for (Node& node : m_scene.nodes()) node.m_labels = {};
  for (Link& link : m_scene.links()) link.m_labels = {};
}

void Labels::queue(Link& link) {
  if (!link.m_beginText.empty() || !link.m_endText.empty()) queue(link, ends);
  if (!link.m_text.empty()) queue(link, name);
}

void Labels::queue(Link& link, Stage stage) { m_queue.emplace(turnOf(link, stage), &link); }

void Labels::settle(std::vector<Moved>& moved) {
  // Of a large change all is concerned: that is quicker than looking around each place.
  const std::size_t changes = m_changedAreas.size() + m_changedPieces.size();
  if (changes > m_scene.links().size() + 100) {
    placeAll(moved);
  } else {
    findConcerned();
  }
  m_changedAreas.clear();
  m_changedPieces.clear();
  while (!m_queue.empty()) {
    const auto [turn, link] = *m_queue.begin();
    m_queue.erase(m_queue.begin());
    const std::size_t before = moved.size();
    place(*link, turn == turnOf(*link, ends) ? ends : name, moved);
    for (std::size_t i = before; i < moved.size(); ++i) {
      queueBehind(turn, moved[i].before);
      queueBehind(turn, moved[i].after);
    }
  }
}

void Labels::placeAll(std::vector<Moved>& moved) {
  m_queue.clear();
  // Lines stand in the order of their creation.
  for (const Stage stage : {ends, name}) {
    for (Link& link : m_scene.links()) place(link, stage, moved);
  }
}

void Labels::findConcerned() {
  for (const Stage stage : {ends, name}) {
    for (const Rect& area : m_changedAreas) {
      m_found.clear();
      m_regions[stage].collect(area, m_found);
      for (Item* item : m_found) queue(static_cast<Link&>(*item), stage);
    }
    for (const Piece& piece : m_changedPieces) findConcerned(piece, stage);
  }
}

void Labels::findConcerned(const Piece& piece, Stage stage) {
  const Point way = piece.to - piece.from;
  const double longer = std::max(std::abs(way.x), std::abs(way.y));
  const double count = std::clamp(std::ceil(longer / kPieceLength), 1.0, kMostPieces);
  for (double i = 0; i < count; ++i) {
    m_found.clear();
    m_regions[stage].collect(
        rectAround(piece.from + way * (i / count), piece.from + way * ((i + 1) / count)), m_found);
    for (Item* item : m_found) {
      Link& link = static_cast<Link&>(*item);
      m_examined.clear();
      GridIndex::partsOf(link.m_labels.regions[stage], m_examined);
      const auto isCrossed = [&](const Rect& region) {
        return layout::crosses(piece.from, piece.to, region.grownBy(1));
      };
      if (std::any_of(m_examined.begin(), m_examined.end(), isCrossed)) queue(link, stage);
    }
  }
}

void Labels::queueBehind(Turn turn, const Rect& area) {
  if (area.isEmpty()) return;
  for (const Stage stage : {ends, name}) {
    m_found.clear();
    m_regions[stage].collect(area, m_found);
    for (Item* item : m_found) {
      Link& link = static_cast<Link&>(*item);
      if (turnOf(link, stage) > turn) queue(link, stage);
    }
  }
}

void Labels::place(Link& link, Stage stage, std::vector<Moved>& moved) {
  Link::Geometry& geometry = link.m_geometry;
  m_examined.clear();
  const auto put = [&](Rect& area, Link::Label label) {
    const auto candidates = link.candidates(label, kGaps);
    const Turn turn = turnOf(link, stage) + (label == Link::Label::end ? 1 : 0);
    const Rect before = area;
    area = candidates.empty() ? Rect() : bestOf(candidates, link, turn);
    if (area == before) return;
    this->put(m_obstacles.texts, link.m_labels.texts[static_cast<std::size_t>(label)], area, turn);
    moved.push_back({&link, before, area});
  };
  if (stage == name) {
    put(geometry.label, Link::Label::name);
  } else {
    put(geometry.beginText, Link::Label::begin);
    put(geometry.endText, Link::Label::end);
  }
  m_regions[stage].put(link, link.m_labels.regions[stage], m_examined);
}

Rect Labels::bestOf(const std::vector<LabelCandidate>& candidates, const Link& link, Turn turn) {
  Rect near;
  for (const LabelCandidate& one : candidates) {
    if (one.reluctance == 0) near = near.united(one.area);
  }
  Surroundings obstacles(m_obstacles, turn, link.order(), near, m_around);
  const layout::LabelSurroundings around{
      .covered = [&](const Rect& area, double enough) { return obstacles.covered(area, enough); },
      .inTheWay = [&](const Rect& area) { return obstacles.inTheWay(area); },
      .crossed = [&](const Rect& area, int enough) { return obstacles.crossed(area, enough); }};
  return layout::bestOf(candidates, link.points(), around, kGaps, m_examined);
}

}  // namespace brisel::canvas
