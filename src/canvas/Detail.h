#pragma once

#include "canvas/Painter.h"

namespace brisel::canvas {

/// How much of the diagram is worth painting at a scale: what a person cannot make out is painted
/// as something simpler.
struct Detail {
  double pixelsPerTwip = 1 / platform::kTwipsPerPixel;
  Color ground = 0xFFFFFFFF;
  bool showSelection = true;
  /// Thousands of lines in a small picture: no smooth edges, no dashes.
  bool quickLines = false;

  /// A text whose letters are smaller is painted as a bar.
  static constexpr double kReadablePixels = 5;
  /// A row of less than this is not painted at all, and its box is a plain block.
  static constexpr double kRowPixels = 2;
  static constexpr double kArrowPixels = 3;

  [[nodiscard]] double pixels(double twips) const { return twips * pixelsPerTwip; }
  [[nodiscard]] double twips(double pixels) const { return pixels / pixelsPerTwip; }
  [[nodiscard]] bool readable(double fontHeight) const {
    return pixels(fontHeight) >= kReadablePixels;
  }
};

}  // namespace brisel::canvas
