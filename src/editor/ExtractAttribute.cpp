// An attribute drawn out of its class into a class of its own.

#include "editor/Busy.h"
#include "editor/Refactoring.h"
#include "editors/frmExtractAttribute.h"
#include "platform/Shell.h"

namespace brisel::editor {

namespace {

constexpr double kExtractGap = 500;

}  // namespace

void CLSEditor::ExtractAttribute(Text key) {
  trap("ExtractAttribute", [&] {
    finishEditing();
    const ClassRef owner = refactoredClass(key);
    const auto dialog = platform::make<editors::frmExtractAttribute>(m_registry);
    dialog->Prepare(*owner, key, *m_repository);
    m_registry.shell().runForm("frmExtractAttribute", *dialog);
    const bool asComposite = dialog->asComposite()->value() == 1;  // grey counts as not ticked
    if (!dialog->Accepted()) return;
    const auto attribute = dialog->Attributes()->selectedRow();
    if (attribute) ExtractAttributeToClass(*owner, *attribute, asComposite);
  });
}

/// The attribute's type plays no part: the class is named after the attribute, and is empty.
CLSEditor::ClassRef CLSEditor::ExtractAttributeToClass(repository::Class& owner,
                                                       platform::Link& attributeLink,
                                                       bool asComposite) {
  const auto attribute = attributeLink.Target();
  const std::string name = attribute->name();
  ClassRef made =
      newClass(name, "extracted attribute from class " + owner.name(), &owner, kExtractGap);
  if (!made) return {};
  const CanvasUpdate update(*m_diagram);
  Refill refill(*this);
  refill.add(owner);
  refill.add(*made);
  m_repository->DeleteAttribute(attribute->identifier());
  refill.run();
  placeBeside(*made->Node(), *owner.Node(), kExtractGap);
  const auto kind = asComposite ? RelationshipKind::composite : RelationshipKind::shared;
  const AssociationRef part = createLink(kind, freshKey(), "", owner.clsObject()->identifier(),
                                         made->clsObject()->identifier());
  if (part) {
    part->name("");
    part->clsObject()->SetProperty("SourceRoleName", name);
    noteExtracted(*part);
  }
  presentResult(*made);
  synchronizeDataTypes();
  return made;
}

}  // namespace brisel::editor
