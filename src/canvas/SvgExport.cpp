#include "canvas/SvgExport.h"

#include <algorithm>
#include <vector>

#include "canvas/Link.h"
#include "canvas/Node.h"
#include "canvas/Palette.h"
#include "canvas/Scene.h"
#include "canvas/ScenePainter.h"
#include "canvas/Selection.h"
#include "canvas/SvgPainter.h"

namespace brisel::canvas {

using platform::Rect;

namespace {

constexpr double kMargin = 300;

std::string toSvg(const Scene& scene, const Rect& area, const std::vector<const Node*>& nodes,
                  const std::vector<const Link*>& links) {
  SvgPainter svg(area);
  ScenePainter painter(scene, svg, 1 / platform::kTwipsPerPixel);
  painter.paintGround(svg.page());
  painter.paintItems(nodes, links);
  return svg.finish();
}

template <class T>
std::vector<const T*> inOrder(const std::vector<platform::Ref<T>>& selected) {
  std::vector<const T*> items;
  for (const auto& item : selected) items.push_back(item.get());
  std::sort(items.begin(), items.end(),
            [](const T* a, const T* b) { return a->order() < b->order(); });
  return items;
}

}  // namespace

Rect pictureArea(const Scene& scene) { return scene.extent().grownBy(kMargin); }

std::string toSvg(const Scene& scene) {
  std::vector<const Node*> nodes;
  std::vector<const Link*> links;
  for (const Node& node : scene.nodes()) nodes.push_back(&node);
  for (const Link& link : scene.links()) links.push_back(&link);
  return toSvg(scene, pictureArea(scene), nodes, links);
}

std::string toSvg(const Scene& scene, const Selection& selection) {
  if (selection.empty()) return toSvg(scene);
  const auto nodes = inOrder(selection.nodes());
  const auto links = inOrder(selection.links());
  Rect area;
  for (const Node* node : nodes) area = area.united(node->extent());
  for (const Link* link : links) area = area.united(link->extent());
  return toSvg(scene, area.grownBy(kMargin), nodes, links);
}

}  // namespace brisel::canvas
