#include "canvas/Rerouting.h"

#include <algorithm>
#include <utility>

#include "canvas/LinkBends.h"
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
  const auto& points = link.points();
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (layout::crosses(points[i - 1], points[i], box.grownBy(kTooNear))) return true;
  }
  return false;
}

void Rerouting::collectLines(Bends bends) {
  for (const auto& [node, rect] : m_places) {
    for (const Node::Attached& end : node->attached()) {
      if (bends == Bends::stored && !end.link->bends().empty()) continue;
      if (end.link->isLoop()) {
        if (end.atSource) shiftLoop(*end.link);
      } else if (m_concerned.insert(end.link).second) {
        m_lines.push_back(end.link);
      }
    }
    if (!isMoved(*node)) continue;
    std::vector<Item*> found;
    m_scene.collect(rect.grownBy(kTooNear), found);
    for (Item* item : found) {
      if (!item->isLink()) continue;
      Link& link = static_cast<Link&>(*item);
      if (link.isLoop() || m_places.contains(&link.sourceNode()) ||
          m_places.contains(&link.targetNode()) || !isInTheWay(link, rect)) {
        continue;
      }
      if (m_concerned.insert(&link).second) m_lines.push_back(&link);
    }
  }
  std::sort(m_lines.begin(), m_lines.end(),
            [](const Link* a, const Link* b) { return a->order() < b->order(); });
}

/// Bends of its own go with the box.
void Rerouting::shiftLoop(Link& link) {
  if (link.bends().empty() || !isMoved(link.sourceNode())) return;
  const Point way = rectOf(link.sourceNode()).topLeft() - link.sourceNode().bounds().topLeft();
  auto bends = link.bends();
  for (Point& bend : bends) bend = withinReach(bend + way);
  m_loops.push_back({Ref<Link>(&link), std::move(bends)});
}

void Rerouting::propose(Link& link, std::vector<Point> course) {
  m_proposals.emplace(&link, std::move(course));
}

void Rerouting::plan(const layout::GoOn& goOn) {
  std::vector<Link*> open;
  const auto keep = [&](Link& link, const std::vector<Point>& course) {
    const StandingLine line{connectorOf(link), course};
    if (!m_router.isSound(line)) return false;
    m_router.stand(line);
    return true;
  };
  for (Link* link : m_lines) {
    const auto proposal = m_proposals.find(link);
    if (proposal != m_proposals.end() && keep(*link, proposal->second)) {
      m_courses.push_back({Ref<Link>(link), proposal->second});
    } else {
      open.push_back(link);
    }
  }
  std::vector<Connector> connectors;
  std::vector<Link*> led;
  std::vector<std::vector<Point>> former;
  for (Link* link : open) {
    const bool stays = !isMoved(link->sourceNode()) && !isMoved(link->targetNode());
    if (stays && keep(*link, link->points())) continue;
    connectors.push_back(connectorOf(*link));
    led.push_back(link);
    former.push_back(stays ? link->points() : std::vector<Point>());
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
