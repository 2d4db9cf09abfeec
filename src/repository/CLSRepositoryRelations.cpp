// Relationships, the deletion of classes, and what moves members and relationships.

#include <array>
#include <map>
#include <string>
#include <unordered_set>

#include "platform/Collection.h"
#include "platform/Error.h"
#include "repository/CLSRepository.h"
#include "repository/MovedAssociation.h"

namespace brisel::repository {

using platform::each;
using platform::Error;
using platform::ErrorNumber;
using platform::make;
using platform::Ref;
namespace types = platform::types;

namespace {

struct EndWords {
  std::string_view kind;
  std::string_view first;
  std::string_view second;
};

constexpr std::array kEndWords = {EndWords{types::kAssociation, "Source", "Target"},
                                  EndWords{types::kAggregation, "Source", "Target"},
                                  EndWords{types::kGeneralization, "Super", "Sub"}};

const EndWords& endWordsOf(std::string_view kind) {
  for (const EndWords& words : kEndWords) {
    if (words.kind == kind) return words;
  }
  throw Error(ErrorNumber::invalidCall, "Not a kind of relationship: " + std::string(kind));
}

std::string endLinkType(std::string_view kind, std::string_view word) {
  return std::string(kind).append(".").append(word).append(".Class");
}

/// The names of what a class owns. Asking for each name by itself would cost as much as there are
/// members, each time.
class OwnedNames {
 public:
  OwnedNames(const platform::Node& owner, std::string_view ownership) {
    for (const platform::Link& link : each<platform::Link>(owner.outgoing(ownership))) {
      m_names.insert(link.Target()->name());
    }
  }
  /// False for a name that is there already.
  bool add(const std::string& name) { return m_names.insert(name).second; }

 private:
  std::unordered_set<std::string> m_names;
};

}  // namespace

CLSRepository::NodeRef CLSRepository::MakeAssociation(Text name, Text identifier, Text sourceId,
                                                      Text targetId) {
  return MakeRelation(types::kAssociation, name, identifier, sourceId, targetId, "Source",
                      "Target");
}

CLSRepository::NodeRef CLSRepository::MakeAggregation(Text name, Text identifier, Text sourceId,
                                                      Text targetId) {
  return MakeRelation(types::kAggregation, name, identifier, sourceId, targetId, "Source",
                      "Target");
}

CLSRepository::NodeRef CLSRepository::MakeGeneralization(Text identifier, Text superId,
                                                         Text subId) {
  return MakeRelation(types::kGeneralization, "", identifier, superId, subId, "Super", "Sub");
}

void CLSRepository::DeleteAssociation(Text identifier) {
  DeleteRelation(types::kAssociation, identifier, "Source", "Target");
}

void CLSRepository::DeleteAggregation(Text identifier) {
  DeleteRelation(types::kAggregation, identifier, "Source", "Target");
}

void CLSRepository::DeleteGeneralization(Text identifier) {
  DeleteRelation(types::kGeneralization, identifier, "Super", "Sub");
}

CLSRepository::NodeRef CLSRepository::MakeRelation(Text kind, Text name, Text identifier,
                                                   Text firstId, Text secondId, Text firstWord,
                                                   Text secondWord) {
  const NodeRef first = node(types::kClass, firstId);
  const NodeRef second = node(types::kClass, secondId);
  NodeRef relationship = repository().MakeNode(kind, name, identifier);
  const auto linkEnd = [&](Text word, Node& end) {
    const std::string linkName = UUID();
    const std::string linkId = UUID();
    repository().MakeLink(endLinkType(kind, word), linkName, linkId, *relationship, end);
  };
  linkEnd(firstWord, *first);
  linkEnd(secondWord, *second);
  return relationship;
}

void CLSRepository::DeleteRelation(Text kind, Text identifier, Text firstWord, Text secondWord) {
  const NodeRef relationship = node(kind, identifier);
  for (const Text word : {firstWord, secondWord}) {
    const std::string linkType = endLinkType(kind, word);
    removeFirstLink(*relationship->outgoing(linkType), linkType);
  }
  removeFromType(kind, identifier);
}

void CLSRepository::DeleteClass(Text identifier) {
  const NodeRef removed = node(types::kClass, identifier);
  for (Link& link : each<Link>(CopyList(*removed->outgoing(types::kClassHasOperation)))) {
    DeleteOperation(link.Target()->identifier());
  }
  for (Link& link : each<Link>(CopyList(*removed->outgoing(types::kClassHasAttrib)))) {
    DeleteAttribute(link.Target()->identifier());
  }
  removeFromType(types::kClass, identifier);
}

void CLSRepository::CopyAssocProperties(Node& source, Node& destination) {
  destination.identifier(source.identifier());
  destination.name(source.name());
  for (const Text key :
       {"Description", "SourceRoleName", "SourceMultiplicity", "SourceCardinality",
        "SourceNavigable", "TargetRolename", "TargetMultiplicity", "TargetCardinality",
        "TargetNavigable", "ReverseName", "PreferredDirection", "IsDerived"}) {
    destination.SetProperty(key, source.GetProperty(key));
  }
}

void CLSRepository::MoveAttributes(Node& destination, platform::Collection& links, bool keep) {
  OwnedNames names(destination, types::kClassHasAttrib);
  for (Link& link : each<Link>(CopyList(links))) {
    const NodeRef old = link.Target();
    if (!names.add(old->name())) continue;
    LinkRef ownership;
    const NodeRef added = AddAttributeS(destination.identifier(), old->name(),
                                        GetDataType(*old)->identifier(), ownership);
    CopyProperties(*old, *added);
    if (!keep) DeleteAttribute(old->identifier());
  }
}

void CLSRepository::MoveOperations(Node& destination, platform::Collection& links, bool keep) {
  OwnedNames names(destination, types::kClassHasOperation);
  for (Link& link : each<Link>(CopyList(links))) {
    const NodeRef old = link.Target();
    if (!names.add(old->name())) continue;
    LinkRef ownership;
    const NodeRef added = AddOperationS(destination.identifier(), old->name(),
                                        GetDataType(*old)->identifier(), ownership);
    CopyProperties(*old, *added);
    for (Link& owned : each<Link>(old->outgoing(types::kOperationHasParameter))) {
      const NodeRef parameter = owned.Target();
      const NodeRef copy = AddParameterS(added->identifier(), parameter->name(),
                                         GetDataType(*parameter)->identifier(), ownership);
      CopyProperties(*parameter, *copy);
    }
    if (!keep) DeleteOperation(old->identifier());
  }
}

CLSRepository::NodeRef CLSRepository::MoveAssoc(Node& relationship, Node& first, Node& second) {
  const NodeRef old = &relationship;  // outlives its removal from the repository
  const EndWords& words = endWordsOf(old->Parent()->name());
  const std::string identifier = old->identifier();
  LinkRef stereotypeLink;
  const NodeRef stereotype = GetStereotype(*old, stereotypeLink);
  DeleteRelation(words.kind, identifier, words.first, words.second);
  NodeRef moved = MakeRelation(words.kind, old->name(), identifier, first.identifier(),
                               second.identifier(), words.first, words.second);
  CopyProperties(*old, *moved);
  if (stereotype) SetStereotype(*moved, stereotype.get());
  return moved;
}

CLSRepository::CollectionRef CLSRepository::MoveAssociations(Node& newClass, Node& oldClass) {
  std::vector<Ref<platform::Object>> records;
  std::map<std::string, std::size_t, std::less<>> byKey;
  const auto pass = [&](Text kind, Text word, Text opposite, bool isFirst) {
    const std::string linkType = endLinkType(kind, word);
    for (Link& link : each<Link>(CopyList(*oldClass.Incoming(linkType)))) {
      const NodeRef relationship = link.source();
      const auto ends = relationship->outgoing(endLinkType(kind, opposite));
      const NodeRef other = platform::as<Link>(ends->Item(1))->Target();
      Node& first = isFirst ? newClass : *other;
      Node& second = isFirst ? *other : newClass;
      const NodeRef moved = MoveAssoc(*relationship, first, second);
      auto record = make<MovedAssociation>(moved, NodeRef(&first), NodeRef(&second));
      const auto [place, isNew] = byKey.try_emplace(moved->identifier(), records.size());
      if (isNew) {
        records.emplace_back(record);
      } else {
        records[place->second] = record;
      }
    }
  };
  for (const EndWords& words : kEndWords) {
    pass(words.kind, words.first, words.second, true);
    pass(words.kind, words.second, words.first, false);
  }
  return make<platform::ObjectList>(std::move(records));
}

}  // namespace brisel::repository
