#include "tools/MatrixWords.h"

#include <array>

#include "repository/Class.h"

namespace brisel::tools {

using repository::RelationshipKind;

namespace {

struct Words {
  RelationshipKind kind;
  std::string_view word;
  std::string_view verb;  ///< between the class at which the line begins and the other one
};

constexpr std::array kWords = {
    Words{RelationshipKind::association, "association", "is associated with"},
    Words{RelationshipKind::shared, "shared", "aggregates"},
    Words{RelationshipKind::composite, "composite", "is composed of"},
    Words{RelationshipKind::generalization, "generalization", "is a sub class of"},
};

const Words& wordsOf(RelationshipKind kind) {
  for (const Words& row : kWords) {
    if (row.kind == kind) return row;
  }
  return kWords.front();
}

/// "1 order to 0..* lines": multiplicity and role of each end, "?" for one that has none; empty
/// when none has.
std::string endsOf(const platform::Node& node) {
  const auto end = [&](std::string_view multiplicity, std::string_view role) {
    std::string text = node.GetProperty(multiplicity).text();
    const std::string name = node.GetProperty(role).text();
    if (!name.empty()) text += (text.empty() ? "" : " ") + name;
    return text;
  };
  const std::string source = end("SourceMultiplicity", "SourceRoleName");
  const std::string target = end("TargetMultiplicity", "TargetRolename");
  if (source.empty() && target.empty()) return {};
  return (source.empty() ? "?" : source) + " to " + (target.empty() ? "?" : target);
}

}  // namespace

std::string_view wordOf(RelationshipKind kind) { return wordsOf(kind).word; }

std::optional<RelationshipKind> kindOf(std::string_view word) {
  for (const Words& row : kWords) {
    if (row.word == word) return row.kind;
  }
  return {};
}

std::string titleOf(const platform::Node& node) {
  std::string name = node.name();
  return name.empty() ? "(unnamed)" : name;
}

std::string sentenceOn(const ModelRelations::Class& shown) {
  std::string text = titleOf(*shown.node);
  if (!shown.stereotype.empty()) text += " <<" + shown.stereotype + ">>";
  const std::size_t count = shown.relationships.size();
  return text + ": " + std::to_string(count) + (count == 1 ? " relationship" : " relationships");
}

std::string sentenceOn(const ModelRelations::Relationship& relationship) {
  std::string text = titleOf(*relationship.source->node) + ' ';
  text += wordsOf(relationship.kind).verb;
  text += ' ' + titleOf(*relationship.target->node);
  std::string details;
  const std::string name = relationship.node->name();
  if (!name.empty()) details = '"' + name + '"';
  if (const std::string ends = endsOf(*relationship.node); !ends.empty()) {
    details += (details.empty() ? "" : ", ") + ends;
  }
  const std::string stereotype = repository::stereotypeLabel(*relationship.node);
  if (!stereotype.empty()) details += (details.empty() ? "" : ", ") + stereotype;
  return details.empty() ? text : text + " (" + details + ')';
}

}  // namespace brisel::tools
