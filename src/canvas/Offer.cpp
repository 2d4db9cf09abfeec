#include "canvas/Offer.h"

#include <algorithm>
#include <vector>

#include "canvas/DiagramControl.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;

namespace {

/// The nodes that come within the distance of the place, from the topmost to the lowest.
std::vector<Node*> nodesNear(const DiagramControl& control, Point at, double reach) {
  std::vector<Item*> found;
  const Rect around = Rect{at.x, at.y, 0, 0}.grownBy(reach);
  control.scene().collect(around, found);
  std::vector<Node*> nodes;
  for (Item* item : found) {
    if (!item->isLink()) nodes.push_back(static_cast<Node*>(item));
  }
  std::erase_if(nodes,
                [&](const Node* node) { return !node->bounds().grownBy(reach).contains(at); });
  std::sort(nodes.begin(), nodes.end(),
            [](const Node* a, const Node* b) { return a->order() > b->order(); });
  return nodes;
}

double borderReach(const DiagramControl& control) {
  return control.viewport().toTwips(kBorderPixels);
}

bool isInside(const Rect& box, Point at, double reach) {
  const double across = std::min(reach, box.width / 4);
  const double down = std::min(reach, box.height / 4);
  return at.x > box.left + across && at.x < box.right() - across && at.y > box.top + down &&
         at.y < box.bottom() - down;
}

/// Handles, bends and labels are taken hold of where lines are drawn, too; the ends of a line are
/// not, which lie where the next line begins.
bool comesFirst(const Hit& hit) {
  const bool isEnd = hit.part == Hit::Part::point &&
                     (hit.index == 0 || hit.index + 1 == hit.link->points().size());
  return hit.part == Hit::Part::handle || hit.part == Hit::Part::label ||
         (hit.part == Hit::Part::point && !isEnd);
}

CursorShape shapeOf(Handle handle) {
  switch (handle) {
    case Handle::topLeft:
    case Handle::bottomRight:
      return CursorShape::sizeNwSe;
    case Handle::topRight:
    case Handle::bottomLeft:
      return CursorShape::sizeNeSw;
    case Handle::top:
    case Handle::bottom:
      return CursorShape::sizeVertical;
    case Handle::left:
    case Handle::right:
      return CursorShape::sizeHorizontal;
  }
  return CursorShape::arrow;
}

CursorShape shapeOver(const Hit& hit) {
  if (hit.part == Hit::Part::handle) return shapeOf(hit.handle);
  if (hit.part == Hit::Part::point) return CursorShape::pointing;
  // An unselected line is selected first: its drag does nothing.
  return hit.node || (hit.link->isSelected() && hit.onLine) ? CursorShape::move : CursorShape::arrow;
}

}  // namespace

Node* borderAt(const DiagramControl& control, Point at) {
  const double reach = borderReach(control);
  const auto nodes = nodesNear(control, at, reach);
  if (nodes.empty() || isInside(nodes.front()->bounds(), at, reach)) return nullptr;
  return nodes.front();
}

Node* linkEndAt(const DiagramControl& control, Point at) {
  const auto nodes = nodesNear(control, at, borderReach(control));
  const auto containing = std::find_if(
      nodes.begin(), nodes.end(), [&](const Node* node) { return node->bounds().contains(at); });
  if (containing != nodes.end()) return *containing;
  return nodes.empty() ? nullptr : nodes.front();
}

Offer offerAt(const DiagramControl& control, const std::optional<Hit>& hit, Point at) {
  if (control.canDrawLink() && !(hit && comesFirst(*hit))) {
    if (Node* source = borderAt(control, at)) {
      Hit border;
      border.node = source;
      border.part = Hit::Part::border;
      return {Offer::Kind::drawLink, border};
    }
  }
  if (hit) return {Offer::Kind::item, hit};
  return offerNowhere(control);
}

Offer offerNowhere(const DiagramControl& control) {
  return {control.createsNodes() ? Offer::Kind::drawNode : Offer::Kind::band, {}};
}

CursorShape cursorOf(const Offer& offer) {
  switch (offer.kind) {
    case Offer::Kind::drawNode:
    case Offer::Kind::drawLink:
      return CursorShape::cross;
    case Offer::Kind::item:
      return shapeOver(*offer.hit);
    case Offer::Kind::band:
      break;
  }
  return CursorShape::arrow;
}

std::string_view hintOf(const DiagramControl& control, const Offer& offer) {
  switch (offer.kind) {
    case Offer::Kind::drawNode:
      return control.Mode() == "drawCreate" ? "Drag to draw a class" : "Click to place a class";
    case Offer::Kind::drawLink:
      return "Drag to the other class";
    case Offer::Kind::band:
      return control.canDrawLink() ? "Drag from the border of a class to another" : "";
    case Offer::Kind::item:
      break;
  }
  return "";
}

}  // namespace brisel::canvas
