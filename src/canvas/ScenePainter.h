#pragma once

#include <vector>

#include "canvas/Detail.h"
#include "canvas/Painter.h"

namespace brisel::canvas {

class Link;
class Node;
class Scene;

/// Paints the scene. What comes out depends on the scene and the scale alone, never on the area, so
/// that strips of a picture fit together; the cost depends on what touches the area. The caller
/// cuts at the area's border.
class ScenePainter {
 public:
  ScenePainter(const Scene& scene, Painter& painter, double pixelsPerTwip);

  void paintGround(const platform::Rect& area);
  void paintGrid(const platform::Rect& area);
  /// All that touches the area, with the handles of what is selected.
  void paintItems(const platform::Rect& area);
  /// Just these, from the lowest to the topmost, as they look unselected.
  void paintItems(const std::vector<const Node*>& nodes, const std::vector<const Link*>& links);

 private:
  void paintItems(const platform::Rect& area, const std::vector<const Node*>& nodes,
                  const std::vector<const Link*>& links);
  void paintHandles(const std::vector<const Node*>& nodes, const std::vector<const Link*>& links);
  void paintHandle(platform::Point middle);

  const Scene& m_scene;
  Painter& m_painter;
  Detail m_detail;
};

}  // namespace brisel::canvas
