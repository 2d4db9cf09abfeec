#include "tools/ModelRelations.h"

#include <algorithm>

#include "platform/Text.h"
#include "repository/Class.h"

namespace brisel::tools {

using platform::Change;
using platform::each;
using platform::Link;
using platform::Node;
using repository::RelationshipKind;
using repository::RelationshipType;
namespace types = platform::types;

namespace {

constexpr std::string_view kComposite = "isComposite";

bool isRelationship(std::string_view type) {
  const auto& all = repository::kRelationshipTypes;
  return std::any_of(all.begin(), all.end(),
                     [&](const RelationshipType& one) { return one.kind == type; });
}

RelationshipKind kindOf(const Node& relationship, std::string_view type) {
  if (type == types::kAssociation) return RelationshipKind::association;
  if (type == types::kGeneralization) return RelationshipKind::generalization;
  return relationship.GetProperty(kComposite).isTrue() ? RelationshipKind::composite
                                                       : RelationshipKind::shared;
}

/// Calls with every node of the type; with none where the repository does not know the type.
template <class Visit>
void eachNode(const platform::MetaRepository& model, std::string_view type, const Visit& visit) {
  for (auto& known : each<platform::MetaType>(model.nodeTypes())) {
    if (known.name() != type) continue;
    for (auto& node : each<Node>(known.extension())) visit(node);
  }
}

}  // namespace

void ModelRelations::follow(platform::MetaRepository* model) {
  m_listening.disconnect();
  m_relationships.clear();
  m_classes.clear();
  m_model = model;
  if (m_model) {
    readAll();
    m_listening = m_model->onChange([this](const Change& change) { changed(change); });
  }
  ClassesChanged();
}

void ModelRelations::readAll() {
  eachNode(*m_model, types::kClass, [this](Node& node) { enterClass(node); });
  for (const RelationshipType& type : repository::kRelationshipTypes) {
    eachNode(*m_model, type.kind, [this](Node& node) { enterRelationship(node); });
  }
}

std::size_t ModelRelations::incompleteCount() const {
  return static_cast<std::size_t>(
      std::count_if(m_relationships.begin(), m_relationships.end(),
                    [](const auto& entry) { return !entry.second->isComplete(); }));
}

const ModelRelations::Relationship* ModelRelations::find(const Node& relationship) const {
  const auto found = m_relationships.find(&relationship);
  return found == m_relationships.end() ? nullptr : found->second.get();
}

ModelRelations::Class* ModelRelations::classOf(const Node* node) const {
  const auto found = m_classes.find(node);
  return found == m_classes.end() ? nullptr : found->second.get();
}

// ---- what the model tells -----------------------------------------------------------------------

void ModelRelations::changed(const Change& change) {
  if (auto* node = dynamic_cast<Node*>(&change.element)) {
    nodeChanged(*node, change);
  } else if (auto* link = dynamic_cast<Link*>(&change.element)) {
    linkChanged(*link);
  }
}

void ModelRelations::nodeChanged(Node& node, const Change& change) {
  using Kind = Change::Kind;
  const std::string type = node.Parent()->name();
  if (type == types::kClass) {
    if (change.kind == Kind::propertySet) return;
    if (change.kind == Kind::nodeMade) enterClass(node);
    if (change.kind == Kind::nodeRemoved) strikeClass(node);
    if (Class* entry = classOf(&node)) readClass(*entry);
    ClassesChanged();
  } else if (isRelationship(type)) {
    if (change.kind == Kind::nodeMade) enterRelationship(node);
    if (change.kind == Kind::nodeRemoved) strikeRelationship(node);
    const auto found = m_relationships.find(&node);
    if (found != m_relationships.end()) found->second->kind = kindOf(node, type);
    RelationshipsChanged();
  } else if (type == types::kStereotype && change.kind == Kind::renamed) {
    for (const auto& [key, entry] : m_classes) readClass(*entry);
    ClassesChanged();
  }
}

/// A relationship's end or a class's stereotype; links of other types mean nothing here.
void ModelRelations::linkChanged(Link& link) {
  const auto source = link.source();
  if (!source) return;
  const auto relationship = m_relationships.find(source.get());
  if (relationship != m_relationships.end()) {
    readRelationship(*relationship->second);
    RelationshipsChanged();
  } else if (Class* entry = classOf(source.get())) {
    if (!link.Parent()->name().ends_with(".Stereotype")) return;
    readClass(*entry);
    ClassesChanged();
  }
}

// ---- entries ------------------------------------------------------------------------------------

void ModelRelations::enterClass(Node& node) {
  auto entry = std::make_unique<Class>();
  entry->node = &node;
  readClass(*entry);
  m_classes[&node] = std::move(entry);
}

void ModelRelations::strikeClass(const Node& node) {
  Class* gone = classOf(&node);
  if (!gone) return;
  for (Relationship* entry : std::vector(gone->relationships)) detach(*entry);
  m_classes.erase(&node);
}

void ModelRelations::readClass(Class& entry) const {
  entry.name = entry.node->name();
  entry.stereotype = repository::stereotypeName(*entry.node);
  if (entry.stereotype == "<NONE>") entry.stereotype.clear();
}

void ModelRelations::enterRelationship(Node& node) {
  auto made = std::make_unique<Relationship>();
  made->node = &node;
  made->kind = kindOf(node, node.Parent()->name());
  auto& entry = m_relationships[&node] = std::move(made);
  readRelationship(*entry);
}

void ModelRelations::strikeRelationship(const Node& node) {
  const auto found = m_relationships.find(&node);
  if (found == m_relationships.end()) return;
  detach(*found->second);
  m_relationships.erase(found);
}

/// Where it ends now.
void ModelRelations::readRelationship(Relationship& entry) {
  detach(entry);
  const RelationshipType& type = repository::relationshipTypeOf(*entry.node);
  Class* source = classOf(repository::endOf(*entry.node, type.source).get());
  Class* target = classOf(repository::endOf(*entry.node, type.target).get());
  if (!source || !target) return;
  entry.source = source;
  entry.target = target;
  source->relationships.push_back(&entry);
  if (target != source) target->relationships.push_back(&entry);
}

void ModelRelations::detach(Relationship& entry) {
  for (Class* end : {entry.source, entry.target}) {
    if (end) std::erase(end->relationships, &entry);
  }
  entry.source = nullptr;
  entry.target = nullptr;
}

}  // namespace brisel::tools
