#pragma once

#include <optional>
#include <string_view>

#include "canvas/HitTest.h"
#include "canvas/Input.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

class DiagramControl;
class Node;

/// What a press of the left button at a place would begin: the press itself, the shape of the
/// pointer and the hint all follow from it, so that they agree.
struct Offer {
  enum class Kind {
    band,      ///< a rubber band over empty canvas
    drawNode,  ///< a node, on empty canvas
    drawLink,  ///< a link, from the border of a node; without a drag a click on the node
    item       ///< whatever the part of the item is good for
  };

  Kind kind = Kind::band;
  std::optional<Hit> hit;  ///< of `drawLink` the border of the node that the link would leave
};

/// `hit` is what lies at the place.
[[nodiscard]] Offer offerAt(const DiagramControl& control, const std::optional<Hit>& hit,
                            platform::Point at);
/// What is offered where there is nothing.
[[nodiscard]] Offer offerNowhere(const DiagramControl& control);
[[nodiscard]] CursorShape cursorOf(const Offer& offer);
/// A few words for a status bar; empty when the press does what it does on any canvas.
[[nodiscard]] std::string_view hintOf(const DiagramControl& control, const Offer& offer);

/// The topmost node whose border is near: within kBorderPixels on either side at the zoom of the
/// view, inside at most a quarter of the box. Nothing where the inside of another lies above it.
[[nodiscard]] Node* borderAt(const DiagramControl& control, platform::Point at);
/// The node that a link dropped at the place would end at: the topmost one that contains it, or the
/// topmost whose border is near; or nothing.
[[nodiscard]] Node* linkEndAt(const DiagramControl& control, platform::Point at);

}  // namespace brisel::canvas
