#pragma once

#include <cstdint>
#include <vector>

namespace brisel::layout {

/// The lower end of a constraint lies at least "length" below its upper end; every unit between
/// them costs "weight".
struct Constraint {
  int upper;
  int lower;
  int length = 1;
  int weight = 1;
};

/// Integers for the nodes that obey all constraints at the least weighted length.
/// Pre: the constraints are acyclic and connect all nodes.
/// Post: every constraint holds and the smallest value is 0; the sum is the least possible unless
/// the work exceeds "budget" elementary steps.
/// Gansner, Koutsofios, North, Vo: A technique for drawing directed graphs, 1993.
[[nodiscard]] std::vector<int> networkSimplex(int nodes, const std::vector<Constraint>& constraints,
                                              std::int64_t budget);

}  // namespace brisel::layout
