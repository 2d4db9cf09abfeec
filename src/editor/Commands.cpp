// Creation and deletion by command, and the modes of the canvas.

#include <string>
#include <vector>

#include "controls/Row.h"
#include "editor/Busy.h"
#include "editor/CLSEditor.h"

namespace brisel::editor {

using platform::each;
using platform::Ref;
using repository::kRelationshipTypes;
using repository::RelationshipType;
namespace types = platform::types;

void CLSEditor::SelectMode() {
  trap("SelectMode", [this] { m_diagram->SelectMode(); });
}

void CLSEditor::CreateMode() {
  trap("CreateMode", [this] { m_diagram->ClickCreateMode(); });
}

CLSEditor::ClassRef CLSEditor::CreateClass(Text id, Text name, Text intention, Text category,
                                           Text comment, Text scope) {
  return trap("CreateClass", [&]() -> ClassRef {
    const Temporarily programmatic(m_programmatic, true);
    if (!m_diagram->createNode(id, name, 0, 0, 3000, 2000, 2)) return {};
    ClassRef made = GetClassFromNode(id);
    if (!made) return {};
    if (!name.empty()) made->name(name);
    const auto node = made->clsObject();
    node->SetProperty("Description", intention);
    node->SetProperty("category", category);
    node->SetProperty("comment", comment);
    node->SetProperty("scope", scope);
    made->Populate();
    return made;
  });
}

CLSEditor::AssociationRef CLSEditor::CreateAssociation(Text id, Text name, Text, Text srcId,
                                                       Text tgtId) {
  return trap("CreateAssociation",
              [&] { return createLink(RelationshipKind::association, id, name, srcId, tgtId); });
}

CLSEditor::AssociationRef CLSEditor::CreateAggregation(Text id, Text name, Text, Text srcId,
                                                       Text tgtId, bool isComposite) {
  return trap("CreateAggregation", [&] {
    const auto kind = isComposite ? RelationshipKind::composite : RelationshipKind::shared;
    return createLink(kind, id, name, srcId, tgtId);
  });
}

CLSEditor::AssociationRef CLSEditor::CreateGeneralization(Text id, Text name, Text, Text srcId,
                                                          Text tgtId) {
  return trap("CreateGeneralization",
              [&] { return createLink(RelationshipKind::generalization, id, name, srcId, tgtId); });
}

CLSEditor::AssociationRef CLSEditor::createLink(RelationshipKind kind, Text id, Text name,
                                                Text srcId, Text tgtId) {
  const Temporarily during(m_kind, kind);
  const Temporarily programmatic(m_programmatic, true);
  if (!m_diagram->createLink(id, name, srcId, tgtId)) return {};
  AssociationRef made = GetAssociationFromLink(id);
  if (made && !name.empty()) {
    made->name(name);
    made->Populate();
  }
  return made;
}

void CLSEditor::DeleteClass(Text key) {
  trap("DeleteClass", [&] {
    const std::string identifier(key);
    const auto element = model().MetaNodes(types::kClass)->extension(identifier);
    const auto classNode = platform::as<platform::Node>(element);
    deleteRelationshipsOf(*classNode);
    m_repository->SetStereotype(*classNode, nullptr);
    deleteGeometryOf(identifier);
    m_repository->DeleteClass(identifier);
    m_diagram->deleteNode(identifier);
  });
}

void CLSEditor::deleteRelationshipsOf(platform::Node& classNode) {
  for (const RelationshipType& row : kRelationshipTypes) {
    const auto type = model().MetaNodes(row.kind);
    for (const Text end : {row.source, row.target}) {
      for (auto& link : each<platform::Link>(classNode.Incoming(end)->copy())) {
        const auto relationship = link.source();
        // One of the class with itself is met twice.
        if (type->find(relationship->identifier())) deleteRelationship(*relationship);
      }
    }
  }
}

void CLSEditor::deleteRelationship(platform::Node& relationship) {
  takeRelationshipFromModel(relationship);
  deleteGeometryOf(relationship.identifier());
}

void CLSEditor::takeRelationshipFromModel(platform::Node& relationship) {
  repository::deleteRelationship(*m_repository, relationship);
}

void CLSEditor::deleteSelection() {
  const CanvasUpdate update(*m_diagram);
  std::vector<std::string> lines;
  for (auto& line : each<platform::DiagramLink>(m_diagram->getSelectedLinks())) {
    lines.push_back(line.key());
  }
  std::vector<std::string> boxes;
  for (auto& box : each<platform::DiagramNode>(m_diagram->getSelectedNodes())) {
    boxes.push_back(box.key());
  }
  // What left the model behind the editor's back is taken from the canvas alone.
  for (const std::string& key : lines) {
    const AssociationRef wrapper = GetAssociationFromLink(key);
    if (wrapper && controls::isInRepository(*wrapper->clsObject())) {
      deleteRelationship(*wrapper->clsObject());
    }
    m_diagram->deleteLink(key);
  }
  const auto classes = model().MetaNodes(types::kClass);
  for (const std::string& key : boxes) {
    if (!m_diagram->getNode(key)) continue;
    if (classes->find(key)) {
      DeleteClass(key);
    } else {
      m_diagram->deleteNode(key);
    }
  }
}

void CLSEditor::deleteGeometryOf(Text key) {
  for (const auto& record : watch().geometryOf(key)) {
    record->Parent()->extension()->Remove(record->identifier(), false);
  }
}

}  // namespace brisel::editor
