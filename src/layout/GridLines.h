#pragma once

#include <cstdint>
#include <vector>

#include "layout/Grid.h"

namespace brisel::layout {

/// The lines between the nodes of a grid, cut at its rows, to tell how many of them cross when a
/// node moves. Keeps a number for each arc and row.
class GridLines {
 public:
  /// Holds no line yet. The component outlives it.
  GridLines(const Component& component, int rows);

  /// Takes a line in where its ends stand now, and gives how many it crosses.
  int add(const Grid& grid, int arc);
  /// Takes a line out that stands as it was added, and gives how many it crossed.
  int drop(const Grid& grid, int arc);
  /// The same without counting.
  void put(const Grid& grid, int arc);
  void take(const Grid& grid, int arc);

  /// Elementary steps done so far.
  [[nodiscard]] std::int64_t work() const { return m_work; }

 private:
  /// The pieces of lines between two rows: where they start, end, and whose they are.
  struct Gap {
    std::vector<float> top;
    std::vector<float> bottom;
    std::vector<int> arc;
  };
  struct Ends {
    Cell upper;
    Cell lower;
  };

  [[nodiscard]] Ends endsOf(const Grid& grid, int arc) const;
  [[nodiscard]] int& slot(int arc, int gap) {
    return m_slot[static_cast<std::size_t>(arc) * m_gaps.size() + gap];
  }
  int insert(const Grid& grid, int arc, bool counts);
  int remove(const Grid& grid, int arc, bool counts);
  int crossed(const Gap& gap, float top, float bottom);

  const Component& m_component;
  std::vector<Gap> m_gaps;
  std::vector<int> m_slot;  ///< of each arc in each gap
  std::int64_t m_work = 0;
};

}  // namespace brisel::layout
