#include "canvas/Arrange.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

#include "canvas/LinkBends.h"
#include "canvas/Memory.h"
#include "canvas/Scene.h"
#include "layout/Layout.h"
#include "platform/Error.h"

namespace brisel::canvas {

using platform::Arrow;
using platform::Error;
using platform::ErrorNumber;
using platform::Point;
using platform::Rect;
using platform::Ref;

namespace {

/// Between the corner of the canvas and a diagram that was laid out.
constexpr Point kCorner{300, 300};

layout::EdgeKind kindOf(const Link& link) {
  if (link.endArrow() == static_cast<int>(Arrow::triangle)) {
    return link.dashed() ? layout::EdgeKind::realization : layout::EdgeKind::generalization;
  }
  const bool diamond = link.beginArrow() == static_cast<int>(Arrow::diamond) ||
                       link.beginArrow() == static_cast<int>(Arrow::filledDiamond);
  return diamond ? layout::EdgeKind::aggregation : layout::EdgeKind::association;
}

/// The boxes of a scene and its lines as the layout knows them.
struct Model {
  explicit Model(const Scene& scene) {
    std::unordered_map<const Node*, std::size_t> indexOf;
    for (Node& node : scene.nodes()) {
      indexOf.emplace(&node, nodes.size());
      nodes.emplace_back(&node);
      graph.boxes.push_back(node.bounds().size());
    }
    for (Link& link : scene.links()) {
      links.emplace_back(&link);
      graph.edges.push_back(
          {indexOf.at(&link.sourceNode()), indexOf.at(&link.targetNode()), kindOf(link)});
    }
  }

  std::vector<Ref<Node>> nodes;
  std::vector<Ref<Link>> links;
  layout::Graph graph;
};

/// More room between rows where lines carry texts.
layout::Spacing spacingFor(const std::vector<Ref<Link>>& links) {
  constexpr double kLayerGapWithTexts = 1500;
  layout::Spacing spacing;
  const auto hasText = [](const Ref<Link>& link) {
    return !(link->text().empty() && link->beginText().empty() && link->endText().empty());
  };
  if (std::any_of(links.begin(), links.end(), hasText)) spacing.layer = kLayerGapWithTexts;
  return spacing;
}

layout::Drawing draw(const layout::Graph& graph, const layout::Spacing& spacing,
                     std::string_view code, std::uint64_t seed) {
  if (code == "%HIERARCHY%") return layout::layered(graph, spacing);
  if (code == "MATRIX") return layout::matrix(graph, spacing);
  if (code == "RANDOM") return layout::random(graph, spacing, seed);
  if (code == "SPRING") return layout::spring(graph, spacing);
  throw Error(ErrorNumber::invalidCall, "Unknown layout: " + std::string(code));
}

/// What brings the upper left corner of everything drawn to where diagrams begin.
Point shiftOf(const layout::Drawing& drawing) {
  if (drawing.positions.empty()) return {};
  Point low = drawing.positions.front();
  const auto take = [&low](Point p) { low = {std::min(low.x, p.x), std::min(low.y, p.y)}; };
  for (const Point p : drawing.positions) take(p);
  for (const auto& line : drawing.lines) {
    for (const Point p : line) take(p);
  }
  return kCorner - low;
}

/// Moves the box without giving up its fitting to the text; true when it moved.
bool moveTo(Node& node, Point corner) {
  const Rect before = node.bounds();
  const Point whole = withinReach(wholeTwips(corner));
  node.bounds({whole.x, whole.y, before.width, before.height});
  return node.bounds() != before;
}

}  // namespace

std::vector<std::string> arrange(Scene& scene, std::string_view code, std::uint64_t seed) {
  const Model model(scene);
  const layout::Drawing drawing = draw(model.graph, spacingFor(model.links), code, seed);
  const Point shift = shiftOf(drawing);
  const Scene::Update update(&scene);
  std::vector<std::string> moved;
  for (std::size_t i = 0; i < model.nodes.size(); ++i) {
    Node& node = *model.nodes[i];
    if (moveTo(node, drawing.positions[i] + shift)) moved.push_back(node.key());
  }
  for (std::size_t i = 0; i < model.links.size(); ++i) {
    // Lines from a box to itself take room in the layout, but go round their corner as ever.
    if (model.links[i]->isLoop()) continue;
    if (code != "%HIERARCHY%") {
      model.links[i]->bends({});
      continue;
    }
    auto line = drawing.lines[i];
    for (Point& point : line) point = point + shift;
    const Link& link = *model.links[i];
    auto bends = bendsFor(link.sourceNode().bounds(), link.targetNode().bounds(), line);
    for (Point& bend : bends) bend = withinReach(wholeTwips(bend));
    model.links[i]->bends(std::move(bends));
  }
  return moved;
}

bool isAlignment(std::string_view code) {
  return code == "TADJST" || code == "BADJST" || code == "LADJST" || code == "RADJST";
}

std::vector<std::string> align(Scene& scene, std::string_view code) {
  std::vector<std::string> moved;
  const auto nodes = scene.selection().nodes();
  if (nodes.size() < 2) return moved;
  Rect all = nodes.front()->bounds();
  for (const auto& node : nodes) all = all.united(node->bounds());
  const Scene::Update update(&scene);
  FollowingLines lines(nodes, FollowingLines::Between::follow);
  for (const auto& node : nodes) {
    const Rect box = node->bounds();
    Point corner = box.topLeft();
    if (code == "TADJST") corner.y = all.top;
    if (code == "BADJST") corner.y = all.bottom() - box.height;
    if (code == "LADJST") corner.x = all.left;
    if (code == "RADJST") corner.x = all.right() - box.width;
    if (moveTo(*node, corner)) moved.push_back(node->key());
  }
  lines.follow();
  return moved;
}

}  // namespace brisel::canvas
