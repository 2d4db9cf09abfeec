// What the editor answers when something was made on the canvas or a button was clicked.

#include <utility>

#include "editor/CLSEditor.h"
#include "platform/Error.h"

namespace brisel::editor {

using platform::make;
using platform::Ref;

namespace types = platform::types;

namespace {

constexpr std::string_view kClassItem = "__Class";
constexpr std::string_view kAssociationItem = "__Association";
constexpr std::string_view kNewClass = "newClass";

}  // namespace

CLSEditor::ClassRef CLSEditor::GetClassFromNode(Text key) {
  return trap("GetClassFromNode", [&]() -> ClassRef {
    const auto box = m_diagram->getNode(key);
    return box ? platform::as<repository::Class>(box->getItem(kClassItem)) : ClassRef();
  });
}

CLSEditor::AssociationRef CLSEditor::GetAssociationFromLink(Text key) {
  return trap("GetAssociationFromLink", [&]() -> AssociationRef {
    const auto line = m_diagram->getLink(key);
    return line ? platform::as<repository::Association>(line->getItem(kAssociationItem))
                : AssociationRef();
  });
}

void CLSEditor::nodeCreated(const std::string& key) {
  const auto box = m_diagram->getNode(key);
  if (!box) return;
  CommitClassName();
  if (m_diagram->getNode(key) != box) return;  // the host, told of the name, cleared the canvas
  try {
    bindClass(key, *box);
  } catch (...) {
    // A box without its class would be out of step with the model. One that cannot be filled stays,
    // with as much as could be shown.
    if (!box->getItem(kClassItem)) m_diagram->deleteNode(key);
    throw;
  }
  if (!m_programmatic) BeginClassName(*box, kNewClass);
  ClassCreated(key);
}

void CLSEditor::bindClass(const std::string& key, platform::DiagramNode& box) {
  const auto wrapper = make<repository::Class>();
  wrapper->Node(&box);
  Ref<platform::Node> shown = std::exchange(m_drawn, nullptr);
  if (!shown) shown = makeClass(key);
  wrapper->clsObject(shown.get());
  box.setItem(kClassItem, wrapper.get());
  showCompartments(*wrapper);
}

Ref<platform::Node> CLSEditor::makeClass(const std::string& key) {
  const auto classes = model().MetaNodes(types::kClass);
  const bool isTaken = static_cast<bool>(classes->find(key));
  try {
    return m_repository->MakeClass(kNewClass, key, "", "", "", "");
  } catch (...) {
    const auto half = platform::as<platform::Node>(classes->find(key));
    if (half && !isTaken) repository::removeRest(*half);
    throw;
  }
}

void CLSEditor::linkCreated(const std::string& key) {
  const auto line = m_diagram->getLink(key);
  if (!line) return;
  try {
    bindRelationship(key, *line);
  } catch (...) {
    m_diagram->deleteLink(key);
    throw;
  }
  if (!m_programmatic) EditAssociation(key);
  AssocCreated(key);
}

void CLSEditor::bindRelationship(const std::string& key, platform::DiagramLink& line) {
  const auto wrapper = make<repository::Association>();
  Ref<platform::Node> shown = std::exchange(m_drawn, nullptr);
  if (!shown) shown = makeRelationship(key, line);
  wrapper->clsObject(shown.get());
  wrapper->link(&line);
  line.setItem(kAssociationItem, wrapper.get());
  wrapper->Populate();
}

Ref<platform::Node> CLSEditor::makeRelationship(const std::string& key,
                                                const platform::DiagramLink& line) {
  return repository::makeRelationship(*m_repository, m_kind, key, line.source()->key(),
                                      line.target()->key());
}

void CLSEditor::nodeDeleted(const std::string& key) {
  if (m_className->Visible() && m_className->Tag() == key) endNaming();
  const auto shown = m_classControl->Node();
  if (shown && shown->key() == key) closePane();
  ClassDeleted(key);
}

void CLSEditor::nodePressed(const std::string& key) {
  if (m_classControl->Visible()) {
    if (const ClassRef pressed = GetClassFromNode(key)) {
      pressed->Populate();
      showInPane(*pressed);
      ClassChanged(key);
    }
  }
  CommitClassName();
}

void CLSEditor::nodeRightClicked(const std::string& key) {
  m_activeBar->Tag(key);
  ShowPopupMenu("Class");
  ClassRClicked(key);
}

void CLSEditor::linkRightClicked(const std::string& key) {
  m_activeBar->Tag(key);
  ShowPopupMenu("Link");
  AssocRClicked(key);
}

void CLSEditor::buttonClicked(const std::string& key) {
  CommitClassName();
  dispatchButton(key);
  ToolbarButton(key);
}

}  // namespace brisel::editor
