#include "canvas/Arrange.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>

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
/// Room for the arrow or diamond at the end of a line.
constexpr double kStubLength = 300;

layout::EdgeKind kindOf(const Link& link) {
  if (link.endArrow() == static_cast<int>(Arrow::triangle)) {
    return link.dashed() ? layout::EdgeKind::realization : layout::EdgeKind::generalization;
  }
  const bool diamond = link.beginArrow() == static_cast<int>(Arrow::diamond) ||
                       link.beginArrow() == static_cast<int>(Arrow::filledDiamond);
  return diamond ? layout::EdgeKind::aggregation : layout::EdgeKind::association;
}

/// The boxes of a scene and its lines as the layout knows them; lines from a box to itself stay
/// with their box and are left out.
struct Model {
  explicit Model(const Scene& scene) {
    std::unordered_map<const Node*, std::size_t> indexOf;
    for (Node& node : scene.nodes()) {
      indexOf.emplace(&node, nodes.size());
      nodes.emplace_back(&node);
      graph.boxes.push_back(node.bounds().size());
    }
    for (Link& link : scene.links()) {
      if (link.isLoop()) continue;
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

/// A bend straight above or below an end, on the way to the next point.
Point stub(Point end, Point next) {
  return {end.x, end.y + std::clamp((next.y - end.y) / 3, -kStubLength, kStubLength)};
}

/// The bends with which a line meets its boxes where the layout drew it to: other lines, or other
/// boxes, lie where it would run by itself.
std::vector<Point> bendsFor(const Link& link, const std::vector<Point>& line) {
  const auto near = [](Point a, Point b) {
    return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y)) < platform::kTwipsPerPixel;
  };
  const Point first = line.front();
  const Point last = line.back();
  std::vector<Point> bends(line.begin() + 1, line.end() - 1);
  const auto drawn = route(link.sourceNode().bounds(), link.targetNode().bounds(), bends, {});
  const bool keepsFirst = near(drawn.front(), first);
  const bool keepsLast = near(drawn.back(), last);
  if (keepsFirst && keepsLast) return bends;
  if (bends.empty() && first.x == last.x) return {(first + last) * 0.5};
  if (bends.empty()) return {stub(first, last), stub(last, first)};
  if (!keepsFirst) bends.insert(bends.begin(), stub(first, line[1]));
  if (!keepsLast) bends.push_back(stub(last, line[line.size() - 2]));
  return bends;
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
    if (code != "%HIERARCHY%") {
      model.links[i]->bends({});
      continue;
    }
    auto line = drawing.lines[i];
    for (Point& point : line) point = point + shift;
    auto bends = bendsFor(*model.links[i], line);
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
  for (const auto& node : nodes) {
    const Rect box = node->bounds();
    Point corner = box.topLeft();
    if (code == "TADJST") corner.y = all.top;
    if (code == "BADJST") corner.y = all.bottom() - box.height;
    if (code == "LADJST") corner.x = all.left;
    if (code == "RADJST") corner.x = all.right() - box.width;
    if (moveTo(*node, corner)) moved.push_back(node->key());
  }
  return moved;
}

}  // namespace brisel::canvas
