#pragma once

#include <span>
#include <string_view>
#include <vector>

#include "canvas/Detail.h"
#include "canvas/LinkRoute.h"
#include "canvas/Painter.h"

namespace brisel::canvas {

class Link;
class Scene;

/// Paints lines: their course with the decorations of their ends, and, apart from it, their texts,
/// so that no line runs through a text.
class LinkPainter {
 public:
  LinkPainter(const Scene& scene, Painter& painter, const Detail& detail);

  void paintLine(const Link& link);
  /// How a line looks, whatever its course.
  struct Look {
    int beginArrow = 0;
    int endArrow = 0;
    bool dashed = false;
    Color color = 0;
  };
  /// At least two points.
  void paintCourse(const std::vector<platform::Point>& points, const Look& look);
  // On a ground that dims lines. Texts of ends come after all names.
  void paintName(const Link& link);
  void paintEndTexts(const Link& link);

 private:
  [[nodiscard]] Color colorOf(const Link& link) const;
  void paintArrow(int code, const LineEnd& end, Color color);
  void paintText(const Link& link, std::string_view text, const platform::Rect& area,
                 bool centered);

  const Scene& m_scene;
  Painter& m_painter;
  const Detail& m_detail;
};

}  // namespace brisel::canvas
