#pragma once

#include <array>
#include <cmath>
#include <limits>
#include <vector>

#include "layout/Grid.h"

namespace brisel::layout {

/// How long the lines of a component are when its nodes stand in a grid: down the rows and along
/// them. What no drawing may have costs more the worse it is: a sub class that does not stand below
/// its super class, a line between two nodes of one row.
class GridCost {
 public:
  /// The length of a step across and down; the most rows that a grid may have.
  GridCost(const Component& component, float across, float down, int rows);

  [[nodiscard]] float across() const { return m_across; }
  [[nodiscard]] float down() const { return m_down; }
  [[nodiscard]] int nodes() const { return count(m_first) - 1; }
  [[nodiscard]] int degree(int node) const { return m_first[node + 1] - m_first[node]; }
  /// The other end of a node's line, by the number of the line at the node.
  [[nodiscard]] int neighbour(int node, int line) const {
    return m_ends[m_first[node] + line].node;
  }

  /// From now on what no drawing may have costs kForbidden.
  void forbid();
  static constexpr float kForbidden = 1e12F;

  /// What changes when a node and the one in that cell change places.
  [[nodiscard]] float change(const Grid& grid, int node, Cell to) const {
    const Cell from = grid.of(node);
    const int other = grid.at(to);
    float sum = of(grid, node, to, other, from) - of(grid, node, from, -1, from);
    if (other >= 0) sum += of(grid, other, from, node, to) - of(grid, other, to, -1, to);
    return sum;
  }

 private:
  enum Role { plain, super, sub };
  struct End {
    int node;
    Role role;  ///< of the node whose line it is
  };

  /// The lines of a node as if it stood in "cell" and "moved" in "movedTo".
  [[nodiscard]] float of(const Grid& grid, int node, Cell cell, int moved, Cell movedTo) const {
    float sum = 0;
    for (int i = m_first[node]; i < m_first[node + 1]; ++i) {
      const End end = m_ends[i];
      const Cell there = end.node == moved ? movedTo : grid.of(end.node);
      sum += m_rows[end.role][m_most + there.row - cell.row] +
             m_across * static_cast<float>(std::abs(there.column - cell.column));
    }
    return sum;
  }
  void fill(float tie, float wrong, float worse);

  float m_across;
  float m_down;
  int m_most;
  std::vector<int> m_first;
  std::vector<End> m_ends;
  std::array<std::vector<float>, 3> m_rows;  ///< of a role, by how far below the other end stands
};

}  // namespace brisel::layout
