#include "canvas/Handles.h"

#include <algorithm>

namespace brisel::canvas {

using platform::Point;
using platform::Rect;
using platform::Size;

std::array<Point, kHandleCount> handlesOf(const Rect& box) {
  const Point middle = box.center();
  return {{{box.left, box.top},
           {middle.x, box.top},
           {box.right(), box.top},
           {box.right(), middle.y},
           {box.right(), box.bottom()},
           {middle.x, box.bottom()},
           {box.left, box.bottom()},
           {box.left, middle.y}}};
}

PulledSides sidesOf(Handle handle) {
  const auto isOneOf = [&](Handle a, Handle b, Handle c) {
    return handle == a || handle == b || handle == c;
  };
  return {.left = isOneOf(Handle::topLeft, Handle::left, Handle::bottomLeft),
          .right = isOneOf(Handle::topRight, Handle::right, Handle::bottomRight),
          .top = isOneOf(Handle::topLeft, Handle::top, Handle::topRight),
          .bottom = isOneOf(Handle::bottomLeft, Handle::bottom, Handle::bottomRight)};
}

Rect pulled(const Rect& box, Handle handle, Point to, Size smallest) {
  const auto [left, right, top, bottom] = sidesOf(handle);
  // A box that is smaller already may stay so, but does not shrink.
  const double width = std::min(smallest.width, box.width);
  const double height = std::min(smallest.height, box.height);
  const double newLeft = left ? std::min(to.x, box.right() - width) : box.left;
  const double newTop = top ? std::min(to.y, box.bottom() - height) : box.top;
  const double newRight = right ? std::max(to.x, box.left + width) : box.right();
  const double newBottom = bottom ? std::max(to.y, box.top + height) : box.bottom();
  return {newLeft, newTop, newRight - newLeft, newBottom - newTop};
}

}  // namespace brisel::canvas
