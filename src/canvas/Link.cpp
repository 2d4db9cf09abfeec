#include "canvas/Link.h"

#include <algorithm>
#include <cmath>

#include "canvas/Points.h"
#include "canvas/Scene.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::canvas {

using platform::Error;
using platform::ErrorNumber;
using platform::MemberTable;
using platform::MemberTableOf;
using platform::Object;
using platform::Point;
using platform::Rect;
using platform::Ref;

namespace {

void checkReach(Point p) {
  if (!(std::abs(p.x) <= kReach && std::abs(p.y) <= kReach)) {
    throw Error(ErrorNumber::invalidCall, "Point of a link out of reach");
  }
}

void checkIndex(std::size_t index, std::size_t count) {
  if (index < count) return;
  throw Error(ErrorNumber::subscript,
              "No bend " + std::to_string(index) + " in a link of " + std::to_string(count));
}

/// A line is found by pieces of this length in twips, or in this many of them if it is very long.
constexpr double kPartLength = 8192;
constexpr double kMostParts = 12;

double longerSide(Point a, Point b) { return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y)); }

const Font& fontOf(const Scene* scene) {
  static const Font kNone{"Courier New", 10};
  return scene ? scene->textFont() : kNone;
}

}  // namespace

Link::Link(std::string_view key, std::string_view text, Node& source, Node& target)
    : m_source(&source), m_target(&target) {
  m_key = key;
  m_text = text;
}

Link::~Link() = default;

void Link::text(std::string_view text) {
  if (text == m_text) return;
  m_text = text;
  geometryChanged();
}

void Link::selected(bool selected) {
  if (scene()) scene()->selection().select(*this, selected);
}

Ref<Object> Link::getItem(std::string_view name) const { return stored(name); }

void Link::setItem(std::string_view name, Object* object) { store(name, object); }

void Link::reattachSource(platform::DiagramNode& node) { reattach(m_source, node); }

void Link::reattachTarget(platform::DiagramNode& node) { reattach(m_target, node); }

void Link::reattach(Ref<Node>& end, platform::DiagramNode& node) {
  auto* box = dynamic_cast<Node*>(&node);
  if (!box || box->scene() != scene()) {
    throw Error(ErrorNumber::invalidCall, "A link can only end at a node of its own canvas");
  }
  if (end == box) return;
  if (!scene()) {
    end = box;
    geometryChanged();
    return;
  }
  const Scene::Update update(scene());
  const Ref<Link> self(this);
  scene()->detach(*this);
  end = box;
  scene()->attach(*this);
  geometryChanged();
}

void Link::beginArrow(int code) {
  if (code == m_beginArrow) return;
  m_beginArrow = code;
  geometryChanged();
}

void Link::endArrow(int code) {
  if (code == m_endArrow) return;
  m_endArrow = code;
  geometryChanged();
}

void Link::beginText(std::string_view text) {
  if (text == m_beginText) return;
  m_beginText = text;
  geometryChanged();
}

void Link::endText(std::string_view text) {
  if (text == m_endText) return;
  m_endText = text;
  geometryChanged();
}

void Link::dashed(bool dashed) {
  if (dashed == m_dashed) return;
  m_dashed = dashed;
  geometryChanged();
}

Ref<platform::DiagramPoints> Link::ExtraPoints() const {
  return platform::make<LinkPoints>(self());
}

Rect Link::extent() const {
  const Geometry& g = settled();
  return g.course.united(g.label).united(g.beginText).united(g.endText);
}

double Link::margin() const {
  return m_beginArrow != 0 || m_endArrow != 0 ? std::max(kArrowHalfWidth, kDiamondHalfWidth)
                                              : platform::kTwipsPerPixel;
}

void Link::addParts(std::vector<Rect>& parts) const {
  const Geometry& g = geometry();
  double length = 0;
  for (std::size_t i = 1; i < g.points.size(); ++i) {
    length += longerSide(g.points[i - 1], g.points[i]);
  }
  const auto addText = [&](const Rect& text) {
    if (!text.isEmpty()) parts.push_back(text);
  };
  if (length <= kPartLength) {
    const Rect all = g.course.united(g.label).united(g.beginText).united(g.endText);
    if (std::max(all.width, all.height) <= 2 * kPartLength) {
      parts.push_back(all);
      return;
    }
    parts.push_back(g.course);
    addText(g.beginText);
    addText(g.endText);
    addText(g.label);
    return;
  }
  const double longest = std::max(kPartLength, length / kMostParts);
  const std::size_t first = parts.size();
  for (std::size_t i = 1; i < g.points.size(); ++i) {
    const Point from = g.points[i - 1];
    const Point way = g.points[i] - from;
    const double count = std::max(1.0, std::ceil(longerSide(from, g.points[i]) / longest));
    for (double piece = 0; piece < count; ++piece) {
      const Rect around =
          rectAround(from + way * (piece / count), from + way * ((piece + 1) / count));
      parts.push_back(around.grownBy(margin()));
    }
  }
  // A decoration may be longer than the segment that it stands on.
  if (m_beginArrow != 0) parts[first] = parts[first].grownBy(kDiamondLength);
  if (m_endArrow != 0) parts.back() = parts.back().grownBy(kDiamondLength);
  addText(g.beginText);
  addText(g.endText);
  addText(g.label);
}

const std::vector<Point>& Link::points() const { return geometry().points; }

Rect Link::labelArea() const { return settled().label; }

Rect Link::beginTextArea() const { return settled().beginText; }

Rect Link::endTextArea() const { return settled().endText; }

void Link::bends(std::vector<Point> bends) {
  for (const Point bend : bends) checkReach(bend);
  if (bends == m_bends) return;
  const Scene::Update update(scene());
  const bool straightened = bends.empty() != m_bends.empty();
  m_bends = std::move(bends);
  if (scene()) ++scene()->m_geometryRevision;
  if (straightened && scene()) scene()->pairChanged(*this);
  geometryChanged();
}

void Link::insertBend(std::size_t index, Point point) {
  checkIndex(index, m_bends.size() + 1);
  auto changed = m_bends;
  changed.insert(changed.begin() + static_cast<std::ptrdiff_t>(index), point);
  bends(std::move(changed));
}

void Link::moveBend(std::size_t index, Point point) {
  checkIndex(index, m_bends.size());
  auto changed = m_bends;
  changed[index] = point;
  bends(std::move(changed));
}

void Link::removeBend(std::size_t index) {
  checkIndex(index, m_bends.size());
  auto changed = m_bends;
  changed.erase(changed.begin() + static_cast<std::ptrdiff_t>(index));
  bends(std::move(changed));
}

void Link::geometryChanged() {
  m_stale = true;
  m_textsStale = true;
  if (scene()) scene()->touched(*this);
}

const Link::Geometry& Link::settled() const {
  if (scene()) scene()->settle();
  return geometry();
}

const Link::Geometry& Link::geometry() const {
  if (!m_stale) return m_geometry;
  m_stale = false;
  Geometry& g = m_geometry;
  g.points = followsCorner() ? loop(m_source->bounds(), m_rank)
                             : route(m_source->bounds(), m_target->bounds(), m_bends, m_rank);
  Point low = g.points.front();
  Point high = low;
  for (const Point p : g.points) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  }
  g.course = rectAround(low, high).grownBy(margin());
  if (scene()) return g;
  const auto first = [this](Label label) {
    const auto choices = candidates(label, {});
    return choices.empty() ? Rect{} : choices.front().area;
  };
  g.label = first(Label::name);
  g.beginText = first(Label::begin);
  g.endText = first(Label::end);
  return g;
}

std::vector<layout::LabelCandidate> Link::candidates(Label label,
                                                     const layout::LabelGaps& gaps) const {
  const std::string& words = label == Label::name    ? m_text
                             : label == Label::begin ? m_beginText
                                                     : m_endText;
  if (words.empty()) return {};
  const platform::Size size = labelSize(words, fontOf(scene()));
  const std::vector<Point>& course = points();
  if (label == Label::begin) {
    return layout::endCandidates(m_source->bounds(), course, size, m_beginArrow != 0, gaps);
  }
  if (label == Label::end) {
    return layout::endCandidates(m_target->bounds(), {course.rbegin(), course.rend()}, size,
                                 m_endArrow != 0, gaps);
  }
  if (followsCorner()) return loopNameCandidates(course, size);
  const double share =
      static_cast<double>(m_labelRank.index + 1) / static_cast<double>(m_labelRank.count + 1);
  return layout::nameCandidates(course, size, m_labelRank.reversed ? 1 - share : share, gaps);
}

const MemberTable& Link::memberTable() const {
  using Text = std::string_view;
  static const MemberTable kTable =
      MemberTableOf<Link>()
          .property("key", &Link::key)
          .property<std::string, Text>("text", &Link::text, &Link::text)
          .property("source", &Link::source)
          .property("target", &Link::target)
          .property<int, int>("beginArrow", &Link::beginArrow, &Link::beginArrow)
          .property<int, int>("endArrow", &Link::endArrow, &Link::endArrow)
          .property<std::string, Text>("beginText", &Link::beginText, &Link::beginText)
          .property<std::string, Text>("endText", &Link::endText, &Link::endText)
          .property<bool, bool>("dashed", &Link::dashed, &Link::dashed)
          .property<bool, bool>("selected", &Link::selected, &Link::selected)
          .property("marked", &Link::marked)
          .property("link", &Link::self)
          .property("ExtraPoints", &Link::ExtraPoints)
          .method("reattachSource", &Link::reattachSource)
          .method("reattachTarget", &Link::reattachTarget)
          .method("getItem", &Link::getItem)
          .method("setItem", &Link::setItem)
          .build();
  return kTable;
}

}  // namespace brisel::canvas
