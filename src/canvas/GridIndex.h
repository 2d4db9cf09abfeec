#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "platform/Geometry.h"

namespace brisel::canvas {

class Item;

/// Finds the items near a place. Grids of doubling cell size lie over each other; an item stands in
/// the one cell that holds its centre, of the grid whose cells are at least as large as the item,
/// so that adding, moving and removing cost the same whatever its size.
class GridIndex {
 public:
  /// Where an item stands; kept by the item.
  struct Place {
    int level = -1;  ///< -1: in no cell
    std::uint64_t cell = 0;
    std::size_t slot = 0;
    platform::Rect extent;
  };

  void put(Item& item, Place& place, const platform::Rect& extent);
  void remove(Place& place);
  void clear();

  /// Adds every item whose extent touches the rectangle, each once, in no particular order.
  void collect(const platform::Rect& area, std::vector<Item*>& found) const;

 private:
  struct Entry {
    Item* item;
    Place* place;
  };
  using Cells = std::unordered_map<std::uint64_t, std::vector<Entry>>;
  static constexpr int kSmallest = 11;  ///< cells of level 0 have a side of 2^11 twips
  static constexpr std::size_t kLevels = 24;

  std::array<Cells, kLevels> m_levels;
  std::array<std::size_t, kLevels> m_counts{};
};

}  // namespace brisel::canvas
