// The dialogs that the editor runs: of one relationship, and of the model's stereotypes.

#include "controls/Row.h"
#include "editor/Busy.h"
#include "editor/CLSEditor.h"
#include "editors/frmStereotype.h"
#include "platform/Error.h"
#include "platform/Shell.h"

namespace brisel::editor {

/// An Error for one that is not drawn or has left the model.
CLSEditor::AssociationRef CLSEditor::drawnAssociation(Text key) {
  AssociationRef drawn = GetAssociationFromLink(key);
  if (!drawn) {
    throw platform::Error(platform::ErrorNumber::notFound,
                          "No relationship is drawn under the key " + std::string(key));
  }
  if (!controls::isInRepository(*drawn->clsObject())) {
    throw platform::Error(platform::ErrorNumber::notFound,
                          "The relationship " + std::string(key) + " has left the model");
  }
  return drawn;
}

/// An Error for what cannot be edited now.
CLSEditor::AssociationRef CLSEditor::editableAssociation(Text key) {
  AssociationRef edited = drawnAssociation(key);
  if (m_association && m_association->Visible()) {
    throw platform::Error(platform::ErrorNumber::invalidCall,
                          "A relationship is being edited already");
  }
  return edited;
}

void CLSEditor::EditAssociation(Text key) {
  trap("EditAssociation", [&] {
    const AssociationRef edited = editableAssociation(key);
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

}  // namespace brisel::editor
