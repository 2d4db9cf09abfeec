#include "canvas/Arrange.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include "canvas/LinkBends.h"
#include "canvas/Memory.h"
#include "canvas/Rerouting.h"
#include "canvas/Scene.h"
#include "layout/FreePlaces.h"
#include "layout/Occupied.h"
#include "layout/PartLayout.h"
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
/// How much of the time of a layout of some boxes goes into the drawing of boxes, the rest into
/// lines.
constexpr double kDrawingShare = 0.5;

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

/// The box with its lines to itself, in whole twips.
Rect outlineOf(const Node& node) {
  Rect outline = node.bounds();
  for (const Node::Attached& end : node.attached()) {
    if (!end.atSource || !end.link->isLoop()) continue;
    for (const Point p : end.link->points()) {
      outline = layout::Occupied::around(outline, {p.x, p.y, 0, 0});
    }
  }
  const Point low{std::floor(outline.left), std::floor(outline.top)};
  return {low.x, low.y, std::ceil(outline.right() - low.x), std::ceil(outline.bottom() - low.y)};
}

layout::Outlines outlinesOf(const std::vector<Ref<Node>>& nodes) {
  layout::Outlines outlines;
  for (const auto& node : nodes) {
    outlines.push_back(outlineOf(*node).movedBy(Point() - node->bounds().topLeft()));
  }
  return outlines;
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
  spacing.alone = spacing.node;
  const double lines = 2 * (kTextGap + highest) + scene.textFont().lineHeight() + 3 * kTextHeadGap;
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

/// The same of a whole diagram, where styles other than the hierarchy know nothing of lines from a
/// box to itself: they are handed the outlines.
layout::Drawing drawAll(const Model& model, const layout::Outlines& outlines,
                        const layout::Spacing& spacing, std::string_view code, std::uint64_t seed,
                        const layout::GoOn& goOn) {
  if (code == "%HIERARCHY%") return draw(model.graph, spacing, code, seed, goOn);
  layout::Graph graph = model.graph;
  for (std::size_t i = 0; i < outlines.size(); ++i) graph.boxes[i] = outlines[i].size();
  layout::Drawing drawing = draw(graph, spacing, code, seed, goOn);
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    drawing.positions[i] = drawing.positions[i] - outlines[i].topLeft();
  }
  return drawing;
}

/// What brings the upper left corner of everything drawn to where diagrams begin.
Point shiftOf(const layout::Outlines& outlines, const layout::Drawing& drawing) {
  if (drawing.positions.empty()) return {};
  Point low = drawing.positions.front();
  const auto take = [&low](Point p) { low = {std::min(low.x, p.x), std::min(low.y, p.y)}; };
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    take(drawing.positions[i] + outlines[i].topLeft());
  }
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

/// Gives the keys of the boxes that moved.
std::vector<std::string> applyPlaces(Scene& scene, const std::vector<Ref<Node>>& nodes,
                                     const Rerouting::Places& places, const Rerouting& lines) {
  const Scene::Update update(&scene);
  std::vector<std::string> moved;
  for (const auto& node : nodes) {
    const auto place = places.find(node.get());
    if (place == places.end()) continue;
    if (moveTo(*node, place->second.topLeft())) moved.push_back(node->key());
  }
  lines.apply();
  return moved;
}

}  // namespace

std::vector<std::string> arrange(Scene& scene, std::string_view code, std::uint64_t seed,
                                 const layout::GoOn& goOn) {
  const std::uint64_t revision = scene.geometryRevision();
  const Model model(allOf(scene));
  const layout::Outlines outlines = outlinesOf(model.nodes);
  const layout::Drawing drawing =
      drawAll(model, outlines, spacingFor(scene, model.links), code, seed, goOn);
  checkUnchanged(scene, revision);
  const Scene::Update update(&scene);
  return apply(model, drawing, shiftOf(outlines, drawing), code == "%HIERARCHY%");
}

namespace {

/// The diagram's own corner: where diagrams begin, or where this one does.
Point cornerOf(const std::vector<Rect>& boxes) {
  Point corner = kCorner;
  for (const Rect& box : boxes) {
    corner = {std::min(corner.x, box.left), std::min(corner.y, box.top)};
  }
  return corner;
}

/// Lines may use a part of the margin between the corner and the canvas's border, at 0.
Point lineCornerOf(Point corner) {
  const Point margin = corner - kCorner * 0.75;
  return {std::max(margin.x, std::min(0.0, corner.x)), std::max(margin.y, std::min(0.0, corner.y))};
}

layout::Drawing drawPart(const layout::Part& part, std::string_view code, std::uint64_t seed,
                         const layout::GoOn& goOn) {
  // Groups are drawn one after another, each of them from its own beginning to its end.
  double share = 0;
  const layout::GoOn onward = [&](double ofGroup) {
    share = std::max(share, kDrawingShare * ofGroup);
    return !goOn || goOn(share);
  };
  const layout::DrawGroup drawGroup = [&](const layout::Graph& graph) {
    return draw(graph, part.spacing, code, seed, onward);
  };
  if (code == "MATRIX") return layout::drawnInRows(part);
  if (code == "RANDOM") return layout::drawnAsOne(part, drawGroup);
  return layout::drawnInGroups(
      part, code == "SPRING" ? layout::Turning::mirrors : layout::Turning::keepsOrder, drawGroup);
}

layout::Part partOf(const Scene& scene, const Model& model) {
  layout::Part part;
  part.graph = model.graph;
  part.spacing = spacingFor(scene, model.links);
  part.outlines = outlinesOf(model.nodes);
  for (const auto& node : model.nodes) {
    part.places.push_back(node->bounds().topLeft());
    part.neighbours.emplace_back();
    for (const Node::Attached& end : node->attached()) {
      const Node& other = end.atSource ? end.link->targetNode() : end.link->sourceNode();
      if (other.isSelected()) continue;
      part.neighbours.back().push_back({other.bounds(), kindOf(*end.link), end.atSource});
    }
  }
  std::vector<Rect> all;
  for (const Node& node : scene.nodes()) {
    all.push_back(node.bounds());
    if (!node.isSelected()) part.standing.push_back(outlineOf(node));
  }
  part.corner = cornerOf(all);
  return part;
}

}  // namespace

std::vector<std::string> arrangeSelected(Scene& scene, std::string_view code, std::uint64_t seed,
                                         const layout::GoOn& goOn) {
  const std::uint64_t revision = scene.geometryRevision();
  const Model model(scene.selection().nodes());
  const layout::Part part = partOf(scene, model);
  const layout::Drawing drawing = drawPart(part, code, seed, goOn);
  checkUnchanged(scene, revision);
  Rerouting::Places places;
  for (std::size_t i = 0; i < model.nodes.size(); ++i) {
    const Point at = withinReach(wholeTwips(drawing.positions[i]));
    const Rect box = model.nodes[i]->bounds();
    places.emplace(model.nodes[i].get(), Rect{at.x, at.y, box.width, box.height});
  }
  Rerouting lines(scene, places, lineCornerOf(part.corner), Rerouting::Bends::own);
  if (code == "%HIERARCHY%") {
    for (std::size_t i = 0; i < model.links.size(); ++i) {
      if (!model.links[i]->isLoop()) lines.propose(*model.links[i], drawing.lines[i]);
    }
  }
  lines.plan([&](double share) {
    const bool onward = !goOn || goOn(kDrawingShare + (1 - kDrawingShare) * share);
    checkUnchanged(scene, revision);
    return onward;
  });
  return applyPlaces(scene, model.nodes, places, lines);
}

void placeAmong(Scene& scene, const std::vector<std::string>& keys) {
  std::unordered_set<const Node*> loose;
  for (const std::string& key : keys) loose.insert(scene.node(key));
  const Model model(allOf(scene));
  std::vector<std::optional<Point>> standing;
  std::vector<Rect> rects;
  for (const auto& node : model.nodes) {
    standing.emplace_back();
    if (loose.contains(node.get())) continue;
    rects.push_back(node->bounds());
    standing.back() = rects.back().topLeft();
  }
  const Point corner = cornerOf(rects);
  const auto placed = layout::placedAmong(model.graph, standing, spacingFor(scene, model.links),
                                          corner, outlinesOf(model.nodes));
  Rerouting::Places places;
  for (std::size_t i = 0; i < placed.size(); ++i) {
    if (standing[i]) continue;
    const Point at = withinReach(wholeTwips(placed[i]));
    const Rect box = model.nodes[i]->bounds();
    places.emplace(model.nodes[i].get(), Rect{at.x, at.y, box.width, box.height});
  }
  Rerouting lines(scene, places, lineCornerOf(corner), Rerouting::Bends::stored);
  lines.plan();
  applyPlaces(scene, model.nodes, places, lines);
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
