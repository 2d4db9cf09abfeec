// The class pane: beside its box on the canvas, or docked in the property band.

#include <algorithm>

#include "editor/CLSEditor.h"

namespace brisel::editor {

namespace {

constexpr std::string_view kPropertyBand = "tbProperty";
constexpr double kGap = 150;  // twips of the view between box and pane

}  // namespace

void CLSEditor::EditClass(Text key) {
  trap("EditClass", [&] {
    const ClassRef edited = drawnClass(key);
    CommitClassName();
    m_activeBar->showBand(kPropertyBand, false);
    m_classControl->Path(m_path);
    showInPane(*edited);
    PlaceClassEditor();
    m_classControl->Visible(true);
    m_classControl->StartEdit();
  });
}

void CLSEditor::ShowClassProperties(Text key) {
  const ClassRef shown = drawnClass(key);
  shown->Populate();
  showInPane(*shown);
  m_classControl->Visible(true);
  m_activeBar->showBand(kPropertyBand, true);
  m_classControl->StartEdit();
}

void CLSEditor::showInPane(repository::Class& shown) {
  finishPane();
  m_classControl->Class(&shown);
  m_classControl->Repository(m_repository.get());
  m_classControl->Prepare();
  m_activeBar->caption(kPropertyBand, "Class " + shown.name());
  PlaceClassEditor();
}

void CLSEditor::closePane() {
  finishPane();
  m_classControl->Visible(false);
  m_activeBar->showBand(kPropertyBand, false);
}

void CLSEditor::finishEditing() {
  trap("finishEditing", [this] {
    CommitClassName();
    const auto edited = m_classControl->Class();
    if (!edited) return;
    const auto before = model().changeCount();
    m_classControl->writePending();
    if (model().changeCount() != before) ClassChanged(edited->clsObject()->identifier());
  });
}

/// What is pending in the pane is written.
void CLSEditor::finishPane() {
  const auto edited = m_classControl->Class();
  if (!edited) return;
  const std::string key = edited->clsObject()->identifier();
  const auto before = model().changeCount();
  m_classControl->Finish(m_diagram.get());
  if (model().changeCount() != before) ClassChanged(key);
}

/// To the right of the box where there is room, else to its left, and always inside the canvas.
void CLSEditor::PlaceClassEditor() {
  const auto box = m_classControl->Node();
  if (!box || m_activeBar->isBandShown(kPropertyBand)) return;
  const platform::Rect beside = m_diagram->toView(box->bounds());
  const platform::Size view = m_diagram->viewSize();
  platform::Rect pane = m_classControl->area();
  pane.left = beside.right() + kGap;
  if (pane.right() > view.width && beside.left - kGap - pane.width >= 0) {
    pane.left = beside.left - kGap - pane.width;
  }
  pane.top = beside.top;
  pane.left = std::clamp(pane.left, 0.0, std::max(0.0, view.width - pane.width));
  pane.top = std::clamp(pane.top, 0.0, std::max(0.0, view.height - pane.height));
  m_classControl->area(pane);
}

/// The band was opened: it shows the class that is selected, unless one is in the pane already.
void CLSEditor::bandShown(const std::string& band) {
  if (band != kPropertyBand || m_classControl->Class()) return;
  const auto selected = m_diagram->getSelectedNodes();
  if (selected->Count() == 0) return;
  const auto box = platform::as<platform::DiagramNode>(selected->Item(selected->Count()));
  ShowClassProperties(box->key());
}

void CLSEditor::bandClosed(const std::string& band) {
  if (band == kPropertyBand) closePane();
}

}  // namespace brisel::editor
