#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/ModelRelations.h"

/// What the matrix says in words.
namespace brisel::tools {

/// "association", "shared", "composite", "generalization".
[[nodiscard]] std::string_view wordOf(repository::RelationshipKind kind);
/// Nothing for another word.
[[nodiscard]] std::optional<repository::RelationshipKind> kindOf(std::string_view word);

/// The class's name, or what stands for one.
[[nodiscard]] std::string titleOf(const platform::Node& node);
/// "Order <<entity>>: 3 relationships".
[[nodiscard]] std::string sentenceOn(const ModelRelations::Class& shown);
/// "Order is composed of OrderLine ("has", 1 order to 1..* lines)". The relationship is complete.
[[nodiscard]] std::string sentenceOn(const ModelRelations::Relationship& relationship);

}  // namespace brisel::tools
