#include "layout/Blocks.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brisel::layout {
namespace {

/// Marks, of the bends of a row that "may" be joined to those above, the most whose pieces do not
/// cross.
template <class May>
void keepStraight(const LayeredGraph& graph, const std::vector<int>& row, May&& may,
                  std::vector<bool>& kept) {
  std::vector<int> ends;  // of the best sequence of each length, the bend with the leftmost start
  std::vector<int> before(row.size(), -1);
  const auto start = [&](int i) { return graph.position[graph.above.of(row[i])[0]]; };
  for (int i = 0; i < count(row); ++i) {
    if (!may(row[i])) continue;
    const auto at = std::lower_bound(ends.begin(), ends.end(), start(i),
                                     [&](int end, int s) { return start(end) < s; });
    if (at != ends.begin()) before[i] = *(at - 1);
    if (at == ends.end()) {
      ends.push_back(i);
    } else {
      *at = i;
    }
  }
  for (int i = ends.empty() ? -1 : ends.back(); i >= 0; i = before[i]) kept[row[i]] = true;
}

/// Numbers blocks from the left to the right; "head" is the topmost node of each node's block.
std::vector<int> numbered(const LayeredGraph& graph, const std::vector<int>& head) {
  const Adjacency members = makeAdjacency(graph.nodes(), [&](auto&& add) {
    for (int n = 0; n < graph.nodes(); ++n) add(head[n], n);
  });
  std::vector<int> open(head.size(), 0);
  std::vector<int> ready;
  for (int n = graph.nodes() - 1; n >= 0; --n) {
    for (const int member : members.of(n)) open[n] += graph.position[member] > 0;
    if (head[n] == n && open[n] == 0) ready.push_back(n);
  }
  std::vector<int> number(head.size(), 0);
  int next = 0;
  while (!ready.empty()) {
    const int block = ready.back();
    ready.pop_back();
    number[block] = next++;
    for (const int member : members.of(block)) {
      const auto& row = graph.rows[graph.layer[member]];
      const int right = graph.position[member] + 1;
      if (right < count(row) && --open[head[row[right]]] == 0) ready.push_back(head[row[right]]);
    }
  }
  for (std::size_t n = 0; n < head.size(); ++n) {
    if (head[n] != static_cast<int>(n)) number[n] = number[head[n]];
  }
  return number;
}

}  // namespace

Blocks straightBlocks(const LayeredGraph& graph, const std::vector<double>& x, double lean) {
  const auto may = [&](int node) {
    if (!graph.isBend(node)) return false;
    const int upper = graph.above.of(node)[0];
    return graph.isBend(upper) && std::abs(x[node] - x[upper]) <= lean;
  };
  std::vector<bool> kept(graph.layer.size(), false);
  for (const auto& row : graph.rows) keepStraight(graph, row, may, kept);
  std::vector<int> head(graph.layer.size());
  int blocks = 0;
  for (int n = 0; n < graph.nodes(); ++n) {
    head[n] = kept[n] ? head[n - 1] : n;  // the bends of a line are numbered in sequence
    blocks += !kept[n];
  }
  Blocks result;
  result.of = numbered(graph, head);
  result.members = makeAdjacency(blocks, [&](auto&& add) {
    for (int n = 0; n < graph.nodes(); ++n) add(result.of[n], n);
  });
  return result;
}

}  // namespace brisel::layout
