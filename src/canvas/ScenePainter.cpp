#include "canvas/ScenePainter.h"

#include <cmath>
#include <limits>

#include "canvas/Handles.h"
#include "canvas/Link.h"
#include "canvas/LinkPainter.h"
#include "canvas/Node.h"
#include "canvas/NodePainter.h"
#include "canvas/Palette.h"
#include "canvas/Scene.h"

namespace brisel::canvas {

using platform::kTwipsPerPixel;
using platform::Point;
using platform::Rect;

namespace {

constexpr double kQuickZoom = 0.25;
constexpr std::size_t kManyLinks = 1000;
constexpr double kGridPixels = 6;  ///< a narrower grid is not painted

constexpr double kFar = 1e9;
constexpr Rect kAllOver{-kFar, -kFar, 2 * kFar, 2 * kFar};

}  // namespace

ScenePainter::ScenePainter(const Scene& scene, Painter& painter, double pixelsPerTwip)
    : m_scene(scene), m_painter(painter) {
  m_detail.pixelsPerTwip = pixelsPerTwip;
  m_detail.ground = palette::fromPlatform(scene.backColor());
  m_detail.quickLines =
      pixelsPerTwip * kTwipsPerPixel < kQuickZoom && scene.links().size() > kManyLinks;
}

void ScenePainter::paintGround(const Rect& area) { m_painter.fillRect(area, m_detail.ground); }

void ScenePainter::paintGrid(const Rect& area) {
  if (m_detail.pixels(kGridStep) < kGridPixels) return;
  const Pen pen{.color = palette::kGrid, .width = 0};
  const auto firstBehind = [](double edge) { return std::ceil(edge / kGridStep) * kGridStep; };
  for (double x = firstBehind(area.left); x <= area.right(); x += kGridStep) {
    const Point line[] = {{x, area.top}, {x, area.bottom()}};
    m_painter.drawPolyline(line, pen);
  }
  for (double y = firstBehind(area.top); y <= area.bottom(); y += kGridStep) {
    const Point line[] = {{area.left, y}, {area.right(), y}};
    m_painter.drawPolyline(line, pen);
  }
}

void ScenePainter::paintItems(const Rect& area) {
  std::vector<const Node*> nodes;
  std::vector<const Link*> links;
  // What is near the area may reach into it with its handles.
  m_scene.itemsIn(area.grownBy(m_detail.twips(kHandlePixels)), nodes, links);
  m_detail.showSelection = true;
  paintItems(area, nodes, links);
  paintHandles(nodes, links);
}

void ScenePainter::paintItems(const std::vector<const Node*>& nodes,
                              const std::vector<const Link*>& links) {
  m_detail.showSelection = false;
  paintItems(kAllOver, nodes, links);
}

void ScenePainter::paintItems(const Rect& area, const std::vector<const Node*>& nodes,
                              const std::vector<const Link*>& links) {
  NodePainter nodePainter(m_scene, m_painter, m_detail);
  for (const Node* node : nodes) nodePainter.paint(*node, area);
  LinkPainter linkPainter(m_scene, m_painter, m_detail);
  for (const Link* link : links) linkPainter.paintLine(*link);
  for (const Link* link : links) linkPainter.paintName(*link);
  for (const Link* link : links) linkPainter.paintEndTexts(*link);
}

void ScenePainter::paintHandles(const std::vector<const Node*>& nodes,
                                const std::vector<const Link*>& links) {
  for (const Node* node : nodes) {
    if (!node->isSelected()) continue;
    for (const Point handle : handlesOf(node->bounds())) paintHandle(handle);
  }
  for (const Link* link : links) {
    if (!link->isSelected()) continue;
    for (const Point point : link->points()) paintHandle(point);
  }
}

void ScenePainter::paintHandle(Point middle) {
  const double side = m_detail.twips(kHandlePixels);
  const Rect square{middle.x - side / 2, middle.y - side / 2, side, side};
  m_painter.fillRect(square, palette::kHandle);
  m_painter.drawFrame(square, {.color = palette::kSelected, .width = m_detail.twips(1)});
}

}  // namespace brisel::canvas
