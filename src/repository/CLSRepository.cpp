#include "repository/CLSRepository.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Text.h"

namespace brisel::repository {

using platform::each;
using platform::Error;
using platform::ErrorNumber;
using platform::Ref;
using platform::Value;

void CLSRepository::Create(platform::Object* generator) { m_generator = generator; }

std::string CLSRepository::UUID() {
  if (!m_generator) throw Error(ErrorNumber::objectMissing, "No identifier generator is set");
  return m_generator->call("GetUUID").string();
}

std::string CLSRepository::MakeId(Text a, Text b) const {
  return std::string(a).append("::").append(b);
}

std::string CLSRepository::MakeChildId(Text c, Text a, Text b) const {
  return std::string(c).append("::").append(MakeId(a, b));
}

std::string CLSRepository::MakeLinkId(Text a, Text b, Text c) const {
  return std::string(a).append(".").append(c).append(".").append(b);
}

CLSRepository::NodeRef CLSRepository::MakeChild(Text parentType, Text parentId, Text childType,
                                                Text childId, Text relation, Text childName, Text,
                                                NodeRef& child, LinkRef& link) {
  const NodeRef parent = node(parentType, parentId);
  child = repository().MakeNode(childType, childName, childId);
  const std::string linkType =
      std::string(parentType).append(".").append(relation).append(".").append(childType);
  const std::string linkName = MakeLinkId(parentId, childId, relation);
  link = repository().MakeLink(linkType, linkName, UUID(), *parent, *child);
  return child;
}

CLSRepository::NodeRef CLSRepository::SearchObject(Text type, Text property, const Value& value) {
  const Ref<platform::MetaType> metaType = repository().MetaNodes(type);
  if (value.isString() && platform::equalsIgnoringCase(property, "name")) {
    return static_cast<Node*>(metaType->findByName(value.string()).get());
  }
  for (Node& candidate : each<Node>(metaType->extension())) {
    if (candidate.Prop_(property) == value) return &candidate;
  }
  return {};
}

CLSRepository::LinkRef CLSRepository::SearchLinkedObject(Node& node, Text linkType, bool outgoing,
                                                         Text property, const Value& value) {
  for (Link& link : each<Link>(outgoing ? node.outgoing(linkType) : node.Incoming(linkType))) {
    const NodeRef farEnd = outgoing ? link.Target() : link.source();
    if (farEnd->Prop_(property) == value) return &link;
  }
  return {};
}

void CLSRepository::RemoveLink(Text linkType, bool orientation, Text identifier) {
  const Ref<platform::MetaType> type = repository().MetaLinks(linkType);
  const auto link = Ref<Link>(static_cast<Link*>(type->extension(identifier).get()));
  const NodeRef source = link->source();
  const NodeRef target = link->Target();
  if (orientation) {
    source->outgoing(linkType)->Remove(identifier, false);
    target->Incoming(linkType)->Remove(identifier, false);
  } else {
    source->Incoming(linkType)->Remove(identifier, false);
    target->outgoing(linkType)->Remove(identifier, false);
  }
  type->extension()->Remove(identifier, false);
}

void CLSRepository::RemoveObject(Text type, Text identifier) {
  const Ref<platform::MetaType> metaType = repository().MetaNodes(type);
  const NodeRef removed = node(type, identifier);
  const auto removeLinks = [&](const CollectionRef& linkTypes, bool outgoing) {
    for (platform::MetaType& linkType : each<platform::MetaType>(linkTypes->copy())) {
      const std::string name = linkType.name();
      const CollectionRef links = outgoing ? removed->outgoing(name) : removed->Incoming(name);
      for (Link& link : each<Link>(CopyList(*links))) {
        RemoveLink(link.Parent()->name(), outgoing, link.identifier());
      }
    }
  };
  removeLinks(metaType->outgoing(), true);
  removeLinks(metaType->Incoming(), false);
  metaType->extension()->Remove(identifier, false);
}

CLSRepository::CollectionRef CLSRepository::CopyList(platform::Collection& list) {
  return list.copy();
}

void CLSRepository::CopyProperties(Node& source, Node& destination) {
  for (auto& definition : each<platform::PropertyDefinition>(source.Parent()->properties())) {
    const std::string name = definition.name();
    if (platform::equalsIgnoringCase(name, "identifier")) continue;
    destination.SetProperty(name, source.Prop_(name));
  }
  destination.name(source.name());
}

platform::MetaRepository& CLSRepository::repository() const {
  if (!m_repository) throw Error(ErrorNumber::objectMissing, "No repository is set");
  return *m_repository;
}

CLSRepository::NodeRef CLSRepository::node(Text type, Text identifier) const {
  return static_cast<Node*>(repository().MetaNodes(type)->extension(identifier).get());
}

void CLSRepository::removeFromType(Text type, Text identifier) {
  repository().MetaNodes(type)->extension()->Remove(identifier, false);
}

void CLSRepository::removeFirstLink(platform::Collection& links, Text linkType) {
  const auto link = platform::as<Link>(links.Item(1));
  RemoveLink(linkType, true, link->identifier());
}

const platform::MemberTable& CLSRepository::memberTable() const {
  using R = CLSRepository;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<R>()
          .method("Create", &R::Create)
          .property("UUIDGenerator", &R::UUIDGenerator, &R::UUIDGenerator)
          .method("UUID", &R::UUID)
          .method("SetRepository", &R::SetRepository)
          .method("GetRepository", &R::GetRepository)
          .method("MakeId", &R::MakeId)
          .method("MakeChildId", &R::MakeChildId)
          .method("MakeLinkId", &R::MakeLinkId)
          .method("MakeChild", &R::MakeChild)
          .method("SearchObject", &R::SearchObject)
          .method("SearchLinkedObject", &R::SearchLinkedObject)
          .method("RemoveLink", &R::RemoveLink)
          .method("RemoveObject", &R::RemoveObject)
          .method("CopyList", &R::CopyList)
          .method("CopyProperties", &R::CopyProperties)
          .method("MakeClass", &R::MakeClass)
          .method("MakeStereotype", &R::MakeStereotype)
          .method("MakeDataType", &R::MakeDataType)
          .method("AddAttribute", &R::AddAttribute)
          .method("AddAttributeS", &R::AddAttributeS)
          .method("AddOperation", &R::AddOperation)
          .method("AddOperationS", &R::AddOperationS)
          .method("AddParameter", &R::AddParameter)
          .method("AddParameterS", &R::AddParameterS)
          .method("SetAttribDataType", &R::SetAttribDataType)
          .method("SetOperationDataType", &R::SetOperationDataType)
          .method("SetParameterDataType", &R::SetParameterDataType)
          .method("GetDataType", &R::GetDataType)
          .method("DeleteAttribute", &R::DeleteAttribute)
          .method("DeleteOperation", &R::DeleteOperation)
          .method("DeleteParameter", &R::DeleteParameter)
          .method("GetStereotype", &R::GetStereotype)
          .method("SetStereotype", &R::SetStereotype)
          .method("MakeAssociation", &R::MakeAssociation)
          .method("MakeAggregation", &R::MakeAggregation)
          .method("MakeGeneralization", &R::MakeGeneralization)
          .method("DeleteAssociation", &R::DeleteAssociation)
          .method("DeleteAggregation", &R::DeleteAggregation)
          .method("DeleteGeneralization", &R::DeleteGeneralization)
          .method("DeleteClass", &R::DeleteClass)
          .method("CopyAssocProperties", &R::CopyAssocProperties)
          .method("MoveAttributes", &R::MoveAttributes)
          .method("MoveOperations", &R::MoveOperations)
          .method("MoveAssoc", &R::MoveAssoc)
          .method("MoveAssociations", &R::MoveAssociations)
          .method("MakeGeomArea", &R::MakeGeomArea)
          .method("MakeGeomPoint", &R::MakeGeomPoint)
          .method("DeleteAllGeomAreas", &R::DeleteAllGeomAreas)
          .method("DeleteAllGeomPoints", &R::DeleteAllGeomPoints)
          .build();
  return kTable;
}

}  // namespace brisel::repository
