#include "canvas/Memory.h"

#include <algorithm>
#include <cmath>
#include <unordered_set>

#include "canvas/LinkBends.h"
#include "canvas/Metrics.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;
using platform::Ref;

Point wholeTwips(Point point) { return {std::nearbyint(point.x), std::nearbyint(point.y)}; }

Point withinReach(Point point) {
  const auto limited = [](double value) {
    return std::isnan(value) ? 0 : std::clamp(value, -kReach, kReach);
  };
  return {limited(point.x), limited(point.y)};
}

Rect withinReach(const Rect& rect) {
  const Point corner = withinReach(rect.topLeft());
  const Point size = withinReach(Point{rect.width, rect.height});
  return {corner.x, corner.y, size.x, size.y};
}

SelectionMemory::SelectionMemory(Scene& scene) : m_scene(scene) {
  for (Item* item : scene.selection().selectedItems()) m_items.push_back({&item->object(), item});
}

void SelectionMemory::restore() const { m_scene.selection().set(items()); }

std::vector<Item*> SelectionMemory::items() const {
  std::vector<Item*> present;
  for (const Kept& kept : m_items) {
    if (kept.item->scene() == &m_scene) present.push_back(kept.item);
  }
  return present;
}

FollowingLines::FollowingLines(const std::vector<Ref<Node>>& nodes, Between between) {
  std::unordered_set<const Node*> among;
  for (const auto& node : nodes) among.insert(node.get());
  for (const auto& node : nodes) {
    for (const Node::Attached& end : node->attached()) {
      Link& link = *end.link;
      if (link.bends().empty() || link.isLoop()) continue;
      const Node& other = end.atSource ? link.targetNode() : link.sourceNode();
      if (among.contains(&other) && (between == Between::leave || !end.atSource)) continue;
      m_lines.push_back(
          {&link, link.points(), link.sourceNode().bounds(), link.targetNode().bounds()});
    }
  }
}

void FollowingLines::follow() {
  for (const Line& line : m_lines) {
    Link& link = *line.link;
    if (!link.scene()) continue;
    const BoxChange source{line.source, link.sourceNode().bounds()};
    const BoxChange target{line.target, link.targetNode().bounds()};
    auto bends = bendsAfter(line.course, source, target, link.rankOfAll());
    if (source.before != source.after || target.before != target.after) {
      for (Point& bend : bends) bend = withinReach(wholeTwips(bend));
    }
    link.bends(std::move(bends));
  }
}

MovingItems::MovingItems(Scene& scene)
    : m_scene(scene), m_following(scene.selection().nodes(), FollowingLines::Between::leave) {
  for (const auto& node : scene.selection().nodes()) {
    m_nodes.push_back({node, node->bounds()});
    m_bounds = m_bounds.united(node->bounds());
    for (const Node::Attached& end : node->attached()) {
      if (!end.atSource || end.link->bends().empty()) continue;
      if (end.link->targetNode().isSelected()) m_links.push_back({end.link, end.link->bends()});
    }
  }
}

void MovingItems::moveBy(Point distance) {
  const Scene::Update update(&m_scene);
  const Point whole = wholeTwips(distance);
  for (const MovingNode& moving : m_nodes) {
    if (moving.node->scene() != &m_scene) continue;
    const bool fits = moving.node->fitsText();
    moving.node->bounds(withinReach(moving.bounds.movedBy(whole)));
    if (fits) moving.node->fitToText(true);
  }
  for (const MovingLink& moving : m_links) {
    if (moving.link->scene() != &m_scene) continue;
    auto bends = moving.bends;
    for (Point& bend : bends) bend = withinReach(bend + whole);
    moving.link->bends(std::move(bends));
  }
  m_following.follow();
}

std::vector<std::string> MovingItems::movedKeys() const {
  std::vector<std::string> keys;
  for (const MovingNode& moving : m_nodes) {
    if (moving.node->scene() != &m_scene) continue;
    if (moving.node->bounds().topLeft() != moving.bounds.topLeft()) {
      keys.push_back(moving.node->key());
    }
  }
  return keys;
}

bool MovingItems::contains(const Item& item) const {
  const auto isIt = [&](const MovingNode& moving) { return moving.node.get() == &item; };
  return std::any_of(m_nodes.begin(), m_nodes.end(), isIt);
}

}  // namespace brisel::canvas
