#pragma once

#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "tools/Seriation.h"

namespace brisel::tools {

/// An undirected graph with weights, in rows one behind the other. Every edge stands in the rows of
/// both its ends, a loop not at all: its weight counts to its vertex.
class WeightedGraph {
 public:
  struct Edge {
    std::uint32_t to;
    double weight;
  };

  WeightedGraph(std::size_t count, std::span<const Affinity> pairs);

  [[nodiscard]] std::size_t size() const { return m_first.size() - 1; }
  /// By ascending number of the other end.
  [[nodiscard]] std::span<const Edge> edges(std::uint32_t vertex) const {
    return {m_edges.data() + m_first[vertex], m_edges.data() + m_first[vertex + 1]};
  }
  /// The weight of a vertex's edges, loops twice.
  [[nodiscard]] double degree(std::uint32_t vertex) const { return m_degree[vertex]; }
  /// Of all vertices.
  [[nodiscard]] double totalDegree() const { return m_total; }

  /// A vertex for each group, numbered from 0 to `groups` - 1; what joins members becomes a loop.
  [[nodiscard]] WeightedGraph coarsened(const std::vector<std::uint32_t>& groupOf,
                                        std::size_t groups) const;

 private:
  std::vector<std::size_t> m_first;  ///< by vertex, and the end
  std::vector<Edge> m_edges;
  std::vector<double> m_loops;
  std::vector<double> m_degree;
  double m_total = 0;
};

}  // namespace brisel::tools
