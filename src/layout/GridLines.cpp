#include "layout/GridLines.h"

#include <utility>

namespace brisel::layout {

GridLines::GridLines(const Component& component, int rows) : m_component(component) {
  m_gaps.resize(rows);
  m_slot.resize(component.arcs.size() * m_gaps.size());
}

int GridLines::add(const Grid& grid, int arc) { return insert(grid, arc, true); }
int GridLines::drop(const Grid& grid, int arc) { return remove(grid, arc, true); }
void GridLines::put(const Grid& grid, int arc) { insert(grid, arc, false); }
void GridLines::take(const Grid& grid, int arc) { remove(grid, arc, false); }

GridLines::Ends GridLines::endsOf(const Grid& grid, int arc) const {
  const Cell a = grid.of(m_component.arcs[arc].from);
  const Cell b = grid.of(m_component.arcs[arc].to);
  return a.row <= b.row ? Ends{a, b} : Ends{b, a};
}

int GridLines::insert(const Grid& grid, int arc, bool counts) {
  const auto [upper, lower] = endsOf(grid, arc);
  const int rows = lower.row - upper.row;
  const float lean = static_cast<float>(lower.column - upper.column) / static_cast<float>(rows);
  // Lines pass rows a little beside the columns, each elsewhere, so that none seems to run through
  // a node.
  const float aside = 0.6F * (static_cast<float>(arc * 618'034LL % 1'000'000) * 1e-6F - 0.5F);
  int sum = 0;
  auto bottom = static_cast<float>(upper.column);
  for (int k = 0; k < rows; ++k) {
    const float top = bottom;
    bottom = k + 1 == rows
                 ? static_cast<float>(lower.column)
                 : static_cast<float>(upper.column) + lean * static_cast<float>(k + 1) + aside;
    Gap& gap = m_gaps[upper.row + k];
    if (counts) sum += crossed(gap, top, bottom);
    slot(arc, upper.row + k) = count(gap.arc);
    gap.top.push_back(top);
    gap.bottom.push_back(bottom);
    gap.arc.push_back(arc);
  }
  return sum;
}

int GridLines::remove(const Grid& grid, int arc, bool counts) {
  const auto [upper, lower] = endsOf(grid, arc);
  int sum = 0;
  for (int row = upper.row; row < lower.row; ++row) {
    Gap& gap = m_gaps[row];
    const int at = slot(arc, row);
    const float top = std::exchange(gap.top[at], gap.top.back());
    const float bottom = std::exchange(gap.bottom[at], gap.bottom.back());
    gap.arc[at] = gap.arc.back();
    slot(gap.arc[at], row) = at;
    gap.top.pop_back();
    gap.bottom.pop_back();
    gap.arc.pop_back();
    if (counts) sum += crossed(gap, top, bottom);
  }
  return sum;
}

int GridLines::crossed(const Gap& gap, float top, float bottom) {
  const float* tops = gap.top.data();
  const float* bottoms = gap.bottom.data();
  const int lines = count(gap.arc);
  int sum = 0;
  for (int i = 0; i < lines; ++i) sum += (tops[i] - top) * (bottoms[i] - bottom) < 0 ? 1 : 0;
  m_work += lines;
  return sum;
}

}  // namespace brisel::layout
