#pragma once

#include <cstdint>

#include "layout/LayerGraph.h"
#include "layout/Progress.h"

namespace brisel::layout {

/// Crossings between the lines of all neighbouring rows.
/// Barth, Juenger, Mutzel: Simple and efficient bilayer cross counting, 2002.
[[nodiscard]] std::int64_t crossings(const LayeredGraph& graph);

/// Orders the rows so that few lines cross.
/// Pre: rows and positions are filled.
/// Post: every row holds the same nodes as before; there are no more crossings than before.
/// Sweeps by barycenters (Sugiyama, Tagawa, Toda: Methods for visual understanding of hierarchical
/// system structures, 1981) with exchanges of neighbours, then sifting until a round gains less
/// than a small share; both again from disturbed and from shuffled rows while a bound on the work,
/// which grows with the graph, allows.
void reduceCrossings(LayeredGraph& graph, const Step& step = {});

}  // namespace brisel::layout
