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

/// "left", "middle" or "right"; empty stands for left, anything else is none.
[[nodiscard]] PointerButton buttonNamed(std::string_view name);
/// Words joined by "+" in any case: "ctrl+shift". Unknown words are passed over.
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
