#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "layout/Components.h"
#include "layout/CrossingReduction.h"
#include "layout/CycleRemoval.h"
#include "layout/GridPlacement.h"
#include "layout/Layering.h"
#include "layout/LineCrossings.h"
#include "layout/LineRouting.h"
#include "layout/LongLines.h"
#include "layout/Packing.h"
#include "layout/Progress.h"
#include "layout/RowPlacement.h"
#include "layout/Sifting.h"
#include "layout/StraightLines.h"
#include "layout/WideLayers.h"

namespace brisel::layout {
namespace {

/// Components of so few nodes are drawn in several ways.
constexpr int kFew = 500;
/// A drawing so many times wider or narrower than wanted is drawn otherwise if that is possible.
constexpr double kOffShape = 3;
/// The shape of so small a component matters little to the whole.
constexpr int kShapeless = 20;
constexpr std::int64_t kSiftingWork = 800'000'000;

/// The room that one loop needs beside its box.
double loopRoom(const Spacing& spacing) { return spacing.node / 3; }

/// One way to draw a component, from (0, 0) on.
struct Sketch {
  Component component;
  std::vector<int> layer;
  std::vector<double> x;  ///< middle of every node
  Routing routing;
  double width = 0;
  bool isNarrow = false;  ///< far from the wanted shape, either way
  std::int64_t crossings = 0;
  double length = 0;

  [[nodiscard]] bool isBetterThan(const Sketch& other) const {
    return std::tuple(isNarrow, crossings, length) <
           std::tuple(other.isNarrow, other.crossings, other.length);
  }
};

Sketch sketch(Component component, const LayeredGraph& graph, const Spacing& spacing) {
  std::vector<double> width = component.width;
  width.resize(graph.layer.size(), 0);
  Sketch result;
  result.x = placeInRows(graph, width, {spacing.node, spacing.node / 2});
  result.routing = routeLines(component, graph, result.x, spacing);
  result.layer = graph.layer;
  for (int n = 0; n < component.nodes(); ++n) {
    result.width = std::max(result.width, result.x[n] + component.width[n] / 2);
  }
  for (const Polyline& line : result.routing.lines) {
    for (const Point p : line) result.width = std::max(result.width, p.x);
  }
  const double aspect = result.width / result.routing.bottom / spacing.aspect;
  result.isNarrow =
      component.nodes() > kShapeless && (aspect > kOffShape || aspect < 1 / kOffShape);
  result.component = std::move(component);
  return result;
}

/// Layers that keep lines short, split where they are too wide, ordered by sweeps.
Sketch sketchBySweeps(Component component, const Spacing& spacing) {
  removeCycles(component);
  std::vector<int> layer = layersOf(component);
  splitWideLayers(component, spacing, layer);
  LayeredGraph graph = withBends(component, layer);
  reduceCrossings(graph);
  return sketch(std::move(component), graph, spacing);
}

/// Layers and a first order from a placement in a grid.
Sketch sketchByPlacement(Component component, const Spacing& spacing, std::uint64_t seed,
                         const Progress& progress) {
  const double work = component.nodes();
  const Grid grid = placeOnGrid(component, spacing, seed);
  progress.step(0.2 * work);
  const std::vector<int> layer = layersFrom(component, grid);
  std::vector<double> place;
  for (int n = 0; n < component.nodes(); ++n) place.push_back(grid.of(n).column);
  turnDown(component, layer);
  LayeredGraph graph = withBends(component, layer);
  progress.step(0.3 * work);
  orderRows(component, place, graph);
  progress.step(0.5 * work);
  siftRows(graph, kSiftingWork);
  progress.step(0.7 * work);
  return sketch(std::move(component), graph, spacing);
}

/// The best of several sketches: of small components more, where a person sees each crossing.
Sketch bestSketch(const Component& component, const Spacing& spacing, bool seesEach,
                  const Progress& progress) {
  const int nodes = component.nodes();
  const int arcs = count(component.arcs);
  const bool isTree = arcs == nodes - 1;
  const bool isSmall = seesEach && nodes <= kFew && arcs <= 3 * kFew;
  const int most = nodes < kShapeless ? 3 : 12;
  const int placements = isSmall ? std::clamp(2000 / std::max(nodes, arcs), 3, most) : 1;
  std::vector<Sketch> best;
  const auto offer = [&](Sketch next) {
    next.crossings = lineCrossings(next.routing.lines);
    next.length = lineLength(next.routing.lines);
    if (best.empty()) {
      best.push_back(std::move(next));
    } else if (next.isBetterThan(best[0])) {
      best[0] = std::move(next);
    }
  };
  if (isSmall || isTree) offer(sketchBySweeps(component, spacing));
  Component acyclic = component;
  breakInheritanceCycles(acyclic);
  for (int k = 0; k < placements; ++k) {
    if (!best.empty() && !best[0].isNarrow && best[0].crossings == 0) break;
    Sketch next = sketchByPlacement(acyclic, spacing, static_cast<std::uint64_t>(k) + 1, progress);
    if (placements == 1 && best.empty()) return next;
    offer(std::move(next));
  }
  return std::move(best[0]);
}

/// Puts a sketch into the drawing and gives its size.
Size takeOver(const Graph& input, Sketch& sketch, Drawing& drawing) {
  const Component& component = sketch.component;
  for (int n = 0; n < component.nodes(); ++n) {
    const double left = sketch.x[n] - component.width[n] / 2;
    drawing.positions[component.boxes[n]] = {left, sketch.routing.rowTop[sketch.layer[n]]};
  }
  for (int i = 0; i < count(component.arcs); ++i) {
    const Arc& arc = component.arcs[i];
    auto& line = sketch.routing.lines[i];
    if (input.edges[arc.edge].source != static_cast<std::size_t>(component.boxes[arc.from])) {
      std::reverse(line.begin(), line.end());
    }
    drawing.lines[arc.edge] = std::move(line);
  }
  return {sketch.width, sketch.routing.bottom};
}

void moveComponent(const Component& component, Point by, Drawing& drawing) {
  for (const int box : component.boxes) drawing.positions[box] = drawing.positions[box] + by;
  for (const Arc& arc : component.arcs) {
    for (Point& p : drawing.lines[arc.edge]) p = p + by;
  }
}

/// Puts the boxes without lines in rows beside or below the rest, whichever wastes less.
void placeAlone(const std::vector<int>& alone, std::vector<Size> sizes, Size rest,
                const Spacing& spacing, Drawing& drawing) {
  if (alone.empty()) return;
  double area = 0;
  for (const Size& size : sizes) area += (size.width + spacing.node) * (size.height + spacing.node);
  const bool any = rest.height > 0;
  struct Try {
    double width;
    Point at;
  };
  std::vector<Try> tries;
  if (any) {
    tries.push_back({rest.width, {0, rest.height + spacing.layer}});
    for (const double share : {1.0, 1.15, 1.3}) {
      tries.push_back({share * area / rest.height, {rest.width + spacing.layer, 0}});
    }
  } else {
    for (double share = 0.7; share < 1.5; share += 0.05) {
      tries.push_back({share * std::sqrt(area * spacing.aspect), {0, 0}});
    }
  }
  double least = INFINITY;
  for (const Try& t : tries) {
    const std::vector<Point> places = shelved(sizes, spacing.node, t.width);
    const Size block = extent(sizes, places);
    const Size whole{std::max(rest.width, t.at.x + block.width),
                     std::max(rest.height, t.at.y + block.height)};
    if (waste(whole, spacing.aspect) >= least) continue;
    least = waste(whole, spacing.aspect);
    for (std::size_t i = 0; i < alone.size(); ++i) drawing.positions[alone[i]] = places[i] + t.at;
  }
}

void drawLoops(const Graph& graph, double room, Drawing& drawing) {
  std::vector<int> seen(graph.boxes.size(), 0);
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    const std::size_t box = graph.edges[i].source;
    if (box != graph.edges[i].target) continue;
    const Point at = drawing.positions[box];
    const Rect rect{at.x, at.y, graph.boxes[box].width, graph.boxes[box].height};
    drawing.lines[i] = loop(rect, seen[box]++, room);
  }
}

}  // namespace

Drawing layered(const Graph& graph, const Spacing& wanted, const GoOn& goOn) {
  const Graph input = checked(graph);
  const Spacing spacing = checked(wanted);
  const double room = loopRoom(spacing);
  Drawing drawing;
  drawing.positions.resize(input.boxes.size());
  drawing.lines.resize(input.edges.size());
  Parts parts = partsOf(input, room);

  std::vector<Size> sizes;
  Progress progress(goOn, static_cast<double>(input.boxes.size()));
  for (const Component& c : parts.components) {
    progress.step();
    Sketch best = bestSketch(c, spacing, count(input.boxes) <= 2 * kFew, progress);
    sizes.push_back(takeOver(input, best, drawing));
    progress.done(c.nodes());
  }
  const std::vector<Point> places = packed(sizes, spacing.layer, spacing.aspect);
  for (std::size_t i = 0; i < places.size(); ++i) {
    moveComponent(parts.components[i], places[i], drawing);
  }

  std::vector<Size> alone;
  for (const int box : parts.alone) alone.push_back(input.boxes[box]);
  for (const Edge& edge : input.edges) {
    if (edge.source != edge.target) continue;
    const auto at = std::lower_bound(parts.alone.begin(), parts.alone.end(), edge.source);
    if (at == parts.alone.end() || *at != static_cast<int>(edge.source)) continue;
    alone[static_cast<std::size_t>(at - parts.alone.begin())].width += room;
  }
  placeAlone(parts.alone, alone, extent(sizes, places), spacing, drawing);
  drawLoops(input, room, drawing);
  return drawing;
}

}  // namespace brisel::layout
