#include "layout/RowPlacement.h"

#include <algorithm>
#include <limits>

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
    for (int round = 0; round < kStraightenings; ++round) {
      straighten();
      sweepBoxes();
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
  static constexpr int kStraightenings = 6;

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
      add(m_graph.above, pullAbove);
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

  /// Puts bends that follow each other on one x as far as their neighbours leave room.
  void straighten() {
    for (int first = m_graph.boxes; first < m_graph.nodes();) {
      double low = leftRoom(first);
      double high = rightRoom(first);
      double sum = m_x[first];
      int end = first + 1;
      for (; end < m_graph.nodes() && m_graph.above.of(end)[0] == end - 1; ++end) {
        const double l = std::max(low, leftRoom(end));
        const double h = std::min(high, rightRoom(end));
        if (l > h) break;
        low = l;
        high = h;
        sum += m_x[end];
      }
      const double x =
          std::max(low, std::min(sum / (end - first), high));  // low may exceed by rounding
      for (; first < end; ++first) m_x[first] = x;
    }
  }

  [[nodiscard]] double leftRoom(int node) const {
    const auto& row = m_graph.rows[m_graph.layer[node]];
    const int i = m_graph.position[node];
    if (i == 0) return -std::numeric_limits<double>::infinity();
    return m_x[row[i - 1]] + separation(row[i - 1], node);
  }
  [[nodiscard]] double rightRoom(int node) const {
    const auto& row = m_graph.rows[m_graph.layer[node]];
    const int i = m_graph.position[node];
    if (i + 1 == count(row)) return std::numeric_limits<double>::infinity();
    return m_x[row[i + 1]] - separation(node, row[i + 1]);
  }

  /// Moves boxes towards their neighbours while bends stand.
  void sweepBoxes() {
    for (const auto& row : m_graph.rows) {
      wish(row, 1, 1);
      for (int i = 0; i < count(row); ++i) {
        if (m_graph.isBend(row[i])) continue;
        const double low = leftRoom(row[i]);
        m_x[row[i]] = std::max(low, std::min(m_wish[i], rightRoom(row[i])));
      }
    }
  }

  const LayeredGraph& m_graph;
  const std::vector<double>& m_width;
  const RowGaps& m_gaps;
  std::vector<double> m_x;
  std::vector<double> m_wish;
  std::vector<double> m_weight;
  std::vector<double> m_offset;
  std::vector<Block> m_blocks;
};

}  // namespace

std::vector<double> placeInRows(const LayeredGraph& graph, const std::vector<double>& width,
                                const RowGaps& gaps) {
  return Placer(graph, width, gaps).place();
}

}  // namespace brisel::layout
