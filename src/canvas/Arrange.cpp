#include "canvas/Arrange.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "canvas/LinkBends.h"
#include "canvas/Memory.h"
#include "canvas/Scene.h"
#include "layout/FreePlaces.h"
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

/// Some boxes of a scene, and the lines between them, as the layout knows them.
struct Model {
  explicit Model(std::vector<Ref<Node>> some) : nodes(std::move(some)) {
    std::unordered_map<const Node*, std::size_t> indexOf;
    for (const auto& node : nodes) {
      indexOf.emplace(node.get(), indexOf.size());
      graph.boxes.push_back(node->bounds().size());
    }
    for (const auto& node : nodes) {
      for (const Node::Attached& end : node->attached()) {
        if (end.atSource && indexOf.contains(&end.link->targetNode())) links.emplace_back(end.link);
      }
    }
    std::sort(links.begin(), links.end(),
              [](const auto& a, const auto& b) { return a->order() < b->order(); });
    for (const auto& link : links) {
      graph.edges.push_back(
          {indexOf.at(&link->sourceNode()), indexOf.at(&link->targetNode()), kindOf(*link)});
    }
  }

  std::vector<Ref<Node>> nodes;
  std::vector<Ref<Link>> links;
  layout::Graph graph;
};

std::vector<Ref<Node>> allOf(const Scene& scene) {
  std::vector<Ref<Node>> nodes;
  for (Node& node : scene.nodes()) nodes.emplace_back(&node);
  return nodes;
}

/// More room where lines carry texts: between rows for those of both ends and the name, between
/// boxes for the texts of neighbouring lines.
layout::Spacing spacingFor(const Scene& scene, const std::vector<Ref<Link>>& links) {
  constexpr double kLeastLayerGap = 1500;
  constexpr double kMostNodeGap = 1200;
  layout::Spacing spacing;
  double highest = 0;
  double width = 0;
  double ends = 0;
  bool any = false;
  for (const auto& link : links) {
    any |= !link->text().empty();
    for (const std::string& text : {link->beginText(), link->endText()}) {
      if (text.empty()) continue;
      const platform::Size size = textSize(text, scene.textFont());
      highest = std::max(highest, size.height);
      width += size.width;
      ++ends;
    }
  }
  if (!any && ends == 0) return spacing;
  const double lines = 2 * (kTextGap + highest) + scene.textFont().lineHeight() + 3 * kTextLineGap;
  spacing.layer = std::max(kLeastLayerGap, lines);
  if (ends > 0) spacing.node = std::clamp(width / ends, spacing.node, kMostNodeGap);
  return spacing;
}

layout::Drawing draw(const layout::Graph& graph, const layout::Spacing& spacing,
                     std::string_view code, std::uint64_t seed, const layout::GoOn& goOn) {
  if (code == "%HIERARCHY%") return layout::layered(graph, spacing, goOn);
  if (code == "MATRIX") return layout::matrix(graph, spacing);
  if (code == "RANDOM") return layout::random(graph, spacing, seed);
  if (code == "SPRING") return layout::spring(graph, spacing, goOn);
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

namespace {

/// Puts boxes and lines where they were drawn; gives the keys of the boxes that moved.
std::vector<std::string> apply(const Model& model, const layout::Drawing& drawing, Point shift,
                               bool withBends) {
  std::vector<std::string> moved;
  for (std::size_t i = 0; i < model.nodes.size(); ++i) {
    Node& node = *model.nodes[i];
    if (moveTo(node, drawing.positions[i] + shift)) moved.push_back(node.key());
  }
  for (std::size_t i = 0; i < model.links.size(); ++i) {
    Link& link = *model.links[i];
    // Lines from a box to itself take room in the layout, but go round their corner as ever.
    if (link.isLoop()) continue;
    if (!withBends) {
      link.bends({});
      continue;
    }
    auto line = drawing.lines[i];
    for (Point& point : line) point = point + shift;
    auto bends = bendsFor(link.sourceNode().bounds(), link.targetNode().bounds(), line);
    for (Point& bend : bends) bend = withinReach(wholeTwips(bend));
    link.bends(std::move(bends));
  }
  return moved;
}

/// A picture of the boxes is all that the layout has: it is of no use when they changed meanwhile.
void checkUnchanged(const Scene& scene, std::uint64_t revision) {
  if (scene.geometryRevision() != revision) throw layout::Cancelled();
}

}  // namespace

std::vector<std::string> arrange(Scene& scene, std::string_view code, std::uint64_t seed,
                                 const layout::GoOn& goOn) {
  const std::uint64_t revision = scene.geometryRevision();
  const Model model(allOf(scene));
  const layout::Drawing drawing =
      draw(model.graph, spacingFor(scene, model.links), code, seed, goOn);
  checkUnchanged(scene, revision);
  const Scene::Update update(&scene);
  return apply(model, drawing, shiftOf(drawing), code == "%HIERARCHY%");
}

std::vector<std::string> arrangeSelected(Scene& scene, std::string_view code, std::uint64_t seed,
                                         const layout::GoOn& goOn) {
  const std::uint64_t revision = scene.geometryRevision();
  auto nodes = scene.selection().nodes();
  // What stands further left comes first: where a layout has the choice it keeps that order.
  std::stable_sort(nodes.begin(), nodes.end(), [](const auto& a, const auto& b) {
    return a->bounds().center().x < b->bounds().center().x;
  });
  const Model model(std::move(nodes));
  const layout::Spacing spacing = spacingFor(scene, model.links);
  const layout::Drawing drawing = draw(model.graph, spacing, code, seed, goOn);
  checkUnchanged(scene, revision);

  Rect before;
  Rect drawn;
  std::vector<Rect> moving;
  for (std::size_t i = 0; i < model.nodes.size(); ++i) {
    const Rect box = model.nodes[i]->bounds();
    const Point at = drawing.positions[i];
    moving.push_back({at.x, at.y, box.width, box.height});
    before = before.united(box);
    drawn = drawn.united(moving.back());
  }
  const Point shift = wholeTwips(before.center() - drawn.center());
  for (Rect& rect : moving) rect = rect.movedBy(shift);
  std::vector<Rect> standing;
  for (const Node& node : scene.nodes()) {
    if (!node.isSelected()) standing.push_back(node.bounds());
  }
  const Point clear = layout::clearShift(moving, standing, spacing.node / 2);
  const Scene::Update update(&scene);
  auto moved = apply(model, drawing, shift + clear, code == "%HIERARCHY%");
  for (const auto& node : model.nodes) {
    for (const Node::Attached& end : node->attached()) {
      Link& link = *end.link;
      const Node& other = end.atSource ? link.targetNode() : link.sourceNode();
      if (other.isSelected() || link.bends().empty()) continue;
      auto bends =
          rightAngled(link.sourceNode().bounds(), link.targetNode().bounds(), link.rankOfAll());
      for (Point& bend : bends) bend = wholeTwips(bend);
      link.bends(std::move(bends));
    }
  }
  return moved;
}

void placeAmong(Scene& scene, const std::vector<std::string>& keys) {
  std::unordered_set<const Node*> loose;
  for (const std::string& key : keys) loose.insert(scene.node(key));
  const Model model(allOf(scene));
  std::vector<std::optional<Point>> standing;
  for (const auto& node : model.nodes) {
    standing.emplace_back();
    if (!loose.contains(node.get())) standing.back() = node->bounds().topLeft();
  }
  const auto places =
      layout::placedAmong(model.graph, standing, spacingFor(scene, model.links));
  const Scene::Update update(&scene);
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (!standing[i]) moveTo(*model.nodes[i], places[i]);
  }
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
