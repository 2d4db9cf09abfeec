#pragma once

#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

/// What is moved as one: a box, or bends of one line that follow each other and stand below each
/// other.
struct Blocks {
  std::vector<int> of;  ///< of each node
  Adjacency members;    ///< of each block, from the top down

  [[nodiscard]] int size() const { return count(members.first) - 1; }
};

/// Joins bends to few blocks that can be straight together: of the pieces between two rows that
/// lean by no more than "lean" the most that do not cross. Pre: "x" is the middle of every node,
/// roughly. Post: blocks are numbered so that of two nodes of a row the right one's block has the
/// higher number. Sander: A fast heuristic for hierarchical Manhattan layout, 1996, has such linear
/// segments; the most pieces are a longest increasing subsequence.
[[nodiscard]] Blocks straightBlocks(const LayeredGraph& graph, const std::vector<double>& x,
                                    double lean);

}  // namespace brisel::layout
