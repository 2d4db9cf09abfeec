// Creation and deletion by command, and the modes of the canvas.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "controls/Row.h"
#include "editor/Busy.h"
#include "editor/CLSEditor.h"

namespace brisel::editor {

using platform::each;
using platform::Ref;
namespace types = platform::types;

namespace {

/// How the relationships of a kind end at a class, and how one is deleted.
struct RelationshipRow {
  std::string_view kind;
  std::array<std::string_view, 2> ends;
  void (repository::CLSRepository::*remove)(std::string_view);
};

constexpr std::array kRelationships = {
    RelationshipRow{types::kAssociation,
                    {types::kAssociationSource, types::kAssociationTarget},
                    &repository::CLSRepository::DeleteAssociation},
    RelationshipRow{types::kAggregation,
                    {types::kAggregationSource, types::kAggregationTarget},
                    &repository::CLSRepository::DeleteAggregation},
    RelationshipRow{types::kGeneralization,
                    {types::kGeneralizationSuper, types::kGeneralizationSub},
                    &repository::CLSRepository::DeleteGeneralization},
};

}  // namespace

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
  for (const RelationshipRow& row : kRelationships) {
    const auto type = model().MetaNodes(row.kind);
    for (const Text end : row.ends) {
      for (auto& link : each<platform::Link>(classNode.Incoming(end)->copy())) {
        const auto relationship = link.source();
        // One of the class with itself is met twice.
        if (type->find(relationship->identifier())) deleteRelationship(*relationship);
      }
    }
  }
}

void CLSEditor::deleteRelationship(platform::Node& relationship) {
  const std::string kind = relationship.Parent()->name();
  const auto row = std::find_if(kRelationships.begin(), kRelationships.end(),
                                [&](const RelationshipRow& one) { return one.kind == kind; });
  const std::string identifier = relationship.identifier();
  const auto hasEnd = [&](Text end) { return relationship.outgoing(end)->Count() > 0; };
  m_repository->SetStereotype(relationship, nullptr);
  if (hasEnd(row->ends[0]) && hasEnd(row->ends[1])) {
    (*m_repository.*row->remove)(identifier);
  } else {
    m_repository->RemoveObject(kind, identifier);
  }
  deleteGeometryOf(identifier);
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
