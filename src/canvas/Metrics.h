#pragma once

#include <string>

#include "platform/Geometry.h"

/// The measures of what is drawn, in twips where nothing else is said. Sizes of boxes, hit testing
/// and painting all follow from these, so that they agree.
namespace brisel::canvas {

/// A fixed-pitch font. Text is measured without a display: a column is 0.6 of the size.
struct Font {
  std::string name;
  double size = 10;  ///< points

  friend bool operator==(const Font&, const Font&) = default;
  [[nodiscard]] constexpr double height() const { return size * platform::kTwipsPerPoint; }
  [[nodiscard]] constexpr double columnWidth() const { return 0.6 * height(); }
  [[nodiscard]] constexpr double lineHeight() const { return 1.2 * height(); }
  /// What a line of text has above and below its letters together.
  [[nodiscard]] constexpr double leading() const { return lineHeight() - height(); }
};

/// How far from the origin anything may lie, and how large it may be: stored geometry has 32 bits.
inline constexpr double kReach = 2147483647;

inline constexpr double kPadding = 90;         ///< between a box's border and its text, sideways
inline constexpr double kTitlePadding = 60;    ///< above and below the title
inline constexpr double kSectionPadding = 45;  ///< above and below the rows of a section
/// A visible section without rows keeps this height, so that its compartment is seen.
inline constexpr double kEmptySection = 2 * kSectionPadding;
inline constexpr double kMinimumWidth = 600;

inline constexpr double kArrowLength = 225;     ///< open arrow and triangle, along the line
inline constexpr double kArrowHalfWidth = 105;  ///< across the line
inline constexpr double kDiamondLength = 300;
inline constexpr double kDiamondHalfWidth = 90;

inline constexpr double kTextGap = 60;           ///< between an end text and its box
inline constexpr double kTextHeadGap = 135;      ///< between it and its line's arrow or diamond
inline constexpr double kTextLineGap = 60;       ///< between it and its line without one
inline constexpr double kNameGap = 30;           ///< between a line and a name beside it
inline constexpr double kTextClearance = 20;     ///< between a text and boxes, heads, texts
inline constexpr double kHairClearance = 8;      ///< between a text and lines of others
inline constexpr double kParallelSpacing = 360;  ///< between lines that join the same two boxes
inline constexpr double kLoopSize = 450;         ///< how far a line to its own box reaches out
inline constexpr double kLoopEnds = 240;  ///< between ends of such lines, where there is room

inline constexpr double kGridStep = 150;    ///< of a nudge by an arrow key
inline constexpr double kHandlePixels = 7;  ///< side of a selection handle, at every zoom
inline constexpr double kHitPixels = 4;     ///< how far beside a line a hit still counts
/// Where lines are drawn, a box's border is this wide for the hand, inside and outside alike.
inline constexpr double kBorderPixels = 6;
inline constexpr double kDragPixels = 3;  ///< how far the pointer goes before a drag begins
inline constexpr double kSnapPixels = 6;  ///< how far what is moved is drawn to an alignment
/// While something is dragged, the canvas scrolls when the pointer is this near to its edge, by so
/// many pixels a tick of 16 ms: the slowest, and growing by so many for each pixel further out.
inline constexpr double kScrollEdgePixels = 20;
inline constexpr double kScrollSlowest = 1;
inline constexpr double kScrollGrowth = 0.25;
inline constexpr double kScrollFastest = 40;
inline constexpr double kWheelPixels = 60;  ///< scrolled by one step of the wheel

}  // namespace brisel::canvas
