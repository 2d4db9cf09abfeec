#include <algorithm>
#include <cmath>
#include <utility>

#include "layout/Components.h"
#include "layout/Packing.h"
#include "layout/Progress.h"
#include "layout/Sketch.h"
#include "layout/StraightLines.h"

namespace brisel::layout {
namespace {

/// Up to so many boxes a person sees each crossing.
constexpr int kSeen = 999;

/// The room that each loop needs beside its box, besides the gap to the next one.
double loopRoom(const Spacing& spacing) { return 0.6 * spacing.node; }

/// Puts a sketch into the drawing and gives its size.
Size takeOver(const Graph& input, Sketch sketch, Drawing& drawing) {
  const Component& component = sketch.component;
  for (int n = 0; n < component.nodes(); ++n) {
    // Rounding may put huge ones a little to the left of 0.
    const double left = std::max(0.0, sketch.x[n] - component.width[n] / 2);
    drawing.positions[component.boxes[n]] = {left, sketch.routing.rowTop[sketch.graph.layer[n]]};
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
/// "sizes" are those of the boxes with their loops.
void placeAlone(const Graph& input, const std::vector<int>& alone, const std::vector<Size>& sizes,
                Size rest, const Spacing& spacing, Drawing& drawing) {
  if (alone.empty()) return;
  double area = 0;
  for (const Size& size : sizes) {
    area += (size.width + spacing.alone) * (size.height + spacing.alone);
  }
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
    const std::vector<Point> places = shelved(sizes, spacing.alone, t.width);
    const Size block = extent(sizes, places);
    const Size whole{std::max(rest.width, t.at.x + block.width),
                     std::max(rest.height, t.at.y + block.height)};
    if (waste(whole, spacing.aspect) >= least) continue;
    least = waste(whole, spacing.aspect);
    for (std::size_t i = 0; i < alone.size(); ++i) {
      // Loops are above the box.
      const double above = sizes[i].height - input.boxes[alone[i]].height;
      drawing.positions[alone[i]] = places[i] + t.at + Point{0, above};
    }
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
    const bool isSeen = count(input.boxes) <= kSeen;
    const auto step = [&](double share) { progress.step(share * c.nodes()); };
    sizes.push_back(takeOver(input, bestSketch(c, spacing, isSeen, step), drawing));
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
    Size& size = alone[static_cast<std::size_t>(at - parts.alone.begin())];
    size = {size.width + room, size.height + room};
  }
  placeAlone(input, parts.alone, alone, extent(sizes, places), spacing, drawing);
  drawLoops(input, room, drawing);
  return drawing;
}

}  // namespace brisel::layout
