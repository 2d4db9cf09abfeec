#pragma once

#include <cstddef>
#include <vector>

#include "layout/LayerGraph.h"

namespace brisel::layout {

struct Cell {
  int row;
  int column;

  friend bool operator==(const Cell&, const Cell&) = default;
};

/// Nodes in the cells of a grid, at most one in each.
class Grid {
 public:
  /// No node stands anywhere yet.
  Grid(int rows, int columns, int nodes);

  [[nodiscard]] int rows() const { return m_rows; }
  [[nodiscard]] int columns() const { return m_columns; }
  [[nodiscard]] int nodes() const { return count(m_cell); }
  [[nodiscard]] Cell of(int node) const { return m_cell[node]; }
  /// The node in a cell, or -1.
  [[nodiscard]] int at(Cell cell) const { return m_node[index(cell)]; }
  [[nodiscard]] bool has(Cell cell) const {
    return cell.row >= 0 && cell.row < m_rows && cell.column >= 0 && cell.column < m_columns;
  }

  /// Puts a node that stands nowhere into an empty cell.
  void put(int node, Cell cell) {
    m_cell[node] = cell;
    m_node[index(cell)] = node;
  }
  /// Moves a node; one that stands there takes its place.
  void exchange(int node, Cell to) {
    const Cell from = m_cell[node];
    const int other = at(to);
    m_node[index(from)] = other;
    if (other >= 0) m_cell[other] = from;
    put(node, to);
  }

 private:
  [[nodiscard]] std::size_t index(Cell cell) const {
    return static_cast<std::size_t>(cell.row) * m_columns + cell.column;
  }

  int m_rows;
  int m_columns;
  std::vector<Cell> m_cell;
  std::vector<int> m_node;
};

/// The grid with each node in the row given for it, the order within rows kept and columns changed
/// as little as that allows.
[[nodiscard]] Grid withRows(const Grid& grid, const std::vector<int>& row);

}  // namespace brisel::layout
