#include "platform/Repository.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::platform {

namespace {

const MemberTable& elementTable() {
  static const MemberTable kTable =
      MemberTableOf<Element>()
          .property("identifier", &Element::identifier, &Element::identifier)
          .property("name", &Element::name, &Element::name)
          .property("Parent", &Element::Parent)
          .build();
  return kTable;
}

}  // namespace

const MemberTable& Link::memberTable() const {
  static const MemberTable kTable = MemberTableOf<Link>(elementTable())
                                        .property("source", &Link::source)
                                        .property("Target", &Link::Target)
                                        .build();
  return kTable;
}

const MemberTable& Node::memberTable() const {
  static const MemberTable kTable = MemberTableOf<Node>(elementTable())
                                        .method("outgoing", &Node::outgoing)
                                        .method("Incoming", &Node::Incoming)
                                        .method("Prop_", &Node::Prop_)
                                        .method("GetProperty", &Node::GetProperty)
                                        .method("SetProperty", &Node::SetProperty)
                                        .build();
  return kTable;
}

Value Node::get(std::string_view member) {
  if (memberTable().find(member, Member::Kind::property)) return Object::get(member);
  return GetProperty(member);
}

void Node::set(std::string_view member, const Value& value) {
  if (memberTable().find(member, Member::Kind::property)) return Object::set(member, value);
  SetProperty(member, value);
}

const MemberTable& PropertyDefinition::memberTable() const {
  static const MemberTable kTable =
      MemberTableOf<PropertyDefinition>().property("name", &PropertyDefinition::name).build();
  return kTable;
}

const MemberTable& MetaType::memberTable() const {
  using All = Ref<Collection> (MetaType::*)() const;
  using One = Ref<Element> (MetaType::*)(std::string_view) const;
  static const MemberTable kTable =
      MemberTableOf<MetaType>()
          .property("name", &MetaType::name)
          .property("extension", static_cast<All>(&MetaType::extension))
          .method("extension", static_cast<One>(&MetaType::extension))
          .property("outgoing", &MetaType::outgoing)
          .property("Incoming", &MetaType::Incoming)
          .property("properties", &MetaType::properties)
          .build();
  return kTable;
}

const MemberTable& MetaRepository::memberTable() const {
  static const MemberTable kTable = MemberTableOf<MetaRepository>()
                                        .method("Init", &MetaRepository::Init)
                                        .method("MetaNodes", &MetaRepository::MetaNodes)
                                        .method("MetaLinks", &MetaRepository::MetaLinks)
                                        .method("MakeNode", &MetaRepository::MakeNode)
                                        .method("MakeLink", &MetaRepository::MakeLink)
                                        .method("RemoveAssoc", &MetaRepository::RemoveAssoc)
                                        .build();
  return kTable;
}

}  // namespace brisel::platform
