// Classes, their members, data types and stereotypes.

#include "platform/Text.h"
#include "repository/CLSRepository.h"

namespace brisel::repository {

using platform::each;
using platform::Ref;
namespace types = platform::types;

CLSRepository::NodeRef CLSRepository::MakeClass(Text name, Text identifier, Text description,
                                                Text category, Text comment, Text scope) {
  NodeRef made = repository().MakeNode(types::kClass, name, identifier);
  made->SetProperty("Description", description);
  made->SetProperty("category", category);
  made->SetProperty("comment", comment);
  made->SetProperty("scope", scope);
  return made;
}

CLSRepository::NodeRef CLSRepository::MakeStereotype(Text name, Text identifier, Text description) {
  NodeRef made = repository().MakeNode(types::kStereotype, name, identifier);
  made->SetProperty("Description", description);
  return made;
}

CLSRepository::NodeRef CLSRepository::MakeDataType(Text name, Text description, Text category) {
  NodeRef made = repository().MakeNode(types::kDataType, name, UUID());
  made->SetProperty("Description", description);
  made->SetProperty("TypeCategory", category);
  return made;
}

CLSRepository::NodeRef CLSRepository::AddAttribute(Text classId, Text name, Text description,
                                                   bool final, Text scope, bool static_,
                                                   bool transient, Text value, bool volatile_,
                                                   Text dataTypeId, LinkRef& link) {
  const NodeRef dataType = node(types::kDataType, dataTypeId);
  NodeRef made;
  MakeChild(types::kClass, classId, types::kAttrib, UUID(), "Has", name, description, made, link);
  // The name is empty here, unlike that of the links of operations and parameters; on purpose.
  repository().MakeLink(types::kAttribHasDataType, "", UUID(), *made, *dataType);
  made->SetProperty("final", final);
  made->SetProperty("scope", scope);
  made->SetProperty("static_", static_);
  made->SetProperty("transient", transient);
  made->SetProperty("value", value);
  made->SetProperty("volatile", volatile_);
  return made;
}

CLSRepository::NodeRef CLSRepository::AddAttributeS(Text classId, Text name, Text dataTypeId,
                                                    LinkRef& link) {
  return AddAttribute(classId, name, "", false, "", false, false, "", false, dataTypeId, link);
}

CLSRepository::NodeRef CLSRepository::AddOperation(Text classId, Text name, Text description,
                                                   Text category, bool constructor, bool final,
                                                   bool native, Text scope, bool static_,
                                                   bool synchronized, Text dataTypeId,
                                                   LinkRef& link) {
  NodeRef made;
  MakeChild(types::kClass, classId, types::kOperation, UUID(), "Has", name, description, made,
            link);
  made->SetProperty("category", category);
  made->SetProperty("constructor", constructor);
  made->SetProperty("final", final);
  made->SetProperty("native", native);
  made->SetProperty("scope", scope);
  made->SetProperty("static_", static_);
  made->SetProperty("synchronized", synchronized);
  const NodeRef dataType = node(types::kDataType, dataTypeId);
  repository().MakeLink(types::kOperationHasDataType,
                        MakeLinkId(made->identifier(), dataTypeId, "Has"), UUID(), *made,
                        *dataType);
  return made;
}

CLSRepository::NodeRef CLSRepository::AddOperationS(Text classId, Text name, Text dataTypeId,
                                                    LinkRef& link) {
  return AddOperation(classId, name, "", "", false, false, false, "", false, false, dataTypeId,
                      link);
}

CLSRepository::NodeRef CLSRepository::AddParameter(Text operationId, Text name, Text description,
                                                   Text dataTypeId, LinkRef& link) {
  const NodeRef dataType = node(types::kDataType, dataTypeId);
  NodeRef made;
  MakeChild(types::kOperation, operationId, types::kParameter, UUID(), "Has", name, description,
            made, link);
  repository().MakeLink(types::kParameterHasDataType,
                        MakeLinkId(made->identifier(), dataTypeId, "Has"), UUID(), *made,
                        *dataType);
  return made;
}

CLSRepository::NodeRef CLSRepository::AddParameterS(Text operationId, Text name, Text dataTypeId,
                                                    LinkRef& link) {
  return AddParameter(operationId, name, "", dataTypeId, link);
}

void CLSRepository::SetAttribDataType(Node& attribute, Node& dataType) {
  addDataTypeLink(types::kAttribHasDataType, attribute, dataType);
}

void CLSRepository::SetOperationDataType(Node& operation, Node& dataType) {
  addDataTypeLink(types::kOperationHasDataType, operation, dataType);
}

void CLSRepository::SetParameterDataType(Node& parameter, Node& dataType) {
  addDataTypeLink(types::kParameterHasDataType, parameter, dataType);
}

void CLSRepository::addDataTypeLink(Text linkType, Node& member, Node& dataType) {
  const std::string name = MakeLinkId(member.identifier(), dataType.identifier(), "Has");
  repository().MakeLink(linkType, name, UUID(), member, dataType);
}

CLSRepository::NodeRef CLSRepository::GetDataType(Node& member) {
  const std::string linkType = member.Parent()->name() + ".Has.DataType";
  return platform::as<Link>(member.outgoing(linkType)->Item(1))->Target();
}

void CLSRepository::DeleteAttribute(Text identifier) {
  deleteMember(types::kAttrib, identifier, types::kAttribHasDataType, types::kClassHasAttrib);
}

void CLSRepository::DeleteParameter(Text identifier) {
  deleteMember(types::kParameter, identifier, types::kParameterHasDataType,
               types::kOperationHasParameter);
}

void CLSRepository::deleteMember(Text type, Text identifier, Text dataTypeLink, Text ownerLink) {
  const NodeRef member = node(type, identifier);
  removeFirstLink(*member->outgoing(dataTypeLink), dataTypeLink);
  removeFirstLink(*member->Incoming(ownerLink), ownerLink);
  removeFromType(type, identifier);
}

void CLSRepository::DeleteOperation(Text identifier) {
  const NodeRef operation = node(types::kOperation, identifier);
  removeFirstLink(*operation->outgoing(types::kOperationHasDataType), types::kOperationHasDataType);
  for (Link& link : each<Link>(CopyList(*operation->outgoing(types::kOperationHasParameter)))) {
    DeleteParameter(link.Target()->identifier());
  }
  removeFirstLink(*operation->Incoming(types::kClassHasOperation), types::kClassHasOperation);
  removeFromType(types::kOperation, identifier);
}

CLSRepository::NodeRef CLSRepository::GetStereotype(Node& node, LinkRef& link) {
  const CollectionRef links = node.outgoing(node.Parent()->name() + ".As.Stereotype");
  if (links->Count() == 0) return {};
  link = platform::as<Link>(links->Item(1));
  return link->Target();
}

void CLSRepository::SetStereotype(Node& node, Node* stereotype) {
  LinkRef link;
  while (GetStereotype(node, link)) repository().RemoveAssoc(*link);
  if (!stereotype) return;
  const std::string identifier = UUID();
  const std::string name = UUID();
  repository().MakeLink(node.Parent()->name() + ".As.Stereotype", name, identifier, node,
                        *stereotype);
}

}  // namespace brisel::repository
