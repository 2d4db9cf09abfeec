#pragma once

#include <string>
#include <vector>

#include "platform/Diagram.h"

namespace brisel::editor {

/// Where boxes stand and lines run on a canvas, also what no save has written to the model yet: to
/// be put back when the same model is drawn again. In twips.
class DrawnGeometry {
 public:
  explicit DrawnGeometry(platform::DiagramControl& diagram);

  /// Boxes and lines that are not there any more are passed over.
  void restore(platform::DiagramControl& diagram) const;

 private:
  struct Box {
    std::string key;
    platform::Rect bounds;
  };
  struct Line {
    std::string key;
    std::vector<platform::Point> points;
  };
  std::vector<Box> m_boxes;
  std::vector<Line> m_lines;
};

}  // namespace brisel::editor
