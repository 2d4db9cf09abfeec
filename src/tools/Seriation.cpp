#include "tools/Seriation.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "tools/WeightedGraph.h"

namespace brisel::tools {

namespace {

using Vertex = std::uint32_t;
using Vertices = std::vector<Vertex>;
using Edge = WeightedGraph::Edge;

constexpr Vertex kNone = std::numeric_limits<Vertex>::max();

// ---- groups -------------------------------------------------------------------------------------

/// Moves vertices one by one into the group of a neighbour for as long as that raises the
/// modularity: the share of weight within groups, less what chance would put there.
class LocalMoving {
 public:
  explicit LocalMoving(const WeightedGraph& graph)
      : m_graph(graph), m_group(graph.size()), m_total(graph.size()), m_towards(graph.size()) {
    std::iota(m_group.begin(), m_group.end(), 0U);
    for (Vertex vertex = 0; vertex < graph.size(); ++vertex) m_total[vertex] = graph.degree(vertex);
  }

  /// Ends with groups numbered from 0 in the order of their first members.
  void run() {
    constexpr int kMostPasses = 40;
    for (int pass = 0; pass < kMostPasses; ++pass) {
      bool moved = false;
      for (Vertex vertex = 0; vertex < m_graph.size(); ++vertex) moved |= move(vertex);
      if (!moved) break;
    }
    Vertices number(m_graph.size(), kNone);
    for (Vertex& group : m_group) {
      if (number[group] == kNone) number[group] = m_count++;
      group = number[group];
    }
  }

  [[nodiscard]] const Vertices& groups() const { return m_group; }
  [[nodiscard]] Vertex count() const { return m_count; }

 private:
  bool move(Vertex vertex) {
    m_met.clear();
    for (const Edge& edge : m_graph.edges(vertex)) {
      const Vertex group = m_group[edge.to];
      if (m_towards[group] == 0) m_met.push_back(group);
      m_towards[group] += edge.weight;
    }
    const Vertex own = m_group[vertex];
    const double share = m_graph.degree(vertex) / std::max(m_graph.totalDegree(), 1e-9);
    m_total[own] -= m_graph.degree(vertex);
    Vertex best = own;
    double most = m_towards[own] - share * m_total[own] + 1e-9;  // it takes a gain to move
    for (const Vertex group : m_met) {
      const double gain = m_towards[group] - share * m_total[group];
      if (gain > most) {
        most = gain;
        best = group;
      }
    }
    for (const Vertex group : m_met) m_towards[group] = 0;
    m_total[best] += m_graph.degree(vertex);
    m_group[vertex] = best;
    return best != own;
  }

  const WeightedGraph& m_graph;
  Vertices m_group;
  std::vector<double> m_total;    ///< the degrees of a group's members
  std::vector<double> m_towards;  ///< the weight from the vertex at hand to each group it met
  Vertices m_met;
  Vertex m_count = 0;
};

/// A graph, and the groups that its vertices become in the next coarser one.
struct Level {
  WeightedGraph graph;
  Vertices groupOf;
  Vertex groups = 0;
};

/// From the finest; on the last one no vertex has found a group better than its own.
std::vector<Level> levelsOf(WeightedGraph finest) {
  std::vector<Level> levels;
  for (WeightedGraph graph = std::move(finest);;) {
    LocalMoving moving(graph);
    moving.run();
    const bool isLast = moving.count() == graph.size();
    levels.push_back({std::move(graph), moving.groups(), moving.count()});
    if (isLast) return levels;
    graph = levels.back().graph.coarsened(levels.back().groupOf, levels.back().groups);
  }
}

// ---- order --------------------------------------------------------------------------------------

/// Walks breadth first over the part of a graph that is its own.
class Walk {
 public:
  explicit Walk(const WeightedGraph& graph) : m_graph(graph), m_seen(graph.size()) {}

  /// Appends the members in the order of Cuthill and McKee, one connected part after the other, the
  /// largest first. `isOwn` tells the members from the others.
  template <class IsOwn>
  void append(const Vertices& members, const IsOwn& isOwn, Vertices& order) {
    std::vector<Vertices> parts;
    ++m_round;
    for (const Vertex member : members) {
      if (m_seen[member] >= m_round) continue;
      Vertices part = walk(member, isOwn);
      parts.push_back(std::move(part));
    }
    for (Vertices& part : parts) {
      if (part.size() > 2) part = fromFarEnd(part.front(), isOwn);
    }
    std::stable_sort(parts.begin(), parts.end(), [](const Vertices& one, const Vertices& other) {
      return one.size() > other.size();
    });
    for (const Vertices& part : parts) order.insert(order.end(), part.begin(), part.end());
  }

 private:
  /// Neighbours of small degree first, those of equal degree by number.
  template <class IsOwn>
  Vertices walk(Vertex start, const IsOwn& isOwn) {
    Vertices reached{start};
    m_seen[start] = m_round;
    for (std::size_t at = 0; at < reached.size(); ++at) {
      const std::size_t first = reached.size();
      for (const Edge& edge : m_graph.edges(reached[at])) {
        if (m_seen[edge.to] >= m_round || !isOwn(edge.to)) continue;
        m_seen[edge.to] = m_round;
        reached.push_back(edge.to);
      }
      std::stable_sort(
          reached.begin() + static_cast<std::ptrdiff_t>(first), reached.end(),
          [&](Vertex a, Vertex b) { return m_graph.edges(a).size() < m_graph.edges(b).size(); });
    }
    return reached;
  }

  /// The last that one walk reaches is a good start of the next; two turns come close to the ends.
  template <class IsOwn>
  Vertices fromFarEnd(Vertex start, const IsOwn& isOwn) {
    Vertices reached;
    for (int turn = 0; turn < 3; ++turn) {
      ++m_round;
      reached = walk(start, isOwn);
      start = reached.back();
    }
    return reached;
  }

  const WeightedGraph& m_graph;
  std::vector<std::uint64_t> m_seen;  ///< the round in which a vertex was reached last
  std::uint64_t m_round = 0;
};

/// Whether the members, in this order, had better stand the other way round: those drawn to what
/// stands behind them should be last.
bool isTurned(const WeightedGraph& graph, const Vertices& members, const Vertices& groupOf,
              const Vertices& groupPlace) {
  const double middle = static_cast<double>(members.size() - 1) / 2;
  double sum = 0;
  for (std::size_t i = 0; i < members.size(); ++i) {
    const Vertex own = groupPlace[groupOf[members[i]]];
    double pull = 0;
    for (const Edge& edge : graph.edges(members[i])) {
      const Vertex other = groupPlace[groupOf[edge.to]];
      if (other != own) pull += other > own ? edge.weight : -edge.weight;
    }
    sum += (static_cast<double>(i) - middle) * pull;
  }
  return sum < 0;
}

/// The order of a level's vertices, given that of their groups.
Vertices expand(const Level& level, const Vertices& groupOrder) {
  std::vector<Vertices> members(level.groups);
  for (Vertex vertex = 0; vertex < level.graph.size(); ++vertex) {
    members[level.groupOf[vertex]].push_back(vertex);
  }
  Vertices place(level.groups);
  for (Vertex i = 0; i < groupOrder.size(); ++i) place[groupOrder[i]] = i;
  Walk walk(level.graph);
  Vertices order;
  order.reserve(level.graph.size());
  for (const Vertex group : groupOrder) {
    Vertices own;
    const auto isOwn = [&](Vertex vertex) { return level.groupOf[vertex] == group; };
    walk.append(members[group], isOwn, own);
    if (isTurned(level.graph, own, level.groupOf, place)) std::reverse(own.begin(), own.end());
    order.insert(order.end(), own.begin(), own.end());
  }
  return order;
}

/// Of the coarsest level: parts that are joined by anything stand together, those of most classes
/// first.
Vertices coarsestOrder(const WeightedGraph& graph, const std::vector<std::size_t>& sizes) {
  Vertices all(graph.size());
  std::iota(all.begin(), all.end(), 0U);
  std::stable_sort(all.begin(), all.end(), [&](Vertex a, Vertex b) { return sizes[a] > sizes[b]; });
  Vertices order;
  order.reserve(graph.size());
  Walk(graph).append(
      all, [](Vertex) { return true; }, order);
  return order;
}

}  // namespace

Seriation seriate(std::size_t count, std::span<const Affinity> pairs) {
  const std::vector<Level> levels = levelsOf(WeightedGraph(count, pairs));
  // What a class belongs to on the coarsest level.
  Vertices top(count);
  std::iota(top.begin(), top.end(), 0U);
  for (const Level& level : levels) {
    for (Vertex& group : top) group = level.groupOf[group];
  }
  std::vector<std::size_t> sizes(levels.back().groups);
  for (const Vertex group : top) ++sizes[group];

  Seriation result;
  result.order = coarsestOrder(levels.back().graph, sizes);
  for (std::size_t i = levels.size() - 1; i-- > 0;) result.order = expand(levels[i], result.order);
  result.group.resize(count);
  Vertex number = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const Vertex vertex = result.order[i];
    if (i > 0 && top[vertex] != top[result.order[i - 1]]) ++number;
    result.group[vertex] = number;
  }
  return result;
}

}  // namespace brisel::tools
