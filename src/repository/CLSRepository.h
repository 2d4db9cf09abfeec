#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Collection.h"
#include "platform/Repository.h"

namespace brisel::repository {

/// The one object through which the model is changed: turns operations on classes, members and
/// relationships into operations on the nodes and links of a meta repository, and owns the model's
/// conventions (types, link names, property keys, identifiers).
///
/// It checks nothing, catches nothing and rolls nothing back: errors of the repository pass to the
/// caller, and steps done before them stay done. Generator and repository are shared references.
class CLSRepository : public platform::Object {
 public:
  using Node = platform::Node;
  using Link = platform::Link;
  using NodeRef = platform::Ref<platform::Node>;
  using LinkRef = platform::Ref<platform::Link>;
  using CollectionRef = platform::Ref<platform::Collection>;
  using Text = std::string_view;

  // The system's members.
  void Create(platform::Object* generator);
  [[nodiscard]] platform::Ref<platform::Object> UUIDGenerator() const { return m_generator; }
  void UUIDGenerator(platform::Object* generator) { m_generator = generator; }
  /// A fresh identifier; an Error (objectMissing) before a generator is set.
  std::string UUID();
  void SetRepository(platform::MetaRepository* repository) { m_repository = repository; }
  [[nodiscard]] platform::Ref<platform::MetaRepository> GetRepository() const {
    return m_repository;
  }
  /// "a::b".
  [[nodiscard]] std::string MakeId(Text a, Text b) const;
  /// "c::a::b".
  [[nodiscard]] std::string MakeChildId(Text c, Text a, Text b) const;
  /// "a.c.b": the second and third arguments change places on purpose.
  [[nodiscard]] std::string MakeLinkId(Text a, Text b, Text c) const;
  /// An owned node and its ownership link. The description is not stored, on purpose.
  NodeRef MakeChild(Text parentType, Text parentId, Text childType, Text childId, Text relation,
                    Text childName, Text childDescription, NodeRef& child, LinkRef& link);
  /// The first node of the type whose property equals the value, or nothing.
  [[nodiscard]] NodeRef SearchObject(Text type, Text property, const platform::Value& value);
  /// The first link of the type at the node whose far end's property equals the value, or nothing.
  [[nodiscard]] LinkRef SearchLinkedObject(Node& node, Text linkType, bool outgoing, Text property,
                                           const platform::Value& value);
  void RemoveLink(Text linkType, bool orientation, Text identifier);
  void RemoveObject(Text type, Text identifier);
  [[nodiscard]] CollectionRef CopyList(platform::Collection& list);
  void CopyProperties(Node& source, Node& destination);

  NodeRef MakeClass(Text name, Text identifier, Text description, Text category, Text comment,
                    Text scope);
  NodeRef MakeStereotype(Text name, Text identifier, Text description);
  NodeRef MakeDataType(Text name, Text description, Text category);
  NodeRef AddAttribute(Text classId, Text name, Text description, bool final, Text scope,
                       bool static_, bool transient, Text value, bool volatile_, Text dataTypeId,
                       LinkRef& link);
  NodeRef AddAttributeS(Text classId, Text name, Text dataTypeId, LinkRef& link);
  NodeRef AddOperation(Text classId, Text name, Text description, Text category, bool constructor,
                       bool final, bool native, Text scope, bool static_, bool synchronized,
                       Text dataTypeId, LinkRef& link);
  NodeRef AddOperationS(Text classId, Text name, Text dataTypeId, LinkRef& link);
  NodeRef AddParameter(Text operationId, Text name, Text description, Text dataTypeId,
                       LinkRef& link);
  NodeRef AddParameterS(Text operationId, Text name, Text dataTypeId, LinkRef& link);
  /// These three only add a link: a caller that changes a type removes the old link first.
  void SetAttribDataType(Node& attribute, Node& dataType);
  void SetOperationDataType(Node& operation, Node& dataType);
  void SetParameterDataType(Node& parameter, Node& dataType);
  [[nodiscard]] NodeRef GetDataType(Node& member);
  void DeleteAttribute(Text identifier);
  void DeleteOperation(Text identifier);
  void DeleteParameter(Text identifier);
  /// The stereotype of the node, or nothing, in which case `link` is left alone.
  [[nodiscard]] NodeRef GetStereotype(Node& node, LinkRef& link);
  /// Nothing as the stereotype clears it.
  void SetStereotype(Node& node, Node* stereotype);

  NodeRef MakeAssociation(Text name, Text identifier, Text sourceId, Text targetId);
  NodeRef MakeAggregation(Text name, Text identifier, Text sourceId, Text targetId);
  NodeRef MakeGeneralization(Text identifier, Text superId, Text subId);
  void DeleteAssociation(Text identifier);
  void DeleteAggregation(Text identifier);
  void DeleteGeneralization(Text identifier);
  /// The members of the class, then the class; what else ends at it stays, on purpose.
  void DeleteClass(Text identifier);
  /// The identifier too, unlike CopyProperties: a morphed relationship keeps its identity.
  void CopyAssocProperties(Node& source, Node& destination);
  void MoveAttributes(Node& destination, platform::Collection& links, bool keep);
  void MoveOperations(Node& destination, platform::Collection& links, bool keep);
  NodeRef MoveAssoc(Node& relationship, Node& first, Node& second);
  /// MovedAssociation records, one a relationship, in the order of the passes.
  CollectionRef MoveAssociations(Node& newClass, Node& oldClass);

  NodeRef MakeGeomArea(Node& node, std::int32_t top, std::int32_t left, std::int32_t width,
                       std::int32_t height);
  NodeRef MakeGeomPoint(Node& relationship, std::int32_t x, std::int32_t y, Text kind,
                        std::int32_t rank);
  void DeleteAllGeomAreas();
  void DeleteAllGeomPoints();

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] platform::MetaRepository& repository() const;
  [[nodiscard]] NodeRef node(Text type, Text identifier) const;
  void removeFromType(Text type, Text identifier);
  void removeFirstLink(platform::Collection& links, Text linkType);
  void addDataTypeLink(Text linkType, Node& member, Node& dataType);
  void deleteMember(Text type, Text identifier, Text dataTypeLink, Text ownerLink);
  NodeRef MakeRelation(Text kind, Text name, Text identifier, Text firstId, Text secondId,
                       Text firstWord, Text secondWord);
  void DeleteRelation(Text kind, Text identifier, Text firstWord, Text secondWord);

  platform::Ref<platform::MetaRepository> m_repository;
  platform::Ref<platform::Object> m_generator;
};

}  // namespace brisel::repository
