#include "layout/CrossingReduction.h"

#include <algorithm>
#include <utility>

#include "layout/Numbers.h"
#include "layout/Sifting.h"

namespace brisel::layout {
namespace {

/// Counts inversions in the order in which the lines of one row end in the next.
class BilayerCounter {
 public:
  std::int64_t count(const LayeredGraph& graph, int row) {
    if (row + 1 >= layout::count(graph.rows)) return 0;
    const int ends = layout::count(graph.rows[row + 1]);
    int leaves = 1;
    while (leaves < ends) leaves *= 2;
    m_tree.assign(static_cast<std::size_t>(2) * leaves, 0);
    std::int64_t crossed = 0;
    for (const int node : graph.rows[row]) {
      m_ends.clear();
      for (const int below : graph.below.of(node)) m_ends.push_back(graph.position[below]);
      std::sort(m_ends.begin(), m_ends.end());
      for (const int end : m_ends) crossed += insert(leaves + end);
    }
    return crossed;
  }

 private:
  /// Adds an end and gives the number of ends to its right.
  std::int64_t insert(int slot) {
    std::int64_t right = 0;
    ++m_tree[slot];
    while (slot > 1) {
      if (slot % 2 == 0) right += m_tree[slot + 1];
      slot /= 2;
      ++m_tree[slot];
    }
    return right;
  }

  std::vector<int> m_tree;
  std::vector<int> m_ends;
};

class Sweeper {
 public:
  Sweeper(LayeredGraph& graph, const Step& step)
      : m_graph(graph),
        m_step(step),
        m_sifter(graph),
        m_numbers(1),
        m_key(graph.layer.size()),
        m_best(graph.rows) {}

  void run() {
    m_least = crossings(m_graph);
    m_most = std::min(kMostWork, kWork + kWorkPerPair * m_graph.nodes() * m_graph.nodes());
    sweepUntilIdle();
    restoreBest();
    siftUntilIdle();
    const int restarts = std::min(kMostRestarts, m_graph.nodes());
    for (int round = 0; round < restarts && m_least > 0 && hasTime(); ++round) {
      if (round % 2 == 0) {
        restoreBest();
        sweepOnce(true, round % 4 == 0);
        sweepOnce(false, round % 4 == 0);
      } else {
        shuffle();
        sweepUntilIdle();
      }
      siftUntilIdle();
    }
    restoreBest();
  }

 private:
  static constexpr int kMostSweeps = 60;
  static constexpr int kIdleSweeps = 8;
  static constexpr int kMostRestarts = 40;
  static constexpr std::int64_t kWork = 20'000'000;
  static constexpr std::int64_t kWorkPerPair = 3;
  static constexpr std::int64_t kStepsPerNode = 80;  ///< of a sweep, as sifting counts steps
  static constexpr std::int64_t kMostWork = 1'300'000'000;

  void sweepUntilIdle() {
    std::int64_t least = crossings(m_graph);
    int idle = 0;
    for (int sweep = 0; sweep < kMostSweeps && idle < kIdleSweeps && m_least > 0 && hasTime();
         ++sweep) {
      sweepOnce(sweep % 2 == 0, sweep % 4 >= 2);
      exchangeNeighbours();
      const std::int64_t now = crossings(m_graph);
      idle = now < least - least / 200 ? 0 : idle + 1;
      least = std::min(least, now);
      keepIfBest(now);
    }
  }

  void siftUntilIdle() {
    std::int64_t now = crossings(m_graph);
    const int rows = count(m_graph.rows);
    for (int round = 0; round < kMostSweeps && now > 0; ++round) {
      std::int64_t gained = 0;
      for (int k = 0; k < rows && hasTime(); ++k) {
        gained += m_sifter.siftRow(round % 2 == 0 ? k : rows - 1 - k);
      }
      now -= gained;
      if (gained <= now / 500) break;
    }
    keepIfBest(now);
  }

  /// Bounds the work, not the time, so that the same graph always ends the same.
  [[nodiscard]] bool hasTime() const {
    const std::int64_t work = m_work + m_sifter.work();
    if (m_step) m_step(static_cast<double>(work) / static_cast<double>(m_most));
    return work < m_most;
  }

  void keepIfBest(std::int64_t now) {
    if (now >= m_least) return;
    m_least = now;
    m_best = m_graph.rows;
  }
  void restoreBest() {
    m_graph.rows = m_best;
    for (int row = 0; row < count(m_graph.rows); ++row) m_graph.numberRow(row);
  }

  void shuffle() {
    for (int row = 0; row < count(m_graph.rows); ++row) {
      auto& nodes = m_graph.rows[row];
      for (std::size_t i = nodes.size(); i > 1; --i) {
        std::swap(nodes[i - 1], nodes[m_numbers.next() % i]);
      }
      m_graph.numberRow(row);
    }
  }

  void sweepOnce(bool down, bool turnTies) {
    m_work += kStepsPerNode * m_graph.nodes();
    const int rows = count(m_graph.rows);
    for (int k = 1; k < rows; ++k) {
      const int row = down ? k : rows - 1 - k;
      orderRow(row, down ? m_graph.above : m_graph.below, turnTies);
    }
  }

  /// Sorts one row by the mean position of the neighbours in the fixed row; a node without any
  /// stays at its place.
  void orderRow(int row, const Adjacency& fixed, bool turnTies) {
    auto& nodes = m_graph.rows[row];
    m_sorted.clear();
    for (const int node : nodes) {
      const auto near = fixed.of(node);
      if (near.empty()) continue;
      double sum = 0;
      for (const int other : near) sum += m_graph.position[other];
      m_key[node] = sum / static_cast<double>(near.size());
      m_sorted.push_back(node);
    }
    if (turnTies) std::reverse(m_sorted.begin(), m_sorted.end());
    std::stable_sort(m_sorted.begin(), m_sorted.end(),
                     [&](int a, int b) { return m_key[a] < m_key[b]; });
    auto next = m_sorted.begin();
    for (int& node : nodes) {
      if (fixed.degree(node) > 0) node = *next++;
    }
    m_graph.numberRow(row);
  }

  void exchangeNeighbours() {
    for (int round = 0; round < 4; ++round) {
      bool any = false;
      m_work += kStepsPerNode / 2 * m_graph.nodes();
      for (int row = 0; row < count(m_graph.rows); ++row) any |= exchangeInRow(row);
      if (!any) break;
    }
  }

  bool exchangeInRow(int row) {
    auto& nodes = m_graph.rows[row];
    bool any = false;
    for (int i = 0; i + 1 < count(nodes); ++i) {
      const int left = nodes[i];
      const int right = nodes[i + 1];
      if (gain(left, right) <= 0) continue;
      std::swap(nodes[i], nodes[i + 1]);
      m_graph.position[right] = i;
      m_graph.position[left] = i + 1;
      any = true;
    }
    return any;
  }

  /// Crossings saved when two neighbours change places.
  std::int64_t gain(int left, int right) {
    return gain(m_graph.above, left, right) + gain(m_graph.below, left, right);
  }
  std::int64_t gain(const Adjacency& side, int left, int right) {
    const auto l = side.of(left);
    const auto r = side.of(right);
    if (l.empty() || r.empty()) return 0;
    if (l.size() == 1 && r.size() == 1) {
      const int a = m_graph.position[l[0]];
      const int b = m_graph.position[r[0]];
      return (a > b) - (a < b);
    }
    sortedPositions(l, m_left);
    sortedPositions(r, m_right);
    return inversions(m_left, m_right) - inversions(m_right, m_left);
  }

  void sortedPositions(std::span<const int> nodes, std::vector<int>& into) {
    into.clear();
    for (const int n : nodes) into.push_back(m_graph.position[n]);
    std::sort(into.begin(), into.end());
  }

  /// Pairs of which the left one's end lies right of the right one's.
  static std::int64_t inversions(const std::vector<int>& left, const std::vector<int>& right) {
    std::int64_t pairs = 0;
    std::size_t smaller = 0;
    for (const int end : left) {
      while (smaller < right.size() && right[smaller] < end) ++smaller;
      pairs += static_cast<std::int64_t>(smaller);
    }
    return pairs;
  }

  LayeredGraph& m_graph;
  const Step& m_step;
  Sifter m_sifter;
  Numbers m_numbers;
  std::int64_t m_least = 0;
  std::int64_t m_most = 0;
  std::int64_t m_work = 0;
  std::vector<double> m_key;
  std::vector<std::vector<int>> m_best;
  std::vector<int> m_sorted;
  std::vector<int> m_left;
  std::vector<int> m_right;
};

}  // namespace

std::int64_t crossings(const LayeredGraph& graph) {
  BilayerCounter counter;
  std::int64_t sum = 0;
  for (int row = 0; row < count(graph.rows); ++row) sum += counter.count(graph, row);
  return sum;
}

void reduceCrossings(LayeredGraph& graph, const Step& step) { Sweeper(graph, step).run(); }

}  // namespace brisel::layout
