#pragma once

#include <cstdint>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// Moves nodes within their rows while fewer lines cross by that as they are drawn: generalizations
/// into one super class as a trunk, which a line that leaves the super class between its sub
/// classes has to cross. Does about so many elementary steps at most.
/// Sifting after Matuszewski, Schönfeld, Molitor: Using sifting for k-layer straightline crossing
/// minimization, 1999.
void siftTrunks(const Component& component, LayeredGraph& graph, std::int64_t work);

}  // namespace brisel::layout
