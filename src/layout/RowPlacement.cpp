#include "layout/RowPlacement.h"

#include <algorithm>
#include <array>
#include <limits>
#include <tuple>
#include <utility>

namespace brisel::layout {
namespace {

/// One of the four extreme placements: aligned with the row above or below, packed from the left
/// or from the right.
struct Direction {
  bool fromBelow;
  bool fromRight;
};

class Placer {
 public:
  Placer(const LayeredGraph& graph, const std::vector<double>& width, const RowGaps& gaps)
      : m_graph(graph),
        m_width(width),
        m_gaps(gaps),
        m_leftBound(graph.layer.size()),
        m_rightBound(graph.layer.size()) {
    boundStraightLines();
  }

  std::vector<double> place() {
    std::array<std::vector<double>, 4> extremes;
    for (int i = 0; i < 4; ++i) extremes[i] = placeFrom({i >= 2, i % 2 == 1});
    return balanced(extremes);
  }

 private:
  [[nodiscard]] int nodes() const { return m_graph.nodes(); }
  [[nodiscard]] double separation(int left, int right) const {
    const bool boxes = !m_graph.isBend(left) && !m_graph.isBend(right);
    return (m_width[left] + m_width[right]) / 2 + (boxes ? m_gaps.box : m_gaps.line);
  }

  /// A short line that crosses the inner part of a long one is never drawn straight: finds for
  /// each node between which positions of the row above its straight lines may end.
  void boundStraightLines() {
    for (int row = 0; row + 1 < count(m_graph.rows); ++row) {
      const auto& lower = m_graph.rows[row + 1];
      int first = 0;
      int leftBound = 0;
      for (int i = 0; i < count(lower); ++i) {
        const int inner = innerAbove(lower[i]);
        const bool last = i + 1 == count(lower);
        if (inner < 0 && !last) continue;
        const int rightBound = inner < 0 ? count(m_graph.rows[row]) : m_graph.position[inner];
        for (; first <= i; ++first) {
          m_leftBound[lower[first]] = leftBound;
          m_rightBound[lower[first]] = rightBound;
        }
        leftBound = rightBound;
      }
    }
  }

  [[nodiscard]] int innerAbove(int node) const {
    if (!m_graph.isBend(node)) return -1;
    const int above = m_graph.above.of(node)[0];
    return m_graph.isBend(above) ? above : -1;
  }

  [[nodiscard]] bool isCrossed(int upper, int lower) const {
    const int at = m_graph.position[upper];
    return at < m_leftBound[lower] || at > m_rightBound[lower];
  }

  std::vector<double> placeFrom(Direction direction) {
    align(direction);
    orderBlocks(direction);
    std::vector<double> x = pack(direction);
    if (direction.fromRight) {
      for (double& value : x) value = -value;
    }
    return x;
  }

  [[nodiscard]] int at(int row, int i, bool fromRight) const {
    const auto& nodesOfRow = m_graph.rows[row];
    return nodesOfRow[fromRight ? count(nodesOfRow) - 1 - i : i];
  }

  /// Joins nodes with the median of their neighbours into blocks; m_root is each node's block.
  void align(Direction direction) {
    m_root.resize(nodes());
    for (int n = 0; n < nodes(); ++n) m_root[n] = n;
    const int rows = count(m_graph.rows);
    std::vector<int> near;
    for (int k = 1; k < rows; ++k) {
      const int row = direction.fromBelow ? rows - 1 - k : k;
      int last = -1;
      for (int i = 0; i < count(m_graph.rows[row]); ++i) {
        const int node = at(row, i, direction.fromRight);
        const auto fixed = (direction.fromBelow ? m_graph.below : m_graph.above).of(node);
        if (fixed.empty()) continue;
        near.assign(fixed.begin(), fixed.end());
        std::sort(near.begin(), near.end(),
                  [&](int a, int b) { return sided(a, direction) < sided(b, direction); });
        for (const int m : {(count(near) - 1) / 2, count(near) / 2}) {
          const int other = near[m];
          if (sided(other, direction) <= last) continue;
          const bool below = direction.fromBelow;
          if (isCrossed(below ? node : other, below ? other : node)) continue;
          m_root[node] = m_root[other];
          last = sided(other, direction);
          break;
        }
      }
    }
  }

  [[nodiscard]] int sided(int node, Direction direction) const {
    const int position = m_graph.position[node];
    return direction.fromRight ? count(m_graph.rows[m_graph.layer[node]]) - 1 - position : position;
  }

  /// Blocks in an order in which each comes after all those before it in any row.
  void orderBlocks(Direction direction) {
    m_after = makeAdjacency(nodes(), [&](auto&& add) {
      for (int row = 0; row < count(m_graph.rows); ++row) {
        for (int i = 0; i + 1 < count(m_graph.rows[row]); ++i) {
          add(m_root[at(row, i, direction.fromRight)], at(row, i + 1, direction.fromRight));
        }
      }
    });
    std::vector<int> open(m_root.size(), 0);
    for (const int node : m_after.items) ++open[m_root[node]];
    m_sequence.clear();
    for (int n = 0; n < nodes(); ++n) {
      if (m_root[n] == n && open[n] == 0) m_sequence.push_back(n);
    }
    for (std::size_t next = 0; next < m_sequence.size(); ++next) {
      for (const int node : m_after.of(m_sequence[next])) {
        if (--open[m_root[node]] == 0) m_sequence.push_back(m_root[node]);
      }
    }
  }

  /// Packs the blocks to one side, then moves each back as far as those after it allow.
  std::vector<double> pack(Direction direction) {
    std::vector<double> x(m_root.size(), 0);
    const auto apart = [&](int node) {
      const int i = sided(node, direction);
      return separation(at(m_graph.layer[node], i - 1, direction.fromRight), node);
    };
    for (const int block : m_sequence) {
      for (const int node : m_after.of(block)) {
        const int next = m_root[node];
        x[next] = std::max(x[next], x[block] + apart(node));
      }
    }
    for (auto it = m_sequence.rbegin(); it != m_sequence.rend(); ++it) {
      double room = std::numeric_limits<double>::infinity();
      for (const int node : m_after.of(*it)) {
        room = std::min(room, x[m_root[node]] - apart(node));
      }
      if (room < std::numeric_limits<double>::infinity()) x[*it] = std::max(x[*it], room);
    }
    for (int n = 0; n < nodes(); ++n) x[n] = x[m_root[n]];
    return x;
  }

  /// The mean of the two middle ones of four placements, each shifted to the narrowest one.
  std::vector<double> balanced(std::array<std::vector<double>, 4>& extremes) {
    std::array<double, 4> low{};
    std::array<double, 4> high{};
    for (int i = 0; i < 4; ++i) std::tie(low[i], high[i]) = bounds(extremes[i]);
    int narrowest = 0;
    for (int i = 1; i < 4; ++i) {
      if (high[i] - low[i] < high[narrowest] - low[narrowest]) narrowest = i;
    }
    for (int i = 0; i < 4; ++i) {
      const double shift = i % 2 == 0 ? low[narrowest] - low[i] : high[narrowest] - high[i];
      for (double& value : extremes[i]) value += shift;
    }
    std::vector<double> x(m_root.size());
    for (int n = 0; n < nodes(); ++n) {
      std::array<double, 4> four{extremes[0][n], extremes[1][n], extremes[2][n], extremes[3][n]};
      std::sort(four.begin(), four.end());
      x[n] = (four[1] + four[2]) / 2;
    }
    const double left = bounds(x).first;
    for (double& value : x) value -= left;
    return x;
  }

  [[nodiscard]] std::pair<double, double> bounds(const std::vector<double>& x) const {
    std::pair<double, double> b{std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity()};
    for (int n = 0; n < nodes(); ++n) {
      b.first = std::min(b.first, x[n] - m_width[n] / 2);
      b.second = std::max(b.second, x[n] + m_width[n] / 2);
    }
    return b;
  }

  const LayeredGraph& m_graph;
  const std::vector<double>& m_width;
  const RowGaps& m_gaps;
  std::vector<int> m_leftBound;
  std::vector<int> m_rightBound;
  std::vector<int> m_root;
  Adjacency m_after;  ///< of each block the nodes right after its own
  std::vector<int> m_sequence;
};

}  // namespace

std::vector<double> placeInRows(const LayeredGraph& graph, const std::vector<double>& width,
                                const RowGaps& gaps) {
  return Placer(graph, width, gaps).place();
}

}  // namespace brisel::layout
