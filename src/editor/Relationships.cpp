#include "editor/Relationships.h"

#include <algorithm>

#include "platform/Error.h"

namespace brisel::editor {

using repository::CLSRepository;
namespace types = platform::types;

const std::array<RelationshipType, 3> kRelationshipTypes = {
    RelationshipType{types::kAssociation, types::kAssociationSource, types::kAssociationTarget,
                     &CLSRepository::DeleteAssociation},
    RelationshipType{types::kAggregation, types::kAggregationSource, types::kAggregationTarget,
                     &CLSRepository::DeleteAggregation},
    RelationshipType{types::kGeneralization, types::kGeneralizationSub,
                     types::kGeneralizationSuper, &CLSRepository::DeleteGeneralization},
};

const RelationshipType& relationshipTypeOf(const platform::Node& relationship) {
  const std::string kind = relationship.Parent()->name();
  const auto row = std::find_if(kRelationshipTypes.begin(), kRelationshipTypes.end(),
                                [&](const RelationshipType& one) { return one.kind == kind; });
  if (row == kRelationshipTypes.end()) {
    throw platform::Error(platform::ErrorNumber::invalidCall,
                          "Not a kind of relationship: " + kind);
  }
  return *row;
}

platform::Ref<platform::Node> endOf(const platform::Node& relationship,
                                    std::string_view linkType) {
  const auto links = relationship.outgoing(linkType);
  if (links->Count() == 0) return {};
  return platform::as<platform::Link>(links->Item(1))->Target();
}

bool isComposite(const repository::Association& relationship) {
  return relationship.isAggregation() &&
         relationship.clsObject()->GetProperty("isComposite").isTrue();
}

}  // namespace brisel::editor
