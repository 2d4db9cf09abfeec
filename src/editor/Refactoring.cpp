// What the refactorings share: new classes, boxes refilled and placed.

#include "editor/Refactoring.h"

#include <algorithm>
#include <utility>

namespace brisel::editor {

using platform::DiagramNode;
using platform::Rect;

CLSEditor::Refill::~Refill() {
  for (const ClassRef& shown : m_classes) {
    try {
      m_editor.refillAndFit(*shown);
    } catch (...) {  // the failure that led here is the one that is told
    }
  }
}

void CLSEditor::Refill::run() {
  for (const ClassRef& shown : std::exchange(m_classes, {})) m_editor.refillAndFit(*shown);
}

std::string CLSEditor::freshKey() { return m_generator->call("GetUUID").text(); }

CLSEditor::ClassRef CLSEditor::newClass(Text name, Text intention) {
  return CreateClass(freshKey(), name, intention, "", "", "public");
}

void CLSEditor::refillAndFit(repository::Class& shown) {
  shown.Populate();
  shown.Node()->fitToText(true);
}

void CLSEditor::placeBeside(DiagramNode& box, const DiagramNode& other, double gap) {
  const Rect beside = other.bounds();
  place(box, {beside.right() + gap, beside.top}, gap);
}

/// At the corner, or at the next free place to its right, the gap behind what stands in the way.
void CLSEditor::place(DiagramNode& box, platform::Point corner, double gap) {
  Rect bounds = box.bounds();
  bounds.left = corner.x;
  bounds.top = corner.y;
  for (bool free = false; !free;) {
    free = true;
    double right = bounds.left;
    for (const auto& other : platform::each<DiagramNode>(m_diagram->nodesIn(bounds))) {
      if (&other == &box) continue;
      right = std::max(right, other.bounds().right());
      free = false;
    }
    if (!free) bounds.left = right + gap;
  }
  box.bounds(bounds);
}

/// A relationship between a class and what was drawn out of it.
void CLSEditor::noteExtracted(repository::Association& relationship) {
  ++m_relationshipsExtracted;
  relationship.Populate();
}

}  // namespace brisel::editor
