#pragma once

#include <cstdint>

#include "layout/LayerGraph.h"
#include "layout/Progress.h"

namespace brisel::layout {

/// Takes boxes out, one after the other, and puts each with its lines where they cost least, in
/// whichever row that is; now and then to somewhat worse places, the less the longer it runs.
/// Pre: "graph" are the ordered rows of the component, whose arcs lead down.
/// Post: the same for both; crossings and length, taken together, are no worse than before. The
/// boxes of no row are much wider than those of the widest were. Ends after about so many
/// elementary steps; does nothing where lines were left out of the rows.
/// Kirkpatrick, Gelatt, Vecchi: Optimization by simulated annealing, 1983; for one line with a
/// choice of rows cf. Chimani, Gutwenger, Mutzel, Wong: Layer-free upward crossing minimization,
/// 2008.
void searchRows(Component& component, LayeredGraph& graph, const Spacing& spacing,
                std::uint64_t seed, std::int64_t work, const Step& step = {});

}  // namespace brisel::layout
