#include "canvas/ControlPainter.h"

#include "canvas/DiagramControl.h"
#include "canvas/ScenePainter.h"

namespace brisel::canvas {

using platform::Rect;

void paintControl(const DiagramControl& control, Painter& painter, const Rect& area) {
  const double scale = control.viewport().pixelsPerTwip();
  ScenePainter scene(control.scene(), painter, scale);
  scene.paintGround(area);
  if (control.ShowGrid()) scene.paintGrid(area);
  scene.paintItems(area);
  control.paintGesture(painter, scale);
}

}  // namespace brisel::canvas
