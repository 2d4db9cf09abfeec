#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "canvas/Handles.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

class Link;
class Node;
class Scene;
class Viewport;

/// What lies at a place of the canvas; the border of a line is the line itself. Exactly one of
/// `node` and `link` is set.
struct Hit {
  enum class Part { title, row, border, handle, point, label };

  Node* node = nullptr;
  Link* link = nullptr;
  Part part = Part::title;
  Handle handle = Handle::topLeft;  ///< of a handle
  std::size_t section = 0;          ///< of a row
  std::size_t index = 0;            ///< of a row in its section; of a point in the line's points;
                                    ///< of a line, or the label on it, the nearest segment
  bool onLine = false;              ///< a drag bends the line: not beside it, on a text of an end
  std::string_view tag;             ///< of a row; lives as long as the row
};

/// The topmost thing at the point: handles of selected items first, then lines, then boxes. Lines
/// are hit within kHitPixels at the zoom of the view.
[[nodiscard]] std::optional<Hit> hitTest(const Scene& scene, const Viewport& view,
                                         platform::Point at);
[[nodiscard]] std::string_view nameOf(Hit::Part part);

}  // namespace brisel::canvas
