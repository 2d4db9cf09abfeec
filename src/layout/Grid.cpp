#include "layout/Grid.h"

#include <algorithm>

namespace brisel::layout {

Grid::Grid(int rows, int columns, int nodes)
    : m_rows(rows),
      m_columns(columns),
      m_cell(nodes, Cell{-1, -1}),
      m_node(static_cast<std::size_t>(rows) * columns, -1) {}

Grid withRows(const Grid& grid, const std::vector<int>& row) {
  std::vector<std::vector<int>> rows(1 + *std::max_element(row.begin(), row.end()));
  for (int n = 0; n < grid.nodes(); ++n) rows[row[n]].push_back(n);
  int columns = grid.columns();
  for (const auto& nodes : rows) columns = std::max(columns, count(nodes) + 1);
  Grid result(count(rows), columns, grid.nodes());
  for (int r = 0; r < count(rows); ++r) {
    std::stable_sort(rows[r].begin(), rows[r].end(),
                     [&](int a, int b) { return grid.of(a).column < grid.of(b).column; });
    int next = 0;
    int left = count(rows[r]);
    for (const int node : rows[r]) {
      const int column = std::min(std::max(next, grid.of(node).column), columns - left);
      result.put(node, {r, column});
      next = column + 1;
      --left;
    }
  }
  return result;
}

}  // namespace brisel::layout
