#pragma once

#include <cstdint>
#include <vector>

#include "layout/LineRouting.h"
#include "layout/Progress.h"

namespace brisel::layout {

/// One way to draw a component, from (0, 0) on.
struct Sketch {
  Component component;  ///< arcs as they run in this drawing
  LayeredGraph graph;
  std::vector<double> x;  ///< middle of every node
  Routing routing;
  double width = 0;
  double offShape = 1;  ///< how many times wider or narrower it is than can be borne; 1: it is not
  std::int64_t crossings = 0;
  double length = 0;  ///< of all lines

  [[nodiscard]] bool isBetterThan(const Sketch& other) const;
};

/// The best of several sketches: of small components more are drawn if each crossing is seen.
[[nodiscard]] Sketch bestSketch(const Component& component, const Spacing& spacing, bool isSeen,
                                const Step& step);

}  // namespace brisel::layout
