#include "canvas/Labels.h"

#include <algorithm>
#include <utility>

#include "canvas/Link.h"
#include "canvas/Node.h"
#include "canvas/Scene.h"

namespace brisel::canvas {

using layout::LabelCandidate;
using layout::LabelObstacles;
using platform::Point;
using platform::Rect;

namespace {

constexpr layout::LabelGaps kGaps{
    .box = kTextGap, .line = kTextLineGap, .beside = kNameGap, .clear = kTextClearance};

/// A region larger than this is entered label by label.
constexpr double kLargeRegion = 16384;

}  // namespace

void Labels::changed(Link& link) {
  std::vector<Rect> parts;
  for (const auto label : {Link::Label::begin, Link::Label::end, Link::Label::name}) {
    const auto candidates = link.candidates(label, kGaps);
    Rect all;
    for (const LabelCandidate& candidate : candidates) all = all.united(candidate.area);
    if (all.isEmpty()) continue;
    if (std::max(all.width, all.height) <= kLargeRegion) {
      parts.push_back(all.grownBy(kGaps.clear));
      continue;
    }
    for (const LabelCandidate& candidate : candidates) {
      parts.push_back(candidate.area.grownBy(kGaps.clear));
    }
  }
  m_regions.put(link, link.m_labelPlace, parts);
  queue(link);
}

void Labels::forget(Link& link) {
  m_regions.remove(link.m_labelPlace);
  m_queue.erase({Stage::ends, link.order()});
  m_queue.erase({Stage::name, link.order()});
}

void Labels::clear() {
  m_regions.clear();
  m_changed.clear();
  m_queue.clear();
}

void Labels::queue(Link& link) {
  m_queue.emplace(Turn{Stage::ends, link.order()}, &link);
  m_queue.emplace(Turn{Stage::name, link.order()}, &link);
}

void Labels::findConcerned() {
  // Of a large change all is concerned: that is quicker than looking around each place.
  if (m_changed.size() > m_scene.links().size() + 1000) {
    for (Link& link : m_scene.links()) {
      if (!link.m_labelPlace.isEmpty()) queue(link);
    }
    m_changed.clear();
    return;
  }
  for (const Rect& area : m_changed) {
    m_found.clear();
    m_regions.collect(area, m_found);
    for (Item* item : m_found) queue(static_cast<Link&>(*item));
  }
  m_changed.clear();
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
    area = candidates.empty() ? Rect{} : bestOf(candidates, link, stage);
    if (area != before) moved.push_back({&link, before, area});
  };
  if (stage == Stage::name) {
    put(geometry.label, geometry.label, Link::Label::name);
    return;
  }
  // A text is no obstacle to one that is placed before it.
  const Rect begin = std::exchange(geometry.beginText, Rect{});
  const Rect end = std::exchange(geometry.endText, Rect{});
  put(geometry.beginText, begin, Link::Label::begin);
  put(geometry.endText, end, Link::Label::end);
}

Rect Labels::bestOf(const std::vector<LabelCandidate>& candidates, const Link& link,
                    Stage stage) const {
  const auto around = [&](const Rect& area, LabelObstacles& found) {
    addObstacles(area, link, stage, found);
  };
  return layout::bestOf(candidates, link.points(), around, kGaps);
}

void Labels::addObstacles(const Rect& area, const Link& link, Stage stage,
                          LabelObstacles& found) const {
  m_near.clear();
  m_scene.m_index.collect(area, m_near);
  const auto addText = [&](const Rect& text) {
    if (text.intersects(area)) found.solid.push_back(text);
  };
  // Its own texts are not yet found where they stand.
  addText(link.m_geometry.beginText);
  addText(link.m_geometry.endText);
  for (const Item* item : m_near) {
    if (!item->isLink()) {
      found.solid.push_back(static_cast<const Node*>(item)->bounds());
      continue;
    }
    if (item == &link) continue;
    const Link& other = static_cast<const Link&>(*item);
    const Link::Geometry& geometry = other.m_geometry;
    const bool comesBefore = other.order() < link.order();
    if (stage == Stage::name || comesBefore) {
      addText(geometry.beginText);
      addText(geometry.endText);
    }
    if (stage == Stage::name && comesBefore) addText(geometry.label);
    for (std::size_t i = 1; i < geometry.points.size(); ++i) {
      found.pieces.push_back({geometry.points[i - 1], geometry.points[i]});
    }
  }
}

}  // namespace brisel::canvas
