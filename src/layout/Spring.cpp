#include <algorithm>
#include <cmath>

#include "layout/Components.h"
#include "layout/OverlapRemoval.h"
#include "layout/Packing.h"
#include "layout/Progress.h"
#include "layout/Spreading.h"
#include "layout/StraightLines.h"
#include "layout/Stress.h"

namespace brisel::layout {
namespace {

/// Places the boxes of one component from (0, 0) on and gives its size.
Size placeComponent(const Component& component, const Spacing& spacing, const Progress& progress,
                    Drawing& drawing) {
  std::vector<Size> boxes;
  double extent = 0;
  for (int n = 0; n < component.nodes(); ++n) {
    boxes.push_back({component.width[n], component.height[n]});
    extent += std::hypot(component.width[n], component.height[n]) / component.nodes();
  }
  const Adjacency near = makeAdjacency(component.nodes(), [&](auto&& add) {
    for (const Arc& arc : component.arcs) {
      add(arc.from, arc.to);
      add(arc.to, arc.from);
    }
  });
  const auto step = [&](double share) { progress.step(share * component.nodes()); };
  std::vector<Point> places = byStress(component.nodes(), near, extent + spacing.node,
                                       [&](double share) { step(0.7 * share); });
  for (int n = 0; n < component.nodes(); ++n) {
    places[n] = places[n] - Point{boxes[n].width / 2, boxes[n].height / 2};
  }
  spread(boxes, spacing.node, places);
  removeOverlaps(boxes, spacing.node, places, [&](double share) { step(0.7 + 0.3 * share); });
  Point least = places[0];
  for (const Point p : places) least = {std::min(least.x, p.x), std::min(least.y, p.y)};
  Size size;
  for (int n = 0; n < component.nodes(); ++n) {
    const Point at = places[n] - least;
    drawing.positions[component.boxes[n]] = at;
    size.width = std::max(size.width, at.x + boxes[n].width);
    size.height = std::max(size.height, at.y + boxes[n].height);
  }
  return size;
}

}  // namespace

Drawing spring(const Graph& graph, const Spacing& wanted, const GoOn& goOn) {
  const Graph input = checked(graph);
  const Spacing spacing = checked(wanted);
  Drawing drawing;
  drawing.positions.resize(input.boxes.size());
  const Parts parts = partsOf(input, spacing.node / 3);
  std::vector<Size> sizes;
  Progress progress(goOn, static_cast<double>(input.boxes.size()));
  for (const Component& c : parts.components) {
    progress.step();
    sizes.push_back(placeComponent(c, spacing, progress, drawing));
    progress.done(c.nodes());
  }
  for (const int box : parts.alone) sizes.push_back(input.boxes[box]);
  const std::vector<Point> places = packed(sizes, spacing.node, spacing.aspect);
  for (std::size_t i = 0; i < parts.components.size(); ++i) {
    for (const int box : parts.components[i].boxes) {
      drawing.positions[box] = drawing.positions[box] + places[i];
    }
  }
  for (std::size_t i = 0; i < parts.alone.size(); ++i) {
    drawing.positions[parts.alone[i]] = places[parts.components.size() + i];
  }
  drawStraightLines(input, spacing.node, drawing);
  return drawing;
}

}  // namespace brisel::layout
