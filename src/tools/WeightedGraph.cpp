#include "tools/WeightedGraph.h"

#include <algorithm>

namespace brisel::tools {

WeightedGraph::WeightedGraph(std::size_t count, std::span<const Affinity> pairs)
    : m_first(count + 1), m_loops(count), m_degree(count) {
  std::vector<Affinity> both;
  both.reserve(2 * pairs.size());
  for (const Affinity& pair : pairs) {
    if (pair.a == pair.b) {
      m_loops[pair.a] += pair.weight;
    } else {
      both.push_back(pair);
      both.push_back({pair.b, pair.a, pair.weight});
    }
  }
  std::stable_sort(both.begin(), both.end(), [](const Affinity& one, const Affinity& other) {
    return std::pair(one.a, one.b) < std::pair(other.a, other.b);
  });
  m_edges.reserve(both.size());
  for (std::size_t i = 0; i < both.size(); ++i) {
    const Affinity& pair = both[i];
    const bool isSame = i > 0 && both[i - 1].a == pair.a && both[i - 1].b == pair.b;
    if (isSame) {
      m_edges.back().weight += pair.weight;
    } else {
      m_edges.push_back({pair.b, pair.weight});
      ++m_first[pair.a + 1];
    }
    m_degree[pair.a] += pair.weight;
  }
  for (std::size_t vertex = 0; vertex < count; ++vertex) {
    m_first[vertex + 1] += m_first[vertex];
    m_degree[vertex] += 2 * m_loops[vertex];
    m_total += m_degree[vertex];
  }
}

WeightedGraph WeightedGraph::coarsened(const std::vector<std::uint32_t>& groupOf,
                                       std::size_t groups) const {
  std::vector<Affinity> pairs;
  pairs.reserve(m_edges.size() / 2 + m_loops.size());
  for (std::uint32_t vertex = 0; vertex < size(); ++vertex) {
    const std::uint32_t own = groupOf[vertex];
    if (m_loops[vertex] > 0) pairs.push_back({own, own, m_loops[vertex]});
    for (const Edge& edge : edges(vertex)) {
      if (edge.to > vertex) pairs.push_back({own, groupOf[edge.to], edge.weight});
    }
  }
  return {groups, pairs};
}

}  // namespace brisel::tools
