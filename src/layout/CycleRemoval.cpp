#include "layout/CycleRemoval.h"

#include <algorithm>
#include <utility>

namespace brisel::layout {
namespace {

/// Nodes that may be taken next, by how many more arcs leave them than enter them. Taking one costs
/// a constant amount; entries that were overtaken by a change are skipped when they come up.
class Buckets {
 public:
  explicit Buckets(int nodes) : m_key(nodes, kNone) {}

  void put(int node, int key) {
    m_key[node] = key;
    const auto slot = static_cast<std::size_t>(key < 0 ? -2 * key - 1 : 2 * key);
    if (slot >= m_slots.size()) m_slots.resize(slot + 1);
    m_slots[slot].push_back(node);
    m_highest = std::max(m_highest, key);
  }
  void remove(int node) { m_key[node] = kNone; }
  [[nodiscard]] bool holds(int node) const { return m_key[node] != kNone; }
  [[nodiscard]] int key(int node) const { return m_key[node]; }

  /// The node of the highest key, or -1.
  int takeHighest(int lowestKey) {
    for (; m_highest >= lowestKey; --m_highest) {
      const auto slot =
          static_cast<std::size_t>(m_highest < 0 ? -2 * m_highest - 1 : 2 * m_highest);
      if (slot >= m_slots.size()) continue;
      auto& nodes = m_slots[slot];
      while (!nodes.empty()) {
        const int node = nodes.back();
        nodes.pop_back();
        if (m_key[node] == m_highest) {
          remove(node);
          return node;
        }
      }
    }
    return -1;
  }

 private:
  static constexpr int kNone = -1'000'000'000;
  std::vector<int> m_key;
  std::vector<std::vector<int>> m_slots;
  int m_highest = kNone;
};

/// Takes nodes one after the other and so orders them; arcs against that order are to be turned.
class Ordering {
 public:
  /// Looks at arcs for which "counts" holds; no order contradicts an arc for which "binds" holds,
  /// which must be acyclic among themselves.
  template <class Counts, class Binds>
  Ordering(const Component& component, Counts&& counts, Binds&& binds)
      : m_arcs(component.arcs),
        m_rank(component.nodes(), -1),
        m_out(component.nodes(), 0),
        m_in(component.nodes(), 0),
        m_bound(component.nodes(), 0),
        m_binding(component.arcs.size(), false),
        m_buckets(component.nodes()) {
    const auto incident = [&](auto&& add) {
      for (int i = 0; i < count(m_arcs); ++i) {
        if (!counts(m_arcs[i])) continue;
        add(m_arcs[i].from, i);
        add(m_arcs[i].to, i);
      }
    };
    m_incident = makeAdjacency(component.nodes(), incident);
    for (int i = 0; i < count(m_arcs); ++i) {
      if (!counts(m_arcs[i])) continue;
      ++m_out[m_arcs[i].from];
      ++m_in[m_arcs[i].to];
      if (binds(m_arcs[i])) {
        m_binding[i] = true;
        ++m_bound[m_arcs[i].to];
      }
    }
    run();
  }

  [[nodiscard]] bool isBackward(const Arc& arc) const { return m_rank[arc.from] > m_rank[arc.to]; }

 private:
  void run() {
    const int nodes = count(m_rank);
    for (int n = nodes - 1; n >= 0; --n) offer(n);
    int left = 0;
    int right = nodes;
    while (left < right) {
      if (!m_sinks.empty()) {
        const int node = m_sinks.back();
        m_sinks.pop_back();
        if (m_rank[node] < 0) take(node, --right);
        continue;
      }
      const int node = takeNext();
      take(node, left++);
    }
  }

  int takeNext() {
    while (!m_sources.empty()) {
      const int node = m_sources.back();
      m_sources.pop_back();
      if (m_rank[node] < 0) return node;
    }
    return m_buckets.takeHighest(-count(m_arcs) - 1);
  }

  /// Puts an open node where it will be found.
  void offer(int node) {
    if (m_rank[node] >= 0) return;
    if (m_out[node] == 0) m_sinks.push_back(node);
    if (m_in[node] == 0) m_sources.push_back(node);
    if (m_bound[node] == 0) m_buckets.put(node, m_out[node] - m_in[node]);
  }

  void take(int node, int rank) {
    m_rank[node] = rank;
    m_buckets.remove(node);
    for (const int i : m_incident.of(node)) {
      const int other = m_arcs[i].from == node ? m_arcs[i].to : m_arcs[i].from;
      if (m_rank[other] >= 0) continue;
      if (other == m_arcs[i].from) {
        --m_out[other];
      } else {
        --m_in[other];
        if (m_binding[i]) --m_bound[other];
      }
      offer(other);
    }
  }

  const std::vector<Arc>& m_arcs;
  Adjacency m_incident;
  std::vector<int> m_rank;
  std::vector<int> m_out;
  std::vector<int> m_in;
  std::vector<int> m_bound;
  std::vector<bool> m_binding;
  std::vector<int> m_sinks;
  std::vector<int> m_sources;
  Buckets m_buckets;
};

void turn(Arc& arc) {
  std::swap(arc.from, arc.to);
  arc.reversed = !arc.reversed;
}

}  // namespace

void breakInheritanceCycles(Component& component) {
  const auto inherits = [](const Arc& arc) { return arc.inheritance; };
  const Ordering inheritance(component, inherits, [](const Arc&) { return false; });
  for (Arc& arc : component.arcs) {
    if (arc.inheritance && inheritance.isBackward(arc)) turn(arc);
  }
}

void removeCycles(Component& component) {
  breakInheritanceCycles(component);
  const Ordering all(
      component, [](const Arc&) { return true; }, [](const Arc& arc) { return arc.inheritance; });
  for (Arc& arc : component.arcs) {
    if (all.isBackward(arc)) turn(arc);
  }
}

}  // namespace brisel::layout
