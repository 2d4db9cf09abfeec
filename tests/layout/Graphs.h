#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "layout/Layout.h"

/// Graphs to lay out and what must hold of every drawing.
namespace brisel::layout::test {

struct NamedGraph {
  std::string name;
  Graph graph;
};

/// Class diagrams: inheritance trees, associations with preferred targets, packages.
[[nodiscard]] Graph classDiagram(int classes, std::uint64_t seed);
[[nodiscard]] Graph isolated(int boxes);
[[nodiscard]] Graph star(int leaves);
[[nodiscard]] Graph chain(int boxes);
[[nodiscard]] Graph circle(int boxes, EdgeKind kind);
[[nodiscard]] Graph clique(int boxes);
[[nodiscard]] Graph severalBetweenTwo(int lines, int loops);

/// Class diagrams of several sizes and seeds.
[[nodiscard]] std::vector<NamedGraph> usual();
/// What nobody draws but somebody sends.
[[nodiscard]] std::vector<NamedGraph> hostile();

/// Finite, no overlaps, lines from border to border.
void checkDrawing(const Graph& graph, const Drawing& drawing);
/// Pairs of a line and a box that it enters without ending there.
[[nodiscard]] int linesThroughBoxes(const Graph& graph, const Drawing& drawing);
/// Pairs of pieces of different lines that lie on each other, those of trunks left out: of
/// generalizations, or realizations, into one super class.
[[nodiscard]] int piecesOnEachOther(const Graph& graph, const Drawing& drawing);
[[nodiscard]] bool isAxisParallel(const std::vector<Point>& line);
[[nodiscard]] bool same(const Drawing& a, const Drawing& b);

}  // namespace brisel::layout::test
