// The demo: a model that shows what a diagram can hold, beside whatever is drawn.

#include <string>

#include "editor/Busy.h"
#include "editor/CLSEditor.h"
#include "editor/DemoModel.h"
#include "repository/ViewDefaults.h"

namespace brisel::editor {

using platform::each;
using platform::Ref;

namespace {

constexpr double kGap = 1200;  // twips between what was drawn and the demo

/// What the boxes cover; empty without any.
platform::Rect extentOf(platform::DiagramControl& diagram) {
  platform::Rect extent;
  for (auto& box : each<platform::DiagramNode>(diagram.getAllNodes())) {
    extent = extent.united(box.bounds());
  }
  return extent;
}

/// A line of the same looks between the boxes of the same keys on another canvas.
void copyLine(platform::DiagramLink& line, platform::DiagramControl& to) {
  if (!to.createLink(line.key(), line.text(), line.source()->key(), line.target()->key())) return;
  const auto copy = to.getLink(line.key());
  copy->beginArrow(line.beginArrow());
  copy->endArrow(line.endArrow());
  copy->beginText(line.beginText());
  copy->endText(line.endText());
  copy->dashed(line.dashed());
}

void bendAlike(const platform::DiagramLink& from, platform::DiagramLink& to,
               platform::Point shift) {
  if (to.source() == to.target()) return;  // follows its box
  const auto points = from.ExtraPoints();
  const auto bends = to.ExtraPoints();
  bends->Clear();
  for (std::int64_t i = 1; i + 1 < points->Count(); ++i) {
    const platform::Point bend = points->at(static_cast<std::size_t>(i)) + shift;
    bends->Add(bend.x, bend.y);
  }
}

}  // namespace

void CLSEditor::MakeDemo() {
  trap("MakeDemo", [this] {
    const Busy busy(*this);
    finishEditing();
    ensureConventions();
    storePositions();
    const platform::Rect drawn = extentOf(*m_diagram);
    const DemoModel demo = makeDemoModel(*m_repository);
    synchronizeDataTypes();
    const CanvasUpdate update(*m_diagram);
    m_diagram->SelectMode();
    m_diagram->Clear();
    if (drawn.isEmpty()) showAllCompartments();
    drawModel();
    layOutBeside(demo, drawn);
  });
}

/// A demo that fills an empty canvas shows all there is to see.
void CLSEditor::showAllCompartments() {
  if (!m_view.attributes()) Compartments(repository::kViewAttributes);
  if (!m_view.operations()) Compartments(repository::kViewOperations);
  if (!m_view.parameters()) Compartments(repository::kViewParameters);
  saveView();
}

/// The demo is laid out on a canvas of its own, so that nothing else moves, and put below or to the
/// right of what was drawn, whichever keeps the whole nearer to a square.
void CLSEditor::layOutBeside(const DemoModel& demo, const platform::Rect& drawn) {
  const auto own = m_registry.create<platform::DiagramControl>("BriselDiagram.diagramControl");
  for (const std::string& key : demo.classes) {
    const auto box = m_diagram->getNode(key);
    if (!box) continue;
    box->fitToText(true);
    own->createNode(key, "", 0, 0, box->bounds().width, box->bounds().height, 2);
  }
  for (const std::string& key : demo.relationships) {
    if (const auto line = m_diagram->getLink(key)) copyLine(*line, *own);
  }
  own->Layout("%HIERARCHY%");
  platform::Point shift;
  if (!drawn.isEmpty()) {
    const platform::Point corner = extentOf(*own).topLeft();
    const bool below = drawn.width > drawn.height;
    shift = (below ? platform::Point{drawn.left, drawn.bottom() + kGap}
                   : platform::Point{drawn.right() + kGap, drawn.top}) -
            corner;
  }
  for (auto& placed : each<platform::DiagramNode>(own->getAllNodes())) {
    const auto box = m_diagram->getNode(placed.key());
    const platform::Point at = placed.bounds().topLeft() + shift;
    box->bounds({at.x, at.y, box->bounds().width, box->bounds().height});
  }
  for (auto& placed : each<platform::DiagramLink>(own->getAllLinks())) {
    bendAlike(placed, *m_diagram->getLink(placed.key()), shift);
  }
}

}  // namespace brisel::editor
