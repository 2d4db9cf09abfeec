#pragma once

#include <vector>

#include "layout/LayerGraph.h"
#include "layout/Progress.h"
#include "platform/Geometry.h"

namespace brisel::layout {

/// Points whose distances resemble the lengths of the shortest ways between them.
/// Pre: "near" connects all nodes; each line has the wanted length "unit".
/// Post: finite points, the same for the same input.
/// Brandes, Pich: Eigensolver methods for progressive multidimensional scaling, 2007 (the pivots);
/// Zheng, Pawar, Goodman: Graph drawing by stochastic gradient descent, 2019.
[[nodiscard]] std::vector<platform::Point> byStress(int nodes, const Adjacency& near, double unit,
                                                    const Step& step = {});

}  // namespace brisel::layout
