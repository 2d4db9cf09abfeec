#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "platform/Geometry.h"

/// Pure functions from a graph of boxes to positions and lines. Lengths are in any unit; the
/// spacing is in the same. Equal input gives equal output. A negative or non-finite size counts as
/// zero, one above kLargestSide as that; an edge to a box that is not there is an Error.
namespace brisel::layout {

using platform::Point;
using platform::Rect;
using platform::Size;

inline constexpr double kLargestSide = 1e10;

enum class EdgeKind { association, aggregation, generalization, realization };

struct Edge {
  std::size_t source;  ///< index of a box; the sub class of a generalization or realization
  std::size_t target;  ///< index of a box; the super class
  EdgeKind kind = EdgeKind::association;
};

struct Graph {
  std::vector<Size> boxes;
  std::vector<Edge> edges;
};

struct Spacing {
  double node = 600;    ///< between neighbours in a row
  double layer = 900;   ///< between rows
  double aspect = 1.6;  ///< width by height that the whole should have
  double alone = 0;     ///< between boxes without lines, in a layered drawing; 0: as "node"
};

struct Drawing {
  std::vector<Point> positions;           ///< top left corner of each box, none below zero
  std::vector<std::vector<Point>> lines;  ///< of each edge: from the border of the source box
                                          ///< over the bends to the border of the target box
};

/// Asked between the steps of a layout, with the share from 0 to 1 that is done; false ends it with
/// Cancelled. May be empty.
using GoOn = std::function<bool(double share)>;

/// Thrown out of a layout that was not to go on.
struct Cancelled {};

/// Layered drawing: super classes above sub classes, no two boxes overlap, lines run around boxes.
[[nodiscard]] Drawing layered(const Graph& graph, const Spacing& spacing, const GoOn& goOn = {});
/// Rows and columns, related boxes near each other. Lines are straight.
[[nodiscard]] Drawing matrix(const Graph& graph, const Spacing& spacing);
/// Random places without overlaps, the same for the same seed. Lines are straight.
[[nodiscard]] Drawing random(const Graph& graph, const Spacing& spacing, std::uint64_t seed);
/// Connected boxes drawn near each other as by springs, without overlaps. Lines are straight.
[[nodiscard]] Drawing spring(const Graph& graph, const Spacing& spacing, const GoOn& goOn = {});

}  // namespace brisel::layout
