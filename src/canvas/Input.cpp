#include "canvas/Input.h"

#include <string>

#include "platform/Error.h"
#include "platform/Text.h"

namespace brisel::canvas {

using platform::CallError;
using platform::equalsIgnoringCase;
using platform::ErrorNumber;

PointerButton buttonNamed(std::string_view name) {
  if (name.empty() || equalsIgnoringCase(name, "left")) return PointerButton::left;
  if (equalsIgnoringCase(name, "middle")) return PointerButton::middle;
  if (equalsIgnoringCase(name, "right")) return PointerButton::right;
  throw CallError(ErrorNumber::invalidCall, "Unknown pointer button: " + std::string(name) +
                                                " (\"left\", \"middle\" or \"right\" expected)");
}

Modifiers modifiersNamed(std::string_view names) {
  Modifiers modifiers;
  while (!names.empty()) {
    const std::size_t end = names.find('+');
    const std::string_view name = names.substr(0, end);
    if (equalsIgnoringCase(name, "ctrl")) {
      modifiers.ctrl = true;
    } else if (equalsIgnoringCase(name, "shift")) {
      modifiers.shift = true;
    } else if (equalsIgnoringCase(name, "alt")) {
      modifiers.alt = true;
    } else {
      throw CallError(ErrorNumber::invalidCall,
                      "Unknown modifier: " + std::string(name) +
                          " (\"ctrl\", \"shift\" and \"alt\", joined by \"+\", expected)");
    }
    names.remove_prefix(end == std::string_view::npos ? names.size() : end + 1);
  }
  return modifiers;
}

std::string_view nameOf(CursorShape shape) {
  switch (shape) {
    case CursorShape::arrow:
      return "arrow";
    case CursorShape::cross:
      return "cross";
    case CursorShape::move:
      return "move";
    case CursorShape::sizeNwSe:
      return "sizeNwSe";
    case CursorShape::sizeNeSw:
      return "sizeNeSw";
    case CursorShape::sizeHorizontal:
      return "sizeHorizontal";
    case CursorShape::sizeVertical:
      return "sizeVertical";
    case CursorShape::openHand:
      return "openHand";
    case CursorShape::closedHand:
      return "closedHand";
    case CursorShape::pointing:
      return "pointing";
    case CursorShape::forbidden:
      return "forbidden";
  }
  return "arrow";
}

}  // namespace brisel::canvas
