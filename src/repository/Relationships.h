#pragma once

#include <array>
#include <string>
#include <string_view>

#include "repository/Association.h"
#include "repository/CLSRepository.h"

/// The kinds of relationships as they are drawn, and what holds for all of them.
namespace brisel::repository {

/// What a person tells apart; a composite and a shared aggregation are of one type.
enum class RelationshipKind { association, composite, shared, generalization };

/// How a type ends at classes, and how one is deleted.
struct RelationshipType {
  std::string_view kind;
  std::string_view source;  ///< the link to the class at which the line begins
  std::string_view target;
  void (CLSRepository::*remove)(std::string_view identifier);
};

/// In the order in which they are drawn. The line of a generalization leads from the sub class to
/// the super class.
extern const std::array<RelationshipType, 3> kRelationshipTypes;

/// An Error (invalidCall) for what is no relationship.
[[nodiscard]] const RelationshipType& relationshipTypeOf(const platform::Node& relationship);

/// The class at an end of a relationship; nothing where the relationship lacks that end.
[[nodiscard]] platform::Ref<platform::Node> endOf(const platform::Node& relationship,
                                                  std::string_view linkType);

[[nodiscard]] bool isComposite(const Association& relationship);

/// A new relationship of which the line leads from the source to the target: from the sub class to
/// the super class, from the whole to the part. An Error (duplicateKey) when a relationship of any
/// kind has the identifier. Nothing is left of one that could not be made whole.
platform::Ref<platform::Node> makeRelationship(CLSRepository& model, RelationshipKind kind,
                                               std::string_view identifier, std::string_view source,
                                               std::string_view target);

/// Takes the relationship, which may lack an end, and its stereotype link from the model, even when
/// that fails half way. The stored geometry of its line stays.
void deleteRelationship(CLSRepository& model, platform::Node& relationship);

/// Takes out what is left of a node that was made or deleted half: it would stand in the way.
void removeRest(platform::Node& node);

/// Why the one class must not become a sub class of the other: a short sentence for a person, or
/// the empty text. The relationship that is ignored, by identifier, counts as gone.
[[nodiscard]] std::string inheritanceRefusal(const platform::Node& sub, const platform::Node& super,
                                             std::string_view ignored = {});

}  // namespace brisel::repository
