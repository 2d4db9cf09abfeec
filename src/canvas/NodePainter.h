#pragma once

#include <string>
#include <string_view>

#include "canvas/Detail.h"
#include "canvas/Metrics.h"
#include "canvas/Painter.h"

namespace brisel::canvas {

class Node;
class Scene;

/// Paints boxes: title, separating lines and rows, all within the border.
class NodePainter {
 public:
  NodePainter(const Scene& scene, Painter& painter, const Detail& detail);

  /// Rows that do not touch the area are left out.
  void paint(const Node& node, const platform::Rect& area);

 private:
  void paintBlock(const Node& node, Color face);
  void paintTitle(const Node& node);
  void paintSection(const Node& node, std::size_t number, const platform::Rect& area);
  /// The text, or a bar for it, with the cell's left and top; cut at the width.
  void paintText(platform::Point at, std::string_view text, const Font& font, double width,
                 const TextStyle& style);

  const Scene& m_scene;
  Painter& m_painter;
  const Detail& m_detail;
  std::string m_cut;
};

/// Where the letters of a line of text stand whose cell begins at `top`.
[[nodiscard]] constexpr double baselineOf(double top, const Font& font) {
  return top + 0.87 * font.height();
}

}  // namespace brisel::canvas
