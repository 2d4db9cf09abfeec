#pragma once

#include "canvas/Painter.h"

namespace brisel::canvas {

class DiagramControl;

/// The area of the scene as the control shows it: grid, items, handles, rubber band.
void paintControl(const DiagramControl& control, Painter& painter, const platform::Rect& area);

}  // namespace brisel::canvas
