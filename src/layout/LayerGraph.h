#pragma once

#include <span>
#include <vector>

#include "layout/Layout.h"

/// The small graph that the steps of the layered layout hand on to each other.
namespace brisel::layout {

template <class T>
[[nodiscard]] int count(const std::vector<T>& items) {
  return static_cast<int>(items.size());
}

/// A line between two different boxes of one component. After the cycle removal "from" is the one
/// that has to lie above "to".
struct Arc {
  int from;
  int to;
  int edge;                  ///< index of the edge that it stands for
  bool inheritance = false;  ///< from is the super class
  bool reversed = false;     ///< turned round by the cycle removal
  EdgeKind kind = EdgeKind::association;
};

/// Which of the trunks of its upper box a line belongs to: 0 that of generalizations, 1 that of
/// realizations; -1: it leaves alone.
[[nodiscard]] inline int trunkOf(const Arc& arc) {
  if (!arc.inheritance || arc.reversed) return -1;
  return arc.kind == EdgeKind::realization ? 1 : 0;
}

/// Neighbours of every node in one array: those of node n are items[first[n]] to items[first[n+1]].
struct Adjacency {
  std::vector<int> first;
  std::vector<int> items;

  [[nodiscard]] std::span<const int> of(int node) const {
    return {items.data() + first[node], items.data() + first[node + 1]};
  }
  [[nodiscard]] std::span<int> of(int node) {
    return {items.data() + first[node], items.data() + first[node + 1]};
  }
  [[nodiscard]] int degree(int node) const { return first[node + 1] - first[node]; }
};

/// Builds an adjacency by counting: each(f) calls f(node, item) for every pair, twice alike.
template <class Each>
[[nodiscard]] Adjacency makeAdjacency(int nodes, Each&& each) {
  Adjacency a;
  a.first.assign(static_cast<std::size_t>(nodes) + 1, 0);
  each([&](int node, int) { ++a.first[node + 1]; });
  for (int n = 0; n < nodes; ++n) a.first[n + 1] += a.first[n];
  a.items.resize(static_cast<std::size_t>(a.first[nodes]));
  std::vector<int> next(a.first.begin(), a.first.end() - 1);
  each([&](int node, int item) { a.items[next[node]++] = item; });
  return a;
}

/// One connected component of the input, with nodes and arcs numbered from zero.
struct Component {
  std::vector<int> boxes;      ///< index of each node's box in the input
  std::vector<double> width;   ///< of each node, room for loops at the right included
  std::vector<double> room;    ///< of each node, that room alone
  std::vector<double> height;  ///< of each node
  std::vector<Arc> arcs;

  [[nodiscard]] int nodes() const { return count(boxes); }
};

/// The lines at every node.
[[nodiscard]] inline Adjacency linesAtNodes(const Component& component) {
  return makeAdjacency(component.nodes(), [&](auto&& add) {
    for (int i = 0; i < count(component.arcs); ++i) {
      add(component.arcs[i].from, i);
      add(component.arcs[i].to, i);
    }
  });
}

/// A graph all of whose lines join neighbouring layers. Nodes up to "boxes" are boxes, those above
/// are bends of long lines; the bends of one line are numbered in sequence from top to bottom.
/// Lines of one trunk may share bends.
struct LayeredGraph {
  int boxes = 0;
  std::vector<int> layer;              ///< of each node, from the top
  std::vector<int> firstBend;          ///< of each arc; -1: it has none
  std::vector<std::vector<int>> rows;  ///< the nodes of each layer from left to right
  std::vector<int> position;           ///< of each node in its row
  Adjacency above;                     ///< neighbours in the layer above, one entry a line
  Adjacency below;

  [[nodiscard]] int nodes() const { return count(layer); }
  [[nodiscard]] bool isBend(int node) const { return node >= boxes; }
  /// The line passes layers and has no bends there.
  [[nodiscard]] bool isLeftOut(const Component& component, int line) const {
    const Arc& arc = component.arcs[line];
    return firstBend[line] < 0 && layer[arc.to] - layer[arc.from] > 1;
  }
  void numberRow(int row) {
    const auto& nodesOfRow = rows[row];
    for (int i = 0; i < count(nodesOfRow); ++i) position[nodesOfRow[i]] = i;
  }
};

}  // namespace brisel::layout
