#include "support/Model.h"

#include "store/Meta.h"
#include "store/UUIDGenerator.h"

namespace brisel::test {

using platform::each;
using platform::make;
using platform::Ref;

Model::Model() : store(make<store::Meta>()), model(make<repository::CLSRepository>()) {
  store->Init();
  const auto generator = make<store::UUIDGenerator>();
  generator->Init("test");
  model->Create(generator.get());
  model->SetRepository(store.get());
}

Model::NodeRef Model::addClass(std::string_view name, std::string_view stereotype) {
  NodeRef made = model->MakeClass(name, name, "", "", "", "public");
  if (!stereotype.empty()) {
    NodeRef used = model->SearchObject("Stereotype", "Name", stereotype);
    if (!used) used = model->MakeStereotype(stereotype, model->UUID(), "");
    model->SetStereotype(*made, used.get());
  }
  return made;
}

Model::NodeRef Model::dataType(std::string_view name) {
  if (NodeRef found = model->SearchObject("DataType", "Name", name)) return found;
  return model->MakeDataType(name, "", "");
}

Model::NodeRef Model::addAttribute(std::string_view owner, std::string_view name,
                                   std::string_view type) {
  Ref<platform::Link> link;
  return model->AddAttributeS(owner, name, dataType(type)->identifier(), link);
}

Model::NodeRef Model::addOperation(std::string_view owner, std::string_view name,
                                   std::string_view type) {
  Ref<platform::Link> link;
  return model->AddOperationS(owner, name, dataType(type)->identifier(), link);
}

Model::NodeRef Model::addParameter(platform::Node& operation, std::string_view name,
                                   std::string_view type) {
  Ref<platform::Link> link;
  return model->AddParameterS(operation.identifier(), name, dataType(type)->identifier(), link);
}

std::int64_t Model::count(std::string_view nodeType) const {
  return store->MetaNodes(nodeType)->extension()->Count();
}

std::int64_t Model::linkCount(std::string_view linkType) const {
  return store->MetaLinks(linkType)->extension()->Count();
}

Model::NodeRef Model::find(std::string_view nodeType, std::string_view identifier) const {
  return static_cast<platform::Node*>(store->MetaNodes(nodeType)->find(identifier).get());
}

std::string Model::owned(const platform::Node& node, std::string_view linkType) {
  std::string names;
  for (auto& link : each<platform::Link>(node.outgoing(linkType))) {
    names += (names.empty() ? "" : " ") + link.Target()->name();
  }
  return names;
}

std::string Model::ends(const platform::Node& relationship) {
  const std::string kind = relationship.Parent()->name();
  const bool inherits = kind == "Generalization";
  const auto name = [&](const char* word) -> std::string {
    const auto links = relationship.outgoing(kind + "." + word + ".Class");
    return links->Count() == 0 ? "?"
                               : static_cast<platform::Link&>(*links->Item(1)).Target()->name();
  };
  return name(inherits ? "Super" : "Source") + ">" + name(inherits ? "Sub" : "Target");
}

}  // namespace brisel::test
