#include "layout/RowPlacement.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "layout/Blocks.h"

namespace brisel::layout {
namespace {

class Placer {
 public:
  Placer(const LayeredGraph& graph, const std::vector<double>& width, const RowGaps& gaps)
      : m_graph(graph), m_width(width), m_gaps(gaps), m_x(graph.layer.size(), 0) {}

  std::vector<double> place() {
    for (const auto& row : m_graph.rows) packInMiddle(row);
    const int rounds = std::clamp(kMostVisits / m_graph.nodes(), kFewestRounds, kMostRounds);
    for (int round = 0; round < rounds; ++round) {
      const double behind = round < rounds / 2 ? 0.02 : 1;
      sweep(true, 1, behind);
      sweep(false, behind, 1);
    }
    straighten();
    double left = std::numeric_limits<double>::infinity();
    for (int n = 0; n < m_graph.nodes(); ++n) left = std::min(left, m_x[n] - m_width[n] / 2);
    for (double& x : m_x) x -= left;
    return std::move(m_x);
  }

 private:
  static constexpr int kMostRounds = 24;
  static constexpr int kFewestRounds = 6;
  static constexpr int kMostVisits = 5'000'000;
  static constexpr int kStraightenings = 8;
  /// More makes fewer bends and wider drawings.
  static constexpr double kLean = 4;

  struct Block {
    double sum;
    double weight;
    int end;
    [[nodiscard]] double mean() const { return sum / weight; }
  };

  [[nodiscard]] double separation(int left, int right) const {
    const bool boxes = !m_graph.isBend(left) && !m_graph.isBend(right);
    return (m_width[left] + m_width[right]) / 2 + (boxes ? m_gaps.box : m_gaps.line);
  }

  void packInMiddle(const std::vector<int>& row) {
    for (int i = 1; i < count(row); ++i) {
      m_x[row[i]] = m_x[row[i - 1]] + separation(row[i - 1], row[i]);
    }
    const double middle = (m_x[row.front()] + m_x[row.back()]) / 2;
    for (const int n : row) m_x[n] -= middle;
  }

  /// The pull of a short line: strongest inside a long one, so that this becomes straight.
  [[nodiscard]] double pull(int a, int b) const {
    const int bends = (m_graph.isBend(a) ? 1 : 0) + (m_graph.isBend(b) ? 1 : 0);
    return bends == 2 ? 8 : bends == 1 ? 2 : 1;
  }

  void sweep(bool down, double pullAbove, double pullBelow) {
    const int rows = count(m_graph.rows);
    for (int k = 0; k < rows; ++k) {
      const auto& row = m_graph.rows[down ? k : rows - 1 - k];
      wish(row, pullAbove, pullBelow);
      settle(row);
    }
  }

  /// Where the neighbours pull each node of a row, and how strongly.
  void wish(const std::vector<int>& row, double pullAbove, double pullBelow) {
    m_wish.clear();
    m_weight.clear();
    for (const int node : row) {
      double sum = 0;
      double weight = 0;
      const auto add = [&](const Adjacency& side, double factor) {
        for (const int other : side.of(node)) {
          const double w = pull(node, other) * factor;
          sum += w * m_x[other];
          weight += w;
        }
      };
      add(m_graph.above, pullAbove * m_gaps.up);
      add(m_graph.below, pullBelow);
      if (weight == 0) {
        weight = 0.01;
        sum = weight * m_x[node];
      }
      m_wish.push_back(sum / weight);
      m_weight.push_back(weight);
    }
  }

  /// The places nearest to the wishes, in weighted squares, that keep order and gaps: neighbours
  /// that would come too near are joined to a block.
  void settle(const std::vector<int>& row) {
    m_offset.assign(1, 0);
    for (int i = 1; i < count(row); ++i) {
      m_offset.push_back(m_offset.back() + separation(row[i - 1], row[i]));
    }
    m_blocks.clear();
    for (int i = 0; i < count(row); ++i) {
      m_blocks.push_back({m_weight[i] * (m_wish[i] - m_offset[i]), m_weight[i], i + 1});
      while (m_blocks.size() > 1) {
        const Block last = m_blocks.back();
        Block& before = m_blocks[m_blocks.size() - 2];
        if (before.mean() <= last.mean()) break;
        before = {before.sum + last.sum, before.weight + last.weight, last.end};
        m_blocks.pop_back();
      }
    }
    int i = 0;
    for (const Block& block : m_blocks) {
      for (; i < block.end; ++i) m_x[row[i]] = block.mean() + m_offset[i];
    }
  }

  /// Puts the bends of a block on one x, and then moves blocks as far as their neighbours in the
  /// rows leave room.
  void straighten() {
    m_members = straightBlocks(m_graph, m_x, kLean * m_gaps.box).members;
    align();
    for (int round = 0; round < kStraightenings; ++round) {
      const int blocks = count(m_members.first) - 1;
      for (int k = 0; k < blocks; ++k) settleBlock(round % 2 == 0 ? k : blocks - 1 - k);
    }
  }

  /// Every block to its middle, pushed to the right and to the left until all keep their gaps: what
  /// is half way between the two keeps them as well.
  void align() {
    const int blocks = count(m_members.first) - 1;
    std::vector<double> middle;
    for (int b = 0; b < blocks; ++b) {
      double sum = 0;
      for (const int n : m_members.of(b)) sum += m_x[n];
      middle.push_back(sum / m_members.degree(b));
    }
    const auto put = [&](int b, double x) {
      for (const int n : m_members.of(b)) m_x[n] = x;
    };
    for (int b = 0; b < blocks; ++b) put(b, std::max(middle[b], leftRoom(b)));
    const std::vector<double> right = m_x;
    for (int b = blocks - 1; b >= 0; --b) put(b, std::min(middle[b], rightRoom(b)));
    for (std::size_t n = 0; n < m_x.size(); ++n) m_x[n] = (m_x[n] + right[n]) / 2;
  }

  void settleBlock(int b) {
    const double low = leftRoom(b);
    const double high = std::max(low, rightRoom(b));
    const int first = m_members.of(b).front();
    const double wanted = m_graph.isBend(first) ? lineWish(b) : boxWish(first);
    const double x = std::clamp(wanted, low, high);
    for (const int n : m_members.of(b)) m_x[n] = x;
  }

  [[nodiscard]] double boxWish(int box) {
    wish({box}, 1, 1);
    return m_wish[0];
  }

  /// Where a line meets what stands above and below without a bend, or at least one of them.
  [[nodiscard]] double lineWish(int b) const {
    const int top = m_graph.above.of(m_members.of(b).front())[0];
    const int bottom = m_graph.below.of(m_members.of(b).back())[0];
    const double x = m_x[m_members.of(b).front()];
    const double atTop = nearest(top, x);
    const double atBottom = nearest(bottom, x);
    if (atTop == x || atBottom == x) return atTop == x ? atBottom : atTop;
    return std::abs(atTop - x) < std::abs(atBottom - x) ? atTop : atBottom;
  }
  /// The place nearest to x where a line meets a node straight.
  [[nodiscard]] double nearest(int node, double x) const {
    const double reach = 0.4 * m_width[node];
    return std::clamp(x, m_x[node] - reach, m_x[node] + reach);
  }

  [[nodiscard]] double leftRoom(int b) const {
    double room = -std::numeric_limits<double>::infinity();
    for (const int node : m_members.of(b)) {
      const auto& row = m_graph.rows[m_graph.layer[node]];
      const int i = m_graph.position[node];
      if (i > 0) room = std::max(room, m_x[row[i - 1]] + separation(row[i - 1], node));
    }
    return room;
  }
  [[nodiscard]] double rightRoom(int b) const {
    double room = std::numeric_limits<double>::infinity();
    for (const int node : m_members.of(b)) {
      const auto& row = m_graph.rows[m_graph.layer[node]];
      const int i = m_graph.position[node];
      if (i + 1 < count(row)) room = std::min(room, m_x[row[i + 1]] - separation(node, row[i + 1]));
    }
    return room;
  }

  const LayeredGraph& m_graph;
  const std::vector<double>& m_width;
  const RowGaps& m_gaps;
  std::vector<double> m_x;
  std::vector<double> m_wish;
  std::vector<double> m_weight;
  std::vector<double> m_offset;
  std::vector<Block> m_blocks;
  Adjacency m_members;  ///< of each straight block
};

}  // namespace

std::vector<double> placeInRows(const LayeredGraph& graph, const std::vector<double>& width,
                                const RowGaps& gaps) {
  return Placer(graph, width, gaps).place();
}

}  // namespace brisel::layout
