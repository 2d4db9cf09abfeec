#include "canvas/Rerouting.h"

#include <algorithm>
#include <utility>

#include "canvas/LinkBends.h"
#include "canvas/LinkRoute.h"
#include "canvas/Memory.h"
#include "canvas/Scene.h"
#include "layout/Segments.h"

namespace brisel::canvas {

using layout::Connector;
using layout::EdgeKind;
using layout::StandingBox;
using layout::StandingLine;
using platform::Arrow;
using platform::Point;
using platform::Rect;
using platform::Ref;

namespace {

/// A line this near to the border of a box that was put there looks like a part of it.
constexpr double kTooNear = 2 * platform::kTwipsPerPixel;

}  // namespace

EdgeKind kindOf(const Link& link) {
  if (link.endArrow() == static_cast<int>(Arrow::triangle)) {
    return link.dashed() ? EdgeKind::realization : EdgeKind::generalization;
  }
  const bool diamond = link.beginArrow() == static_cast<int>(Arrow::diamond) ||
                       link.beginArrow() == static_cast<int>(Arrow::filledDiamond);
  return diamond ? EdgeKind::aggregation : EdgeKind::association;
}

Rerouting::Rerouting(const Scene& scene, Places places, Point corner, Bends bends)
    : m_scene(scene), m_places(std::move(places)), m_router(m_standing, layout::Spacing(), corner) {
  collectLines(bends);
  for (const auto& [node, rect] : m_places) m_router.stand(StandingBox{node->order(), rect});
}

Rect Rerouting::rectOf(const Node& node) const {
  const auto place = m_places.find(&node);
  return place == m_places.end() ? node.bounds() : place->second;
}

bool Rerouting::isMoved(const Node& node) const { return rectOf(node) != node.bounds(); }

Connector Rerouting::connectorOf(const Link& link) const {
  const Node& source = link.sourceNode();
  const Node& target = link.targetNode();
  return {link.order(),
          {source.order(), rectOf(source)},
          {target.order(), rectOf(target)},
          kindOf(link)};
}

void Rerouting::Standing::collect(const Rect& area, std::vector<StandingBox>& boxes,
                                  std::vector<StandingLine>& lines) const {
  std::vector<Item*> found;
  m_job.m_scene.collect(area, found);
  for (const Item* item : found) {
    if (item->isLink()) {
      const Link& link = static_cast<const Link&>(*item);
      if (m_job.m_concerned.contains(&link)) continue;
      lines.push_back({m_job.connectorOf(link), link.points()});
    } else {
      const Node& node = static_cast<const Node&>(*item);
      if (!m_job.m_places.contains(&node)) boxes.push_back({node.order(), node.bounds()});
    }
  }
}

bool Rerouting::isInTheWay(const Link& link, const Rect& box) {
  return layout::runsThrough(link.points(), box.grownBy(kTooNear));
}

bool Rerouting::runsAlong(const Link& link, const Rect& piece) {
  constexpr double kStretch = platform::kTwipsPerPixel;
  const auto& points = link.points();
  for (std::size_t i = 1; i < points.size(); ++i) {
    const Rect other = rectAround(points[i - 1], points[i]);
    const bool isLevel = piece.height == 0 && other.height == 0;
    if (!isLevel && (piece.width > 0 || other.width > 0)) continue;
    const Rect near = isLevel ? Rect{piece.left + kStretch, piece.top - kTooNear,
                                     piece.width - 2 * kStretch, 2 * kTooNear}
                              : Rect{piece.left - kTooNear, piece.top + kStretch, 2 * kTooNear,
                                     piece.height - 2 * kStretch};
    if (layout::crosses(points[i - 1], points[i], near)) return true;
  }
  return false;
}

void Rerouting::collectLines(Bends bends) {
  for (const auto& [node, rect] : m_places) {
    for (const Node::Attached& end : node->attached()) {
      if (bends == Bends::stored && !end.link->bends().empty()) continue;
      if (end.link->isLoop()) {
        if (end.atSource) moveLoop(*end.link);
      } else if (m_concerned.insert(end.link).second) {
        m_lines.push_back(end.link);
      }
    }
    if (isMoved(*node))
      collectLinesNear(rect, [&](const Link& link) { return isInTheWay(link, rect); });
  }
  for (const auto& course : m_loopCourses) {
    for (std::size_t i = 1; i < course.size(); ++i) {
      const Rect piece = rectAround(course[i - 1], course[i]);
      collectLinesNear(piece, [&](const Link& link) { return runsAlong(link, piece); });
    }
  }
  std::sort(m_lines.begin(), m_lines.end(),
            [](const Link* a, const Link* b) { return a->order() < b->order(); });
}

/// Adds lines of other boxes that the new place of a box, or of a piece of a loop, concerns.
template <class Concerns>
void Rerouting::collectLinesNear(const Rect& place, const Concerns& concerns) {
  std::vector<Item*> found;
  m_scene.collect(place.grownBy(kTooNear), found);
  for (Item* item : found) {
    if (!item->isLink()) continue;
    Link& link = static_cast<Link&>(*item);
    if (link.isLoop() || m_places.contains(&link.sourceNode()) ||
        m_places.contains(&link.targetNode()) || !concerns(link)) {
      continue;
    }
    if (m_concerned.insert(&link).second) m_lines.push_back(&link);
  }
}

/// It goes with the box, bends of its own included, and stands there.
void Rerouting::moveLoop(Link& link) {
  if (!isMoved(link.sourceNode())) return;
  const Point way = rectOf(link.sourceNode()).topLeft() - link.sourceNode().bounds().topLeft();
  auto course = link.points();
  for (Point& point : course) point = point + way;
  m_concerned.insert(&link);
  m_router.stand(StandingLine{connectorOf(link), course});
  m_loopCourses.push_back(std::move(course));
  if (link.bends().empty()) return;
  auto bends = link.bends();
  for (Point& bend : bends) bend = withinReach(bend + way);
  m_loops.push_back({Ref<Link>(&link), std::move(bends)});
}

void Rerouting::propose(Link& link, std::vector<Point> course) {
  m_proposals.emplace(&link, std::move(course));
}

void Rerouting::plan(const layout::GoOn& goOn) {
  std::vector<Link*> open;
  for (Link* link : m_lines) {
    const auto proposal = m_proposals.find(link);
    StandingLine line{connectorOf(*link), {}};
    if (proposal != m_proposals.end()) line.course = proposal->second;
    if (!m_router.isSound(line)) {
      open.push_back(link);
      continue;
    }
    m_router.stand(line);
    m_courses.push_back({Ref<Link>(link), line.course});
  }
  std::vector<Connector> connectors;
  std::vector<Link*> led;
  std::vector<std::vector<Point>> former;
  for (Link* link : open) {
    const bool stays = !isMoved(link->sourceNode()) && !isMoved(link->targetNode());
    StandingLine line{connectorOf(*link), {}};
    if (stays) line.course = link->points();
    if (m_router.mayStay(line)) {
      m_router.stand(line);
      continue;
    }
    connectors.push_back(line.connector);
    led.push_back(link);
    former.push_back(std::move(line.course));
  }
  auto courses = m_router.route(connectors, goOn, former);
  for (std::size_t i = 0; i < led.size(); ++i) {
    m_courses.push_back({Ref<Link>(led[i]), std::move(courses[i])});
  }
}

void Rerouting::apply() const {
  for (const Course& loop : m_loops) loop.link->bends(loop.points);
  for (const auto& [link, course] : m_courses) {
    if (course.size() < 2) {
      link->bends({});
      continue;
    }
    auto bends = bendsFor(link->sourceNode().bounds(), link->targetNode().bounds(), course);
    for (Point& bend : bends) bend = withinReach(wholeTwips(bend));
    if (bends != link->bends()) link->bends(std::move(bends));
  }
}

}  // namespace brisel::canvas
