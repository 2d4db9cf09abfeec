#include "layout/GridCost.h"

namespace brisel::layout {

GridCost::GridCost(const Component& component, float across, float down, int rows)
    : m_across(across), m_down(down), m_most(rows) {
  const auto roleOf = [](const Arc& arc, bool from) {
    return !arc.inheritance ? plain : from ? super : sub;
  };
  const Adjacency arcs = linesAtNodes(component);
  m_first = arcs.first;
  for (int node = 0; node < component.nodes(); ++node) {
    for (const int i : arcs.of(node)) {
      const Arc& arc = component.arcs[i];
      const bool from = arc.from == node;
      m_ends.push_back({from ? arc.to : arc.from, roleOf(arc, from)});
    }
  }
  // A tie costs more than a row, so that it stays rare; what is the wrong way round costs so little
  // that whole trees can still turn.
  fill(2.5F * down, 4.5F * down, 1.5F * down);
}

void GridCost::fill(float tie, float wrong, float worse) {
  for (auto& row : m_rows) row.resize(2 * static_cast<std::size_t>(m_most) + 1);
  for (int dy = -m_most; dy <= m_most; ++dy) {
    const float length = m_down * static_cast<float>(std::abs(dy));
    m_rows[plain][m_most + dy] = dy == 0 ? tie : length;
    const float below = dy > 0 ? length : wrong + worse * static_cast<float>(-dy);
    m_rows[super][m_most + dy] = below;
    m_rows[sub][m_most - dy] = below;
  }
}

void GridCost::forbid() { fill(kForbidden, kForbidden, 0); }

}  // namespace brisel::layout
