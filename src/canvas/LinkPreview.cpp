#include "canvas/LinkPreview.h"

#include <algorithm>
#include <array>
#include <exception>

#include "canvas/DiagramControl.h"
#include "canvas/LinkPainter.h"
#include "canvas/Palette.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;
using platform::Ref;

namespace {

constexpr double kHighlightPixels = 3;  ///< how far the highlight reaches beyond its box
constexpr double kHighlightWidth = 2;   ///< in pixels, of its frame

}  // namespace

std::string refusalOf(const DiagramControl& control, std::string_view link, const Node& source,
                      const Node& target) {
  try {
    return control.refusal(link, source, target);
  } catch (const std::exception& failure) {
    const std::string_view words = failure.what();
    return words.empty() ? "This line cannot be drawn" : std::string(words);
  }
}

LinkPreview::LinkPreview(DiagramControl& control)
    : m_control(control),
      m_beginArrow(control.linkBeginArrow()),
      m_endArrow(control.linkEndArrow()) {}

LinkPreview::LinkPreview(DiagramControl& control, const Link& link)
    : m_control(control),
      m_link(&link),
      m_bends(link.bends()),
      m_beginArrow(link.beginArrow()),
      m_endArrow(link.endArrow()),
      m_dashed(link.dashed()) {}

Rank LinkPreview::rankBetween(const Node& source, const Node& target) const {
  std::size_t others = 0;
  for (const Node::Attached& end : source.attached()) {
    const Link& link = *end.link;
    const Node& other = end.atSource ? link.targetNode() : link.sourceNode();
    // A line to its own box stands there twice.
    const bool counts = &other == &target && &link != m_link && link.bends().empty();
    if (counts && (!link.isLoop() || end.atSource)) ++others;
  }
  return {others, others + 1, source.order() > target.order()};
}

void LinkPreview::showBetween(const Node& source, const Node& target, const Node& highlighted) {
  const Rank rank = m_bends.empty() ? rankBetween(source, target) : Rank{};
  auto points = &source == &target && m_bends.empty()
                    ? loop(source.bounds(), rank)
                    : route(source.bounds(), target.bounds(), m_bends, rank);
  show(std::move(points), highlighted.bounds(), false);
}

void LinkPreview::showLoose(const Node& fixed, bool fixedIsSource, Point pointer,
                            const Node* refused) {
  const Rect loose{pointer.x, pointer.y, 0, 0};
  auto points = fixedIsSource ? route(fixed.bounds(), loose, m_bends, {})
                              : route(loose, fixed.bounds(), m_bends, {});
  show(std::move(points), refused ? refused->bounds() : Rect{}, refused != nullptr);
}

void LinkPreview::show(std::vector<Point> points, const Rect& box, bool refused) {
  const Scene::Update update(&m_control.scene());
  hide();
  m_points = std::move(points);
  m_box = box;
  m_refused = refused;
  m_control.scene().damageOverlay(extent());
}

void LinkPreview::hide() {
  if (m_points.empty()) return;
  const Rect shown = extent();
  m_points.clear();
  m_box = {};
  m_control.scene().damageOverlay(shown);
}

Rect LinkPreview::extent() const {
  Point low = m_points.front();
  Point high = low;
  for (const Point p : m_points) {
    low = {std::min(low.x, p.x), std::min(low.y, p.y)};
    high = {std::max(high.x, p.x), std::max(high.y, p.y)};
  }
  const Rect line = Rect{low.x, low.y, high.x - low.x, high.y - low.y}.grownBy(kDiamondLength);
  return m_box.isEmpty() ? line
                         : line.united(m_box.grownBy(
                               m_control.viewport().toTwips(kHighlightPixels + kHighlightWidth)));
}

void LinkPreview::paint(Painter& painter, double scale) const {
  if (m_points.empty()) return;
  const Scene& scene = m_control.scene();
  const Color color = m_refused ? palette::kRefused : palette::kSelected;
  if (!m_box.isEmpty()) {
    const Rect frame = m_box.grownBy(kHighlightPixels / scale);
    painter.fillRect(frame, m_refused ? palette::kRefusedFill : palette::kAllowedFill);
    const std::array corners{frame.topLeft(), Point{frame.right(), frame.top},
                             Point{frame.right(), frame.bottom()},
                             Point{frame.left, frame.bottom()}, frame.topLeft()};
    painter.drawPolyline(corners,
                         {.color = color, .width = kHighlightWidth / scale, .dashed = m_refused});
  }
  Detail detail;
  detail.pixelsPerTwip = scale;
  detail.ground = palette::fromPlatform(scene.backColor());
  LinkPainter(scene, painter, detail)
      .paintCourse(m_points, {.beginArrow = m_beginArrow,
                              .endArrow = m_endArrow,
                              .dashed = m_dashed || m_refused,
                              .color = color});
}

}  // namespace brisel::canvas
