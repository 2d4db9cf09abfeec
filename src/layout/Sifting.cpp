#include "layout/Sifting.h"

#include <algorithm>

namespace brisel::layout {

std::int64_t Sifter::siftRow(int row) {
  auto& nodes = m_graph.rows[row];
  collectEnds(row);
  m_sequence = nodes;
  std::int64_t gained = 0;
  for (const int node : m_sequence) {
    weighEnds(node, row);
    gained += moveToBest(node, nodes);
  }
  const auto steps = static_cast<std::int64_t>(m_ends.size() + m_weight.size() + nodes.size());
  m_work += steps * count(nodes);
  return gained;
}

void Sifter::collectEnds(int row) {
  const int above = row > 0 ? count(m_graph.rows[row - 1]) : 0;
  m_slot.resize(m_graph.layer.size());
  m_first.clear();
  m_ends.clear();
  for (const int node : m_graph.rows[row]) {
    m_slot[node] = count(m_first);
    m_first.push_back(count(m_ends));
    for (const int other : m_graph.above.of(node)) m_ends.push_back(m_graph.position[other]);
    for (const int other : m_graph.below.of(node))
      m_ends.push_back(above + m_graph.position[other]);
  }
  m_first.push_back(count(m_ends));
}

/// An end at a position crosses those of the node's lines that end left of it when the node stands
/// to its right, and those that end right of it when the node stands to its left.
void Sifter::weighEnds(int node, int row) {
  const int above = row > 0 ? count(m_graph.rows[row - 1]) : 0;
  const int below = row + 1 < count(m_graph.rows) ? count(m_graph.rows[row + 1]) : 0;
  m_weight.assign(static_cast<std::size_t>(above) + below, 0);
  weighSide(m_graph.above.of(node), 0, above);
  weighSide(m_graph.below.of(node), above, below);
}

void Sifter::weighSide(std::span<const int> own, int base, int size) {
  if (own.empty()) return;
  for (const int other : own) ++m_weight[base + m_graph.position[other]];
  int left = 0;
  const int all = static_cast<int>(own.size());
  for (int i = base; i < base + size; ++i) {
    const int here = m_weight[i];
    m_weight[i] = left - (all - left - here);
    left += here;
  }
}

std::int64_t Sifter::moveToBest(int node, std::vector<int>& nodes) {
  std::int64_t crossed = 0;  // relative to the node at the left end
  std::int64_t here = 0;
  std::int64_t best = 0;
  int bestAt = 0;
  int at = 0;
  for (const int other : nodes) {
    if (other == node) {
      here = crossed;
      continue;
    }
    const int slot = m_slot[other];
    for (int i = m_first[slot]; i < m_first[slot + 1]; ++i) crossed += m_weight[m_ends[i]];
    ++at;
    if (crossed < best) {
      best = crossed;
      bestAt = at;
    }
  }
  if (best >= here) return 0;
  const int from = m_graph.position[node];
  const auto begin = nodes.begin();
  if (from < bestAt) {
    std::rotate(begin + from, begin + from + 1, begin + bestAt + 1);
  } else {
    std::rotate(begin + bestAt, begin + from, begin + from + 1);
  }
  for (int i = std::min(from, bestAt); i <= std::max(from, bestAt); ++i) {
    m_graph.position[nodes[i]] = i;
  }
  return here - best;
}

void siftRows(LayeredGraph& graph, std::int64_t work, const Step& step) {
  constexpr int kMostRounds = 60;
  Sifter sifter(graph);
  const int rows = count(graph.rows);
  std::int64_t first = 0;
  for (int round = 0; round < kMostRounds; ++round) {
    std::int64_t gained = 0;
    for (int k = 0; k < rows && sifter.work() < work; ++k) {
      if (step) step(static_cast<double>(sifter.work()) / static_cast<double>(work));
      gained += sifter.siftRow(round % 2 == 0 ? k : rows - 1 - k);
    }
    first = std::max(first, gained);
    if (gained <= first / 50) break;
  }
}

}  // namespace brisel::layout
