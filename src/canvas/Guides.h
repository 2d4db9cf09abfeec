#pragma once

#include <vector>

#include "platform/Geometry.h"

namespace brisel::canvas {

class DiagramControl;
class Node;
class Painter;

/// The lines of a box that may come to lie on those of its neighbours, along one axis.
struct AlignedLines {
  bool low = true;  ///< the left or the upper edge
  bool middle = true;
  bool high = true;
};

/// Draws a box that a hand moves or resizes to where it is aligned with its neighbours, and shows
/// along which lines. Neighbours are the boxes in the visible part of the canvas, so that the cost
/// does not grow with the diagram; edges are aligned with edges, middles with middles. Where rows
/// are too small to be painted, nothing is aligned.
class Guides {
 public:
  explicit Guides(DiagramControl& control) : m_control(control) {}

  /// The way, kSnapPixels long at most along each axis, to the nearest alignment of the box with
  /// neighbours; nothing where there is none. The selected boxes are not neighbours, or with
  /// `resized` all but that one are.
  [[nodiscard]] platform::Point snap(const platform::Rect& box, AlignedLines across,
                                     AlignedLines down, const Node* resized = nullptr);
  /// From now on shows the lines along which the box is aligned with the neighbours that `snap`
  /// found last.
  void show(const platform::Rect& box, AlignedLines across, AlignedLines down);
  void hide();
  void paint(Painter& painter, double scale) const;

 private:
  struct Line {
    platform::Point from, to;
  };
  void findNeighbours(const Node* resized);
  void damage() const;

  DiagramControl& m_control;
  std::vector<platform::Rect> m_neighbours;
  std::vector<Line> m_lines;
};

}  // namespace brisel::canvas
