#pragma once

#include <string_view>

#include "canvas/Input.h"

namespace brisel::canvas {

class DiagramControl;

/// Does what the canvas has for a key. Arrows move what is selected by a pixel of the view, with
/// Shift by kGridStep, and scroll when nothing is selected; Tab and Shift+Tab walk the items;
/// Escape leaves a mode, then the selection; Home shows all; F2, Enter and Delete ask for what is
/// selected; with Ctrl there are "a", "+", "-", "0".
/// False for a key that it has no use for.
bool pressKey(DiagramControl& control, std::string_view key, Modifiers modifiers);

}  // namespace brisel::canvas
