#pragma once

#include <array>
#include <string_view>

#include "repository/Association.h"
#include "repository/CLSRepository.h"

/// The kinds of relationships, as the editor draws them.
namespace brisel::editor {

/// How a kind ends at classes, and how one is deleted.
struct RelationshipType {
  std::string_view kind;
  std::string_view source;  ///< the link to the class at which the line begins
  std::string_view target;
  void (repository::CLSRepository::*remove)(std::string_view identifier);
};

/// In the order in which they are drawn. The line of a generalization leads from the sub class to
/// the super class.
extern const std::array<RelationshipType, 3> kRelationshipTypes;

/// An Error (invalidCall) for what is no relationship.
[[nodiscard]] const RelationshipType& relationshipTypeOf(const platform::Node& relationship);

/// The class at an end of a relationship; nothing where the relationship lacks that end.
[[nodiscard]] platform::Ref<platform::Node> endOf(const platform::Node& relationship,
                                                  std::string_view linkType);

[[nodiscard]] bool isComposite(const repository::Association& relationship);

}  // namespace brisel::editor
