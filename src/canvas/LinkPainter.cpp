#include "canvas/LinkPainter.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "canvas/Link.h"
#include "canvas/NodePainter.h"
#include "canvas/Palette.h"
#include "canvas/Scene.h"
#include "layout/Segments.h"
#include "platform/Text.h"

namespace brisel::canvas {

using platform::Arrow;
using platform::Point;
using platform::Rect;

namespace {

/// Lines of others shine through, so that they are seen to go on; the text's own line may run along
/// its words and hardly does.
constexpr Color kGroundAlpha = 0xA0000000;
constexpr Color kGroundOnLineAlpha = 0xF0000000;

}  // namespace

LinkPainter::LinkPainter(const Scene& scene, Painter& painter, const Detail& detail)
    : m_scene(scene), m_painter(painter), m_detail(detail) {}

Color LinkPainter::colorOf(const Link& link) const {
  if (m_detail.showSelection && link.isSelected()) return palette::kSelected;
  return m_detail.quickLines ? palette::kFarLine : palette::kLine;
}

void LinkPainter::paintLine(const Link& link) {
  paintCourse(link.points(), {.beginArrow = link.beginArrow(),
                              .endArrow = link.endArrow(),
                              .dashed = link.dashed(),
                              .color = colorOf(link)});
}

void LinkPainter::paintCourse(const std::vector<Point>& points, const Look& look) {
  const Pen pen{.color = look.color, .dashed = look.dashed, .quick = m_detail.quickLines};
  if (look.dashed) {
    // Lines that end in one trunk share it from the tip on: so their dashes fall on each other.
    m_painter.drawPolyline(std::vector(points.rbegin(), points.rend()), pen);
  } else {
    m_painter.drawPolyline(points, pen);
  }
  if (m_detail.pixels(kArrowLength) < Detail::kArrowPixels) return;
  if (look.beginArrow != 0) paintArrow(look.beginArrow, beginOf(points), look.color);
  if (look.endArrow != 0) paintArrow(look.endArrow, endOf(points), look.color);
}

void LinkPainter::paintArrow(int code, const LineEnd& end, Color color) {
  const auto [tip, from] = end;
  const double length = std::hypot(from.x - tip.x, from.y - tip.y);
  const Point along = (from - tip) * (1 / length);
  const Point across{-along.y, along.x};
  const Pen pen{.color = color};
  const Point base = tip + along * kArrowLength;
  const Point left = base + across * kArrowHalfWidth;
  const Point right = base - across * kArrowHalfWidth;
  switch (static_cast<Arrow>(code)) {
    case Arrow::open:
      m_painter.drawPolyline(std::array{left, tip, right}, pen);
      return;
    case Arrow::triangle:
      m_painter.drawPolygon(std::array{left, tip, right}, m_detail.ground, pen);
      return;
    case Arrow::filledDiamond:
    case Arrow::diamond: {
      const Point middle = tip + along * (kDiamondLength / 2);
      const std::array corners{tip, middle + across * kDiamondHalfWidth,
                               tip + along * kDiamondLength, middle - across * kDiamondHalfWidth};
      const bool filled = static_cast<Arrow>(code) == Arrow::filledDiamond;
      m_painter.drawPolygon(corners, filled ? color : m_detail.ground, pen);
      return;
    }
    case Arrow::none:
      return;
  }
}

void LinkPainter::paintName(const Link& link) {
  if (!m_detail.readable(m_scene.textFont().height())) return;
  paintText(link, link.itemText(), link.labelArea(), true);
}

void LinkPainter::paintEndTexts(const Link& link) {
  if (!m_detail.readable(m_scene.textFont().height())) return;
  paintText(link, link.beginText(), link.beginTextArea(), false);
  paintText(link, link.endText(), link.endTextArea(), false);
}

void LinkPainter::paintText(const Link& link, std::string_view text, const Rect& area,
                            bool centered) {
  if (area.isEmpty()) return;
  const bool isOnLine = layout::runsThrough(link.points(), area);
  m_painter.fillRect(
      area, (m_detail.ground & 0x00FFFFFFU) | (isOnLine ? kGroundOnLineAlpha : kGroundAlpha));
  const Font& font = m_scene.textFont();
  double top = area.top - font.leading() / 2;
  for (const std::string_view line : linesOf(text)) {
    const double width = platform::columnsOf(line) * font.columnWidth();
    const double left = centered ? area.left + (area.width - width) / 2 : area.left;
    m_painter.drawText({left, baselineOf(top, font)}, line,
                       {.size = font.height(), .color = palette::kText});
    top += font.lineHeight();
  }
}

}  // namespace brisel::canvas
