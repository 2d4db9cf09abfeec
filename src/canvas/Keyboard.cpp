#include "canvas/Keyboard.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <vector>

#include "canvas/DiagramControl.h"
#include "canvas/Memory.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;

namespace {

/// Moves the selected boxes; scrolls when nothing is selected.
void nudge(DiagramControl& control, Point direction, bool fine) {
  Viewport& view = control.viewport();
  if (control.selection().empty()) {
    view.scrollBy(direction * kWheelPixels);
    return;
  }
  const double step = fine ? std::max(1.0, view.toTwips(1.0)) : kGridStep;
  MovingItems items(control.scene());
  items.moveBy(direction * step);
  for (const std::string& key : items.movedKeys()) control.NodeMoved(key);
}

/// Scrolls as little as brings the box into view.
void reveal(Viewport& view, const Rect& box) {
  const Rect seen = view.visible();
  if (seen.contains(box)) return;
  const auto nearest = [](double from, double length, double low, double high) {
    if (low < from || high - low > length) return low;
    return high > from + length ? high - length : from;
  };
  const Rect wanted = box.grownBy(kGridStep);
  view.scrollTo({nearest(seen.left, seen.width, wanted.left, wanted.right()),
                 nearest(seen.top, seen.height, wanted.top, wanted.bottom())});
}

/// To the next or the previous box in reading order; false behind the last.
bool walk(DiagramControl& control, bool backwards) {
  std::vector<Node*> nodes;
  for (Node& node : control.scene().nodes()) nodes.push_back(&node);
  if (nodes.empty()) return false;
  std::sort(nodes.begin(), nodes.end(), [](const Node* a, const Node* b) {
    return std::tuple(a->top(), a->left(), a->order()) <
           std::tuple(b->top(), b->left(), b->order());
  });
  if (backwards) std::reverse(nodes.begin(), nodes.end());
  auto next = nodes.begin();
  const auto selected = control.selection().nodes();
  if (!selected.empty()) {
    next = std::find(nodes.begin(), nodes.end(), selected.back().get()) + 1;
    if (next == nodes.end()) return false;
  }
  control.selection().selectOnly(**next);
  reveal(control.viewport(), (*next)->bounds());
  return true;
}

bool pressWithCtrl(DiagramControl& control, std::string_view key) {
  if (key == "a" || key == "A") {
    control.selection().selectAll();
  } else if (key == "+" || key == "=") {
    control.zoom(control.getZoom() * DiagramControl::kZoomStep);
  } else if (key == "-") {
    control.zoom(control.getZoom() / DiagramControl::kZoomStep);
  } else if (key == "0") {
    control.noZoom();
  } else {
    return false;
  }
  return true;
}

}  // namespace

bool pressKey(DiagramControl& control, std::string_view key, Modifiers modifiers) {
  struct Arrow {
    std::string_view key;
    Point direction;
  };
  static constexpr std::array kArrows = {Arrow{"Left", {-1, 0}}, Arrow{"Right", {1, 0}},
                                         Arrow{"Up", {0, -1}}, Arrow{"Down", {0, 1}}};
  if (modifiers.alt) return false;
  if (key == "Tab") return !modifiers.ctrl && walk(control, modifiers.shift);
  if (modifiers.ctrl) return pressWithCtrl(control, key);
  for (const Arrow& arrow : kArrows) {
    if (key != arrow.key) continue;
    nudge(control, arrow.direction, modifiers.shift);
    return true;
  }
  if (key == "Backtab") return walk(control, true);
  if (key == "Escape") return control.unselectAll();
  if (key != "Home") return false;
  control.viewport().fit(control.scene().extent());
  return true;
}

}  // namespace brisel::canvas
