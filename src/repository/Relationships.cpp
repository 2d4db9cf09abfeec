#include "repository/Relationships.h"

#include <algorithm>
#include <set>
#include <vector>

#include "platform/Error.h"

namespace brisel::repository {

using platform::Error;
using platform::ErrorNumber;
using platform::Link;
using platform::Node;
using platform::Ref;
namespace types = platform::types;

namespace {

/// Whether the lower class inherits from the upper one, over any number of steps.
bool isBelow(const Node& upper, const Node& lower, std::string_view ignored) {
  std::vector<const Node*> open{&lower};
  std::set<const Node*> seen{&lower};
  while (!open.empty()) {
    const Node* one = open.back();
    open.pop_back();
    if (one == &upper) return true;
    for (auto& link : platform::each<Link>(one->Incoming(types::kGeneralizationSub))) {
      const auto relationship = link.source();
      if (relationship->identifier() == ignored) continue;
      const auto super = endOf(*relationship, types::kGeneralizationSuper);
      if (super && seen.insert(super.get()).second) open.push_back(super.get());
    }
  }
  return false;
}

}  // namespace

const std::array<RelationshipType, 3> kRelationshipTypes = {
    RelationshipType{types::kAssociation, types::kAssociationSource, types::kAssociationTarget,
                     &CLSRepository::DeleteAssociation},
    RelationshipType{types::kAggregation, types::kAggregationSource, types::kAggregationTarget,
                     &CLSRepository::DeleteAggregation},
    RelationshipType{types::kGeneralization, types::kGeneralizationSub, types::kGeneralizationSuper,
                     &CLSRepository::DeleteGeneralization},
};

const RelationshipType& relationshipTypeOf(const Node& relationship) {
  const std::string kind = relationship.Parent()->name();
  const auto row = std::find_if(kRelationshipTypes.begin(), kRelationshipTypes.end(),
                                [&](const RelationshipType& one) { return one.kind == kind; });
  if (row == kRelationshipTypes.end()) {
    throw Error(ErrorNumber::invalidCall, "Not a kind of relationship: " + kind);
  }
  return *row;
}

Ref<Node> endOf(const Node& relationship, std::string_view linkType) {
  const auto links = relationship.outgoing(linkType);
  if (links->Count() == 0) return {};
  return platform::as<Link>(links->Item(1))->Target();
}

bool isComposite(const Association& relationship) {
  return relationship.isAggregation() &&
         relationship.clsObject()->GetProperty("isComposite").isTrue();
}

Ref<Node> makeRelationship(CLSRepository& model, RelationshipKind kind, std::string_view identifier,
                           std::string_view source, std::string_view target) {
  for (const RelationshipType& type : kRelationshipTypes) {
    if (!model.GetRepository()->MetaNodes(type.kind)->find(identifier)) continue;
    throw Error(ErrorNumber::duplicateKey,
                "There is a relationship under the key " + std::string(identifier) + " already");
  }
  try {
    if (kind == RelationshipKind::association) {
      return model.MakeAssociation("New Association", identifier, source, target);
    }
    if (kind == RelationshipKind::generalization) {
      return model.MakeGeneralization(identifier, target, source);
    }
    Ref<Node> made = model.MakeAggregation("New Aggregation", identifier, source, target);
    made->SetProperty("isComposite", kind == RelationshipKind::composite);
    return made;
  } catch (...) {
    for (const RelationshipType& type : kRelationshipTypes) {
      const auto half = model.GetRepository()->MetaNodes(type.kind)->find(identifier);
      if (half) removeRest(static_cast<Node&>(*half));
    }
    throw;
  }
}

void removeRest(Node& node) {
  const auto type = node.Parent();
  const std::string identifier = node.identifier();
  if (type->find(identifier) == &node) type->extension()->Remove(identifier, false);
}

void deleteRelationship(CLSRepository& model, Node& relationship) {
  const RelationshipType& type = relationshipTypeOf(relationship);
  const std::string identifier = relationship.identifier();
  try {
    model.SetStereotype(relationship, nullptr);
    if (endOf(relationship, type.source) && endOf(relationship, type.target)) {
      (model.*type.remove)(identifier);
    } else {
      model.RemoveObject(type.kind, identifier);
    }
  } catch (...) {
    removeRest(relationship);
    throw;
  }
}

std::string inheritanceRefusal(const Node& sub, const Node& super, std::string_view ignored) {
  if (&sub == &super) return "A class cannot be its own super class";
  if (isBelow(sub, super, ignored)) return super.name() + " is already below " + sub.name();
  return {};
}

}  // namespace brisel::repository
