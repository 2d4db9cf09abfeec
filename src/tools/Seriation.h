#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace brisel::tools {

/// Two things that belong together, by number; several of one pair add up, loops do not count.
struct Affinity {
  std::uint32_t a;
  std::uint32_t b;
  double weight = 1;
};

/// An order in which things that belong together stand side by side, so that in a matrix of all
/// with all the groups show as blocks on the diagonal.
struct Seriation {
  std::vector<std::uint32_t> order;  ///< every number once, from first to last
  std::vector<std::uint32_t> group;  ///< by number; groups count from 0 in the order of standing
};

/// Orders the numbers from 0 to `count` - 1. Costs about O(pairs * log count); the same input gives
/// the same order, and equals keep the order of their numbers. What belongs to nothing stands at
/// the end, each a group of its own.
///
/// Groups by greedy modularity on ever coarser graphs (Blondel, Guillaume, Lambiotte and Lefebvre,
/// "Fast unfolding of communities in large networks", 2008), with vertices visited in the order of
/// their numbers. Groups among each other, and from the coarse to the fine the members of each,
/// stand in the order of Cuthill and McKee ("Reducing the bandwidth of sparse symmetric matrices",
/// 1969) from a far end (George and Liu, "An implementation of a pseudoperipheral node finder",
/// 1979), turned to the side where their relatives stand.
[[nodiscard]] Seriation seriate(std::size_t count, std::span<const Affinity> pairs);

}  // namespace brisel::tools
