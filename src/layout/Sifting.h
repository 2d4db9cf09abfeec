#pragma once

#include <cstdint>
#include <vector>

#include "layout/LayerGraph.h"
#include "layout/Progress.h"

namespace brisel::layout {

/// Moves single nodes within their row to where they cross least, both sides looked at together.
/// Matuszewski, Schoenfeld, Molitor: Using sifting for k-layer straightline crossing minimization,
/// 1999.
class Sifter {
 public:
  /// The graph outlives the sifter.
  explicit Sifter(LayeredGraph& graph) : m_graph(graph) {}

  /// Sifts every node of a row once. Pre: rows and positions are filled. Post: the row holds the
  /// same nodes; gives by how many crossings fewer there are, at least 0.
  std::int64_t siftRow(int row);
  /// Elementary steps done so far.
  [[nodiscard]] std::int64_t work() const { return m_work; }

 private:
  void collectEnds(int row);
  void weighEnds(int node, int row);
  void weighSide(std::span<const int> own, int base, int size);
  std::int64_t moveToBest(int node, std::vector<int>& nodes);

  LayeredGraph& m_graph;
  std::int64_t m_work = 0;
  std::vector<int> m_first;   ///< of each slot in the row as it was: its part of m_ends
  std::vector<int> m_ends;    ///< positions above, then those below behind all of the row above
  std::vector<int> m_slot;    ///< of each node of the row: its slot; indexed by node
  std::vector<int> m_weight;  ///< of each end: what it adds when the sifted node passes it
  std::vector<int> m_sequence;
};

/// Sifts all rows until a round gains less than a small share, or "work" elementary steps are done.
/// Post: every row holds the same nodes as before; there are no more crossings than before.
void siftRows(LayeredGraph& graph, std::int64_t work, const Step& step = {});

}  // namespace brisel::layout
