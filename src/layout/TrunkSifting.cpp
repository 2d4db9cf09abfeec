#include "layout/TrunkSifting.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include "layout/Comb.h"

namespace brisel::layout {
namespace {

/// Lines from a node to the next row that leave it at one place.
struct Net {
  int upper;
  std::vector<int> lower;
};

class TrunkSifter {
 public:
  TrunkSifter(const Component& component, LayeredGraph& graph, std::int64_t work)
      : m_graph(graph), m_work(work) {
    for (const auto& row : graph.rows) m_share.push_back(0.9 / (count(row) + 1));
    collectNets(component);
  }

  void run() {
    constexpr int kMostRounds = 20;
    const int rows = count(m_graph.rows);
    for (int round = 0; round < kMostRounds; ++round) {
      int gained = 0;
      for (int k = 0; k < rows; ++k) gained += siftRow(round % 2 == 0 ? k : rows - 1 - k);
      if (gained == 0) break;
    }
  }

 private:
  void collectNets(const Component& component) {
    std::map<std::pair<int, int>, int> trunks;
    const auto enter = [&](int upper, int lower, int trunk) {
      if (trunk >= 0) {
        const auto [known, isNew] = trunks.try_emplace({upper, trunk}, count(m_nets));
        if (!isNew) {
          m_nets[known->second].lower.push_back(lower);
          return;
        }
      }
      m_nets.push_back({upper, {lower}});
    };
    for (int i = 0; i < count(component.arcs); ++i) {
      const Arc& arc = component.arcs[i];
      const int bends = m_graph.layer[arc.to] - m_graph.layer[arc.from] - 1;
      const int first = m_graph.firstBend[i];
      if (first < 0 && bends > 0) continue;
      enter(arc.from, bends > 0 ? first : arc.to, trunkOf(arc));
      for (int k = 0; k < bends; ++k)
        enter(first + k, k + 1 < bends ? first + k + 1 : arc.to, trunkOf(arc));
    }
    m_above = makeAdjacency(m_graph.nodes(), [&](auto&& add) {
      for (int n = 0; n < count(m_nets); ++n) {
        const std::set<int> ends(m_nets[n].lower.begin(), m_nets[n].lower.end());
        for (const int lower : ends) add(lower, n);
      }
    });
    m_below = makeAdjacency(m_graph.nodes(), [&](auto&& add) {
      for (int n = 0; n < count(m_nets); ++n) add(m_nets[n].upper, n);
    });
  }

  /// Lines meet a box in the order of their other ends, which stand in that row.
  [[nodiscard]] double place(int node, int other, int row) const {
    return m_graph.position[node] + aside(other, row);
  }
  [[nodiscard]] double aside(int other, int row) const { return m_share[row] * (other + 1) - 0.45; }
  /// Of a line that leaves alone.
  [[nodiscard]] double topOf(const Net& net) const {
    return place(net.upper, m_graph.position[net.lower[0]], m_graph.layer[net.upper] + 1);
  }
  [[nodiscard]] double bottomOf(const Net& net) const {
    return place(net.lower[0], m_graph.position[net.upper], m_graph.layer[net.upper]);
  }

  void follow(const Net& net, Comb& comb) {
    const int row = m_graph.layer[net.upper];
    comb.bottoms.clear();
    for (const int lower : net.lower) comb.bottoms.push_back(m_graph.position[lower]);
    std::sort(comb.bottoms.begin(), comb.bottoms.end());
    const auto middle = static_cast<int>(comb.bottoms[comb.bottoms.size() / 2]);
    comb.top = place(net.upper, middle, row + 1);
    const double by = aside(m_graph.position[net.upper], row);
    for (double& bottom : comb.bottoms) bottom += by;
  }

  int crossings(int a, int b) {
    const Net& one = m_nets[a];
    const Net& two = m_nets[b];
    if (one.lower.size() == 1 && two.lower.size() == 1) {
      --m_work;
      return (topOf(one) - topOf(two)) * (bottomOf(one) - bottomOf(two)) < 0 ? 1 : 0;
    }
    follow(one, m_one);
    follow(two, m_two);
    m_work -= m_one.lines() + m_two.lines();
    return std::min(m_one.crossingsAbove(m_two), m_two.crossingsAbove(m_one));
  }
  int crossings(std::span<const int> left, std::span<const int> right) {
    int sum = 0;
    for (const int a : left) {
      for (const int b : right) {
        if (a != b) sum += crossings(a, b);
      }
    }
    return sum;
  }
  int crossingsAt(int left, int right) {
    return crossings(m_above.of(left), m_above.of(right)) +
           crossings(m_below.of(left), m_below.of(right));
  }

  /// Exchanges the node at a place with the next one; gives how many crossings more there are.
  int exchange(std::vector<int>& nodes, int at) {
    const int left = nodes[at];
    const int right = nodes[at + 1];
    const int before = crossingsAt(left, right);
    std::swap(nodes[at], nodes[at + 1]);
    m_graph.position[right] = at;
    m_graph.position[left] = at + 1;
    return crossingsAt(left, right) - before;
  }

  int siftRow(int row) {
    auto& nodes = m_graph.rows[row];
    m_sequence = nodes;
    int gained = 0;
    for (const int node : m_sequence) {
      if (m_work <= 0) break;
      gained += sift(nodes, node);
    }
    return gained;
  }

  /// Moves a node to the right end, then to the left end, then where it was best.
  int sift(std::vector<int>& nodes, int node) {
    const int start = m_graph.position[node];
    int at = start;
    int now = 0;
    int least = 0;
    int best = start;
    const auto note = [&] {
      if (now < least) std::tie(least, best) = std::pair(now, at);
    };
    for (; at + 1 < count(nodes); note()) now += exchange(nodes, at++);
    for (; at > 0; note()) now += exchange(nodes, --at);
    const auto begin = nodes.begin();
    std::rotate(begin, begin + 1, begin + best + 1);
    m_graph.numberRow(m_graph.layer[node]);
    return -least;
  }

  LayeredGraph& m_graph;
  std::int64_t m_work;
  std::vector<Net> m_nets;
  Adjacency m_above;  ///< nets of each node
  Adjacency m_below;
  std::vector<double> m_share;  ///< of each row, how far apart lines to it meet a box
  Comb m_one;
  Comb m_two;
  std::vector<int> m_sequence;
};

}  // namespace

void siftTrunks(const Component& component, LayeredGraph& graph, std::int64_t work) {
  TrunkSifter(component, graph, work).run();
}

}  // namespace brisel::layout
