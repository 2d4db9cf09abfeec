// The class pane: beside its box on the canvas, or docked in the property band.

#include <algorithm>

#include "controls/Row.h"
#include "editor/Busy.h"
#include "editor/CLSEditor.h"
#include "editors/frmStereotype.h"
#include "platform/Error.h"
#include "platform/Shell.h"

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

void CLSEditor::EditAssociation(Text key) {
  trap("EditAssociation", [&] {
    const AssociationRef edited = GetAssociationFromLink(key);
    if (!edited) {
      throw platform::Error(platform::ErrorNumber::notFound,
                            "No relationship is drawn under the key " + std::string(key));
    }
    if (!controls::isInRepository(*edited->clsObject())) {
      throw platform::Error(platform::ErrorNumber::notFound,
                            "The relationship " + std::string(key) + " has left the model");
    }
    if (m_association && m_association->Visible()) {
      throw platform::Error(platform::ErrorNumber::invalidCall,
                            "A relationship is being edited already");
    }
    const std::string shown(key);
    CommitClassName();
    if (!m_association) m_association = platform::make<editors::frmAssociation>(m_registry);
    m_association->Path(m_path);
    const auto control = m_association->CLSAssociationControl1();
    control->Repository(m_repository.get());
    control->Association(edited.get());
    m_association->Caption(edited->isAggregation()      ? "Aggregation"
                           : edited->isGeneralization() ? "Generalization"
                                                        : "Association");
    control->Prepare();
    control->StartEdit();
    m_registry.shell().runForm("frmAssociation", *m_association);
    control->Finish(m_diagram.get());
    AssocChanged(shown);
  });
}

void CLSEditor::EditStereotypes() {
  trap("EditStereotypes", [this] {
    const auto dialog = platform::make<editors::frmStereotype>(m_registry);
    const auto before = model().changeCount();
    dialog->Path(m_path);
    dialog->Create(*m_repository);
    dialog->Init();
    m_registry.shell().runForm("frmStereotype", *dialog);
    dialog->Deinit();
    dialog->Destroy();
    if (model().changeCount() != before) refreshStereotypes();
  });
}

/// Any of the boxes and lines may show a stereotype that has another name now, or is gone.
void CLSEditor::refreshStereotypes() {
  const CanvasUpdate update(*m_diagram);
  for (auto& box : platform::each<platform::DiagramNode>(m_diagram->getAllNodes())) {
    if (const ClassRef shown = GetClassFromNode(box.key())) shown->Populate();
  }
  for (auto& line : platform::each<platform::DiagramLink>(m_diagram->getAllLinks())) {
    if (const AssociationRef shown = GetAssociationFromLink(line.key())) shown->Populate();
  }
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
