#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "platform/Geometry.h"

namespace brisel::canvas {

/// A colour as 0xAARRGGBB; an alpha of 0xFF is opaque.
using Color = std::uint32_t;

inline constexpr Color kNoColor = 0;

/// How a line is drawn. The width is in twips; no line is thinner than one pixel of its device.
struct Pen {
  Color color = 0xFF000000;
  double width = platform::kTwipsPerPixel;
  bool dashed = false;
  /// Slanted lines may be drawn in steps and dashes left out: one of thousands in a small picture.
  bool quick = false;

  friend constexpr bool operator==(const Pen&, const Pen&) = default;
};

/// The width of a column of the canvas's fixed-pitch font, as a part of the font's size.
inline constexpr double kColumnWidth = 0.6;

/// The canvas has one fixed-pitch font. Its size is the height of the em in twips.
struct TextStyle {
  double size = 0;
  Color color = 0xFF000000;
  bool bold = false;

  friend constexpr bool operator==(const TextStyle&, const TextStyle&) = default;
};

/// What a diagram is drawn on: a window, a picture, a page, a file. All that is drawn goes through
/// these calls; positions and sizes are in twips, later calls cover earlier ones. A device may
/// gather calls, so that its result is complete only when the painter is gone.
class Painter {
 public:
  virtual ~Painter() = default;

  virtual void fillRect(const platform::Rect& rect, Color color) = 0;
  /// The frame lies inside the rectangle.
  virtual void drawFrame(const platform::Rect& rect, const Pen& pen) = 0;
  virtual void drawPolyline(std::span<const platform::Point> points, const Pen& pen) = 0;
  /// Closed, filled unless `fill` is kNoColor, and outlined.
  virtual void drawPolygon(std::span<const platform::Point> points, Color fill, const Pen& pen) = 0;
  /// One line of UTF-8 that starts at the point of its baseline.
  virtual void drawText(platform::Point baseline, std::string_view text,
                        const TextStyle& style) = 0;
};

}  // namespace brisel::canvas
