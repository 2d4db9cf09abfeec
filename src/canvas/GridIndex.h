#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/Geometry.h"

namespace brisel::canvas {

class Item;

/// Finds the items near a place. An item is entered as one or more parts, which together cover what
/// is painted of it: a long line that was one rectangle would be found nearly everywhere. Grids of
/// doubling cell size lie over each other; a part stands in the one cell that holds its centre, of
/// the grid whose cells are at least as large as the part, so that adding, moving and removing cost
/// the same whatever its size.
class GridIndex {
  struct Entry;

 public:
  /// Where the parts of an item stand; kept by the item.
  class Place {
   public:
    /// In no cell.
    [[nodiscard]] bool isEmpty() const { return m_spots.empty(); }

   private:
    friend class GridIndex;
    struct Spot {
      int level;
      std::uint64_t cell;
      std::vector<Entry>* entries;  ///< of the cell
      std::size_t slot;             ///< in the entries
    };
    Item* m_item = nullptr;
    std::vector<Spot> m_spots;
    mutable std::uint64_t m_asked = 0;  ///< the last question that found the item
  };

  /// In the place of the parts that the item had before.
  void put(Item& item, Place& place, std::span<const platform::Rect> parts);
  void remove(Place& place) { shorten(place, 0); }
  void clear();
  /// Adds the parts that stand there.
  static void partsOf(const Place& place, std::vector<platform::Rect>& parts);

  /// Adds every item of which a part touches the rectangle, each once, in no particular order. Parts
  /// with a side longer than `longest`, a power of two, are passed over.
  void collect(const platform::Rect& area, std::vector<Item*>& found,
               double longest = std::numeric_limits<double>::infinity()) const;

 private:
  struct Entry {
    platform::Rect extent;
    Place* place;
    std::size_t part;
  };
  using Cells = std::unordered_map<std::uint64_t, std::vector<Entry>>;
  static constexpr int kSmallest = 11;  ///< cells of level 0 have a side of 2^11 twips
  static constexpr std::size_t kLevels = 24;

  void enter(Place& place, std::size_t part, const platform::Rect& extent);
  /// Takes the entry out of its cell; the spot means nothing any more.
  void leave(const Place::Spot& spot);
  void shorten(Place& place, std::size_t parts);

  std::array<Cells, kLevels> m_levels;
  std::array<std::size_t, kLevels> m_counts{};
  mutable std::uint64_t m_asked = 0;
};

}  // namespace brisel::canvas
