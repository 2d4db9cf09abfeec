#include "canvas/ControlPainter.h"

#include <optional>

#include "canvas/DiagramControl.h"
#include "canvas/Palette.h"
#include "canvas/ScenePainter.h"

namespace brisel::canvas {

using platform::Rect;

void paintControl(const DiagramControl& control, Painter& painter, const Rect& area) {
  const double scale = control.viewport().pixelsPerTwip();
  ScenePainter scene(control.scene(), painter, scale);
  scene.paintGround(area);
  if (control.ShowGrid()) scene.paintGrid(area);
  scene.paintItems(area);
  if (const std::optional<Rect> band = control.rubberBand()) {
    painter.fillRect(*band, palette::kRubberBand);
    painter.drawFrame(*band, {.color = palette::kSelected, .width = 1 / scale});
  }
}

}  // namespace brisel::canvas
