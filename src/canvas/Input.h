#pragma once

#include <string_view>

#include "platform/Geometry.h"

namespace brisel::canvas {

enum class PointerButton { none, left, middle, right };

struct Modifiers {
  bool ctrl = false;
  bool shift = false;
  bool alt = false;

  friend constexpr bool operator==(const Modifiers&, const Modifiers&) = default;
};

/// "left", "middle" or "right", in any case; empty stands for left. A CallError for another word.
[[nodiscard]] PointerButton buttonNamed(std::string_view name);
/// "ctrl", "shift" and "alt" in any case, joined by "+"; empty for none. A CallError for another
/// word.
[[nodiscard]] Modifiers modifiersNamed(std::string_view names);

/// How the pointer should look.
enum class CursorShape {
  arrow,
  cross,
  move,
  sizeNwSe,
  sizeNeSw,
  sizeHorizontal,
  sizeVertical,
  openHand,
  closedHand,
  pointing,
  forbidden
};

[[nodiscard]] std::string_view nameOf(CursorShape shape);

}  // namespace brisel::canvas
