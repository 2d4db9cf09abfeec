#include "canvas/Keyboard.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "canvas/DiagramControl.h"
#include "canvas/Memory.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;

namespace {

/// Moves the selected boxes; scrolls when nothing is selected.
void nudge(DiagramControl& control, Point direction, bool byGrid) {
  Viewport& view = control.viewport();
  if (control.selection().empty()) {
    view.scrollBy(direction * kWheelPixels);
    return;
  }
  const double step = byGrid ? kGridStep : std::max(1.0, view.toTwips(1.0));
  MovingItems items(control.scene());
  items.moveBy(direction * step);
  for (const std::string& key : items.movedKeys()) control.NodeMoved(key);
}

/// Where Tab comes by: boxes, then lines, both from the top to the bottom and from left to right.
auto readingPlace(const Item& item) {
  const Point at = item.isLink() ? middleOf(static_cast<const Link&>(item).points())
                                 : static_cast<const Node&>(item).bounds().topLeft();
  return std::tuple(item.isLink(), at.y, at.x, item.order());
}

/// The item that follows, or with `backwards` the one before; the first or the last after nothing.
class Walk {
 public:
  Walk(const Item* from, bool backwards) : m_from(from), m_backwards(backwards) {}

  void offer(Item& item) {
    if (m_from && !comesBefore(*m_from, item)) return;
    if (!m_next || comesBefore(item, *m_next)) m_next = &item;
  }
  [[nodiscard]] Item* next() const { return m_next; }

 private:
  [[nodiscard]] bool comesBefore(const Item& a, const Item& b) const {
    return m_backwards ? readingPlace(b) < readingPlace(a) : readingPlace(a) < readingPlace(b);
  }

  const Item* m_from;
  bool m_backwards;
  Item* m_next = nullptr;
};

/// False behind the last item.
bool walk(DiagramControl& control, bool backwards) {
  const auto& selected = control.selection().selectedItems();
  Walk walk(selected.empty() ? nullptr : selected.back(), backwards);
  for (Node& node : control.scene().nodes()) walk.offer(node);
  for (Link& link : control.scene().links()) walk.offer(link);
  Item* next = walk.next();
  if (!next) return false;
  control.selection().selectOnly(*next);
  control.viewport().reveal(next->extent().grownBy(kGridStep));
  return true;
}

/// Renaming, opening and deleting are for who keeps the model; false for another key, and when the
/// selection is not what the key is for.
bool ask(DiagramControl& control, std::string_view key) {
  const Selection& selection = control.selection();
  if (key == "Delete" || key == "Del" || key == "Backspace") {
    if (selection.empty()) return false;
    control.DeleteAsked();
    return true;
  }
  if (key == "F2") {
    const auto nodes = selection.nodes();
    if (nodes.size() == 1) control.NodeRenaming(nodes.front()->key());
    return nodes.size() == 1;
  }
  if ((key != "Enter" && key != "Return") || selection.size() != 1) return false;
  const Item& item = *selection.selectedItems().front();
  (item.isLink() ? control.LinkOpened : control.NodeOpened)(std::string(item.itemKey()));
  return true;
}

bool leaveMode(DiagramControl& control) {
  if (!control.createsNodes() && !control.canDrawLink()) return false;
  control.SelectMode();
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
  if (key == "Escape") return leaveMode(control) || control.unselectAll();
  if (key != "Home") return ask(control, key);
  control.viewport().fit(control.scene().extent());
  return true;
}

}  // namespace brisel::canvas
