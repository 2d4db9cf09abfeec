#include "canvas/HitTest.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "canvas/Scene.h"
#include "canvas/Viewport.h"
#include "layout/Segments.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;

namespace {

bool near(Point a, Point b, double reach) {
  return std::abs(a.x - b.x) <= reach && std::abs(a.y - b.y) <= reach;
}

std::optional<Hit> hitHandle(Node& node, Point at, double reach) {
  const auto handles = handlesOf(node.bounds());
  for (std::size_t i = 0; i < handles.size(); ++i) {
    if (!near(handles[i], at, reach)) continue;
    Hit hit;
    hit.node = &node;
    hit.part = Hit::Part::handle;
    hit.handle = static_cast<Handle>(i);
    return hit;
  }
  return {};
}

std::optional<Hit> hitPoint(Link& link, Point at, double reach) {
  const auto& points = link.points();
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (!near(points[i], at, reach)) continue;
    Hit hit;
    hit.link = &link;
    hit.part = Hit::Part::point;
    hit.index = i;
    return hit;
  }
  return {};
}

/// The segment that comes nearest to the place, by the index of its first point.
std::size_t nearestSegment(const std::vector<Point>& points, Point at) {
  std::size_t nearest = 0;
  for (std::size_t i = 1; i + 1 < points.size(); ++i) {
    const double reached = distance(at, points[nearest], points[nearest + 1]);
    if (distance(at, points[i], points[i + 1]) < reached) nearest = i;
  }
  return nearest;
}

std::optional<Hit> hitLink(Link& link, Point at, double reach) {
  Hit hit;
  hit.link = &link;
  const auto isIn = [&](const Rect& text) { return !text.isEmpty() && text.contains(at); };
  const bool onLabel = isIn(link.labelArea());
  if (!onLabel && (isIn(link.beginTextArea()) || isIn(link.endTextArea()))) {
    hit.part = Hit::Part::label;
    return hit;
  }
  const auto& points = link.points();
  hit.index = nearestSegment(points, at);
  if (!onLabel && distance(at, points[hit.index], points[hit.index + 1]) > reach) return {};
  hit.part = onLabel ? Hit::Part::label : Hit::Part::border;
  hit.onLine = !onLabel || layout::runsThrough(points, link.labelArea());
  return hit;
}

bool hitRow(const Node& node, Point at, Hit& hit) {
  for (std::size_t i = 0; i < node.sectionCount(); ++i) {
    const Rect area = node.sectionArea(i);
    if (area.isEmpty() || !area.contains(at)) continue;
    const double row = std::floor((at.y - node.firstRow(i)) / node.rowHeight());
    const auto& rows = node.section(i).rows();
    if (row < 0 || row >= static_cast<double>(rows.size())) continue;
    hit.part = Hit::Part::row;
    hit.section = i;
    hit.index = static_cast<std::size_t>(row);
    hit.tag = rows[hit.index].tag;
    return true;
  }
  return false;
}

std::optional<Hit> hitNode(Node& node, Point at, double reach) {
  const Rect box = node.bounds();
  if (!box.contains(at)) return {};
  Hit hit;
  hit.node = &node;
  // In a box that is small on the screen the border leaves room for what is inside.
  const double edge = std::min({reach, box.width / 8, box.height / 8});
  if (box.grownBy(-edge).contains(at)) {
    if (node.titleArea().contains(at)) return hit;
    if (hitRow(node, at, hit)) return hit;
  }
  hit.part = Hit::Part::border;
  return hit;
}

}  // namespace

std::optional<Hit> hitTest(const Scene& scene, const Viewport& view, Point at) {
  const double handleReach = view.toTwips(kHandlePixels / 2 + 1);
  const double lineReach = view.toTwips(kHitPixels);
  const double reach = std::max(handleReach, lineReach);
  std::vector<Item*> found;
  scene.collect(Rect{at.x, at.y, 0, 0}.grownBy(reach), found);
  std::sort(found.begin(), found.end(), [](const Item* a, const Item* b) {
    return a->isLink() != b->isLink() ? a->isLink() : a->order() > b->order();
  });
  for (Item* item : found) {
    if (!item->isSelected()) continue;
    const auto hit = item->isLink() ? hitPoint(static_cast<Link&>(*item), at, handleReach)
                                    : hitHandle(static_cast<Node&>(*item), at, handleReach);
    if (hit) return hit;
  }
  for (Item* item : found) {
    const auto hit = item->isLink() ? hitLink(static_cast<Link&>(*item), at, lineReach)
                                    : hitNode(static_cast<Node&>(*item), at, lineReach);
    if (hit) return hit;
  }
  return {};
}

std::string_view nameOf(Hit::Part part) {
  switch (part) {
    case Hit::Part::title:
      return "title";
    case Hit::Part::row:
      return "row";
    case Hit::Part::border:
      return "border";
    case Hit::Part::handle:
      return "handle";
    case Hit::Part::point:
      return "point";
    case Hit::Part::label:
      return "label";
  }
  return "border";
}

}  // namespace brisel::canvas
