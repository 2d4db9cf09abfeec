#pragma once

#include <cstdint>

#include "layout/Grid.h"
#include "layout/Progress.h"

namespace brisel::layout {

/// Puts the nodes of a component into a grid so that lines are short and cross little.
/// Pre: inheritance is acyclic; lines connect all nodes, of which there are two at least.
/// Post: every sub class stands below its super class and no line joins two nodes of one row. The
/// rows are as many as the wanted shape asks for, unless inheritance or lines need more. Another
/// seed gives another of several good placements.
/// Simulated annealing over exchanges of cells (Kirkpatrick, Gelatt, Vecchi: Optimization by
/// simulated annealing, 1983), as circuits are placed (Sechen, Sangiovanni-Vincentelli: The
/// TimberWolf placement and routing package, 1985): by length first, then by crossings as well.
[[nodiscard]] Grid placeOnGrid(const Component& component, const Spacing& spacing,
                               std::uint64_t seed, const Step& step = {});

}  // namespace brisel::layout
