#include "layout/NetworkSimplex.h"

#include <algorithm>
#include <limits>
#include <queue>
#include <utility>

#include "layout/LayerGraph.h"

namespace brisel::layout {
namespace {

class Simplex {
 public:
  Simplex(int nodes, const std::vector<Constraint>& constraints, std::int64_t budget)
      : m_constraints(constraints),
        m_budget(budget),
        m_value(nodes, 0),
        m_inTree(constraints.size()) {
    m_incident = makeAdjacency(nodes, [&](auto&& add) {
      for (int i = 0; i < count(m_constraints); ++i) {
        add(m_constraints[i].upper, i);
        add(m_constraints[i].lower, i);
      }
    });
    m_tree.resize(nodes);
  }

  std::vector<int> solve() {
    placeByLongestPath();
    spanTightTree();
    m_parent.assign(m_value.size(), -1);
    m_low.assign(m_value.size(), 0);
    m_order.assign(m_value.size(), 0);
    m_lim.assign(m_value.size(), 0);
    numberSubtree(0, -1, 0);
    cutAll();
    for (int leaving = findLeaving(); leaving >= 0 && m_budget > 0; leaving = findLeaving()) {
      exchange(leaving, findEntering(leaving));
    }
    return std::move(m_value);
  }

 private:
  [[nodiscard]] int nodes() const { return count(m_value); }
  [[nodiscard]] int slack(int i) const {
    const Constraint& c = m_constraints[i];
    return m_value[c.lower] - m_value[c.upper] - c.length;
  }
  [[nodiscard]] int other(int i, int node) const {
    const Constraint& c = m_constraints[i];
    return c.upper == node ? c.lower : c.upper;
  }

  void placeByLongestPath() {
    std::vector<int> open(m_value.size(), 0);
    for (const Constraint& c : m_constraints) ++open[c.lower];
    std::vector<int> ready;
    for (int n = 0; n < nodes(); ++n) {
      if (open[n] == 0) ready.push_back(n);
    }
    for (std::size_t next = 0; next < ready.size(); ++next) {
      const int node = ready[next];
      for (const int i : m_incident.of(node)) {
        const Constraint& c = m_constraints[i];
        if (c.upper != node) continue;
        m_value[c.lower] = std::max(m_value[c.lower], m_value[node] + c.length);
        if (--open[c.lower] == 0) ready.push_back(c.lower);
      }
    }
  }

  /// Joins parts of the tree along tight constraints, the smallest part first; a part that has no
  /// tight one is shifted until it has.
  void spanTightTree() {
    std::vector<int> part(m_value.size());
    std::vector<std::vector<int>> members(m_value.size());
    using Entry = std::pair<int, int>;
    std::priority_queue<Entry, std::vector<Entry>, std::greater<>> smallest;
    for (int n = 0; n < nodes(); ++n) {
      part[n] = n;
      members[n] = {n};
      smallest.emplace(1, n);
    }
    while (!smallest.empty()) {
      const auto [size, p] = smallest.top();
      smallest.pop();
      if (size != count(members[p])) continue;
      if (size == nodes()) return;
      const int joining = tightest(members[p], part);
      const bool inside = part[m_constraints[joining].upper] == p;
      const int shift = inside ? slack(joining) : -slack(joining);
      const int into = part[inside ? m_constraints[joining].lower : m_constraints[joining].upper];
      for (const int n : members[p]) {
        m_value[n] += shift;
        part[n] = into;
      }
      members[into].insert(members[into].end(), members[p].begin(), members[p].end());
      members[p] = {};
      addToTree(joining);
      smallest.emplace(count(members[into]), into);
    }
  }

  int tightest(const std::vector<int>& inside, const std::vector<int>& part) {
    int best = -1;
    for (const int n : inside) {
      for (const int i : m_incident.of(n)) {
        if (part[other(i, n)] == part[n]) continue;
        if (best < 0 || slack(i) < slack(best)) best = i;
      }
      if (best >= 0 && slack(best) == 0) break;
    }
    return best;
  }

  void addToTree(int i) {
    m_inTree[i] = true;
    m_tree[m_constraints[i].upper].push_back(i);
    m_tree[m_constraints[i].lower].push_back(i);
  }
  void dropFromTree(int i) {
    m_inTree[i] = false;
    for (const int node : {m_constraints[i].upper, m_constraints[i].lower}) {
      auto& list = m_tree[node];
      *std::find(list.begin(), list.end(), i) = list.back();
      list.pop_back();
    }
  }

  /// Numbers a subtree in postorder from "low" on, so that it is one stretch of m_order.
  void numberSubtree(int root, int parentConstraint, int low) {
    m_parent[root] = parentConstraint;
    m_low[root] = low;
    m_stack.assign(1, {root, 0});
    int next = low;
    while (!m_stack.empty()) {
      auto& [node, child] = m_stack.back();
      if (child == m_tree[node].size()) {
        m_lim[node] = next;
        m_order[next++] = node;
        m_stack.pop_back();
        continue;
      }
      const int i = m_tree[node][child++];
      if (i == m_parent[node]) continue;
      const int to = other(i, node);
      m_parent[to] = i;
      m_low[to] = next;
      m_stack.emplace_back(to, 0);
    }
    m_budget -= next - low;
  }

  [[nodiscard]] bool isBelow(int node, int root) const {
    return m_low[root] <= m_lim[node] && m_lim[node] <= m_lim[root];
  }

  /// The cut value of a tree constraint is the weight that leaves the side of its upper end less
  /// the weight that enters it; over a subtree that is the sum of what leaves and enters its nodes.
  void cutAll() {
    m_cut.assign(m_constraints.size(), 0);
    std::vector<int> leaving(m_value.size(), 0);
    for (const Constraint& c : m_constraints) {
      leaving[c.upper] += c.weight;
      leaving[c.lower] -= c.weight;
    }
    for (const int node : m_order) {
      const int up = m_parent[node];
      if (up < 0) continue;
      m_cut[up] = m_constraints[up].upper == node ? leaving[node] : -leaving[node];
      leaving[other(up, node)] += leaving[node];
    }
  }

  int findLeaving() {
    int best = -1;
    int seen = 0;
    for (int k = 0; k < nodes(); ++k) {
      if (++m_search >= nodes()) m_search = 0;
      const int up = m_parent[m_search];
      if (up < 0 || m_cut[up] >= 0) continue;
      if (best < 0 || m_cut[up] < m_cut[best]) best = up;
      if (++seen >= 30) break;
    }
    return best;
  }

  int findEntering(int leaving) {
    const Constraint& c = m_constraints[leaving];
    const bool below = m_parent[c.upper] == leaving;
    const int root = below ? c.upper : c.lower;
    int best = -1;
    int least = std::numeric_limits<int>::max();
    for (int k = m_low[root]; k <= m_lim[root]; ++k) {
      const int node = m_order[k];
      for (const int i : m_incident.of(node)) {
        const bool enters = (below ? m_constraints[i].lower : m_constraints[i].upper) == node;
        if (!enters || m_inTree[i] || isBelow(other(i, node), root)) continue;
        if (slack(i) < least) {
          least = slack(i);
          best = i;
        }
      }
    }
    m_budget -= m_lim[root] - m_low[root];
    return best;
  }

  void exchange(int leaving, int entering) {
    const Constraint& out = m_constraints[leaving];
    const bool below = m_parent[out.upper] == leaving;
    const int root = below ? out.upper : out.lower;
    const int shift = below ? -slack(entering) : slack(entering);
    if (shift != 0) {
      for (int k = m_low[root]; k <= m_lim[root]; ++k) m_value[m_order[k]] += shift;
    }
    const Constraint& in = m_constraints[entering];
    const int cut = m_cut[leaving];
    const int top = raise(in.upper, in.lower, cut, true);
    raise(in.lower, in.upper, cut, false);
    m_cut[entering] = -cut;
    m_cut[leaving] = 0;
    dropFromTree(leaving);
    addToTree(entering);
    numberSubtree(top, m_parent[top], m_low[top]);
  }

  /// Corrects the cut values from a node up to the first one that has "end" below it, and gives
  /// that one.
  int raise(int node, int end, int cut, bool fromUpper) {
    while (!isBelow(end, node)) {
      const int up = m_parent[node];
      const bool along = (m_constraints[up].upper == node) == fromUpper;
      m_cut[up] += along ? cut : -cut;
      node = other(up, node);
    }
    return node;
  }

  const std::vector<Constraint>& m_constraints;
  std::int64_t m_budget;
  std::vector<int> m_value;
  Adjacency m_incident;
  std::vector<bool> m_inTree;
  std::vector<std::vector<int>> m_tree;  ///< tree constraints of each node
  std::vector<int> m_parent;             ///< of each node the constraint to its parent
  std::vector<int> m_low;                ///< lowest number in each node's subtree
  std::vector<int> m_lim;                ///< number of each node in postorder
  std::vector<int> m_order;              ///< nodes in postorder
  std::vector<int> m_cut;
  std::vector<std::pair<int, std::size_t>> m_stack;
  int m_search = -1;
};

}  // namespace

namespace {

/// Takes away, again and again, nodes that hang on a single constraint: these are as short as they
/// may be in every best solution, and class diagrams consist of them for a good part.
class Peeling {
 public:
  Peeling(int nodes, const std::vector<Constraint>& constraints)
      : m_constraints(constraints), m_core(nodes, 0) {
    const Adjacency incident = makeAdjacency(nodes, [&](auto&& add) {
      for (int i = 0; i < count(constraints); ++i) {
        add(constraints[i].upper, i);
        add(constraints[i].lower, i);
      }
    });
    std::vector<int> degree(nodes);
    std::vector<int> ready;
    for (int n = 0; n < nodes; ++n) {
      degree[n] = incident.degree(n);
      if (degree[n] == 1) ready.push_back(n);
    }
    m_peeled.assign(constraints.size(), false);
    for (std::size_t next = 0; next < ready.size(); ++next) {
      const int leaf = ready[next];
      for (const int i : incident.of(leaf)) {
        if (m_peeled[i]) continue;
        m_peeled[i] = true;
        m_core[leaf] = -1;
        m_hanging.push_back({leaf, i});
        const int holder =
            constraints[i].upper == leaf ? constraints[i].lower : constraints[i].upper;
        if (--degree[holder] == 1) ready.push_back(holder);
      }
    }
    m_nodes = 0;
    for (int& n : m_core) {
      if (n >= 0) n = m_nodes++;
    }
  }

  [[nodiscard]] int nodes() const { return m_nodes; }
  [[nodiscard]] std::vector<Constraint> core() const {
    std::vector<Constraint> core;
    for (int i = 0; i < count(m_constraints); ++i) {
      if (m_peeled[i]) continue;
      core.push_back(m_constraints[i]);
      core.back().upper = m_core[core.back().upper];
      core.back().lower = m_core[core.back().lower];
    }
    return core;
  }

  /// Adds the values of what was taken away, and starts them all at 0.
  [[nodiscard]] std::vector<int> complete(const std::vector<int>& coreValues) const {
    std::vector<int> values(m_core.size(), 0);
    for (std::size_t n = 0; n < values.size(); ++n) {
      if (m_core[n] >= 0) values[n] = coreValues[m_core[n]];
    }
    for (auto it = m_hanging.rbegin(); it != m_hanging.rend(); ++it) {
      const Constraint& c = m_constraints[it->constraint];
      values[it->leaf] =
          c.upper == it->leaf ? values[c.lower] - c.length : values[c.upper] + c.length;
    }
    const int least = *std::min_element(values.begin(), values.end());
    for (int& value : values) value -= least;
    return values;
  }

 private:
  struct Hanging {
    int leaf;
    int constraint;
  };
  const std::vector<Constraint>& m_constraints;
  int m_nodes = 0;
  std::vector<int> m_core;  ///< of each node its number among those that stay, or -1
  std::vector<bool> m_peeled;
  std::vector<Hanging> m_hanging;
};

}  // namespace

std::vector<int> networkSimplex(int nodes, const std::vector<Constraint>& constraints,
                                std::int64_t budget) {
  if (nodes == 0) return {};
  const Peeling peeling(nodes, constraints);
  const std::vector<Constraint> core = peeling.core();
  return peeling.complete(Simplex(peeling.nodes(), core, budget).solve());
}

}  // namespace brisel::layout
