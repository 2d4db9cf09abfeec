#pragma once

#include <cstdint>

#include "canvas/Painter.h"

/// The colours of the diagram.
namespace brisel::canvas::palette {

inline constexpr Color kButtonFace = 0xFFF1F3F6;
inline constexpr Color kFrame = 0xFF3A4350;
inline constexpr Color kSeparator = 0xFF8C95A1;
inline constexpr Color kText = 0xFF15191F;
inline constexpr Color kStereotype = 0xFF4A5462;
inline constexpr Color kUnreadable = 0xFFB4BAC3;  ///< the bars that stand for text
inline constexpr Color kBlock = 0xFFC3CAD4;       ///< a box that is a few pixels small
inline constexpr Color kLine = 0xFF3A4350;
inline constexpr Color kFarLine = 0xFF8791A0;
inline constexpr Color kSelected = 0xFF1668C7;
inline constexpr Color kHandle = 0xFFFFFFFF;
inline constexpr Color kRubberBand = 0x281668C7;
inline constexpr Color kAllowedFill = 0x201668C7;  ///< over a box that a line may end at
inline constexpr Color kRefused = 0xFFC0392B;
inline constexpr Color kRefusedFill = 0x20C0392B;
inline constexpr Color kDropTarget = 0x281668C7;
inline constexpr Color kGhost = 0xD8FFFFFF;  ///< the paper of what is dragged
inline constexpr Color kGuide = 0xFFD6336C;
inline constexpr Color kGrid = 0xFFEEF0F3;

/// The colour of a value in the platform's numbering: red in the lowest byte, or a system colour.
[[nodiscard]] constexpr Color fromPlatform(std::int64_t value) {
  if ((value & 0x80000000) != 0) {
    const std::int64_t number = value & 0xFF;
    const bool window = number == 5 || number == 20;
    return window ? 0xFFFFFFFF : kButtonFace;
  }
  const auto rgb = static_cast<std::uint32_t>(value);
  return 0xFF000000U | (rgb & 0xFFU) << 16 | (rgb & 0xFF00U) | (rgb >> 16 & 0xFFU);
}

}  // namespace brisel::canvas::palette
