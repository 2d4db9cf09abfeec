#pragma once

#include <string_view>

#include "canvas/Input.h"

namespace brisel::canvas {

class DiagramControl;

/// Does what the canvas has for a key: arrows, Tab, Home, Escape, and with Ctrl "a", "+", "-", "0".
/// False for a key that it has no use for.
bool pressKey(DiagramControl& control, std::string_view key, Modifiers modifiers);

}  // namespace brisel::canvas
