#include "repository/Class.h"

#include <algorithm>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Text.h"

namespace brisel::repository {

using platform::each;
using platform::Ref;
namespace types = platform::types;

namespace {

constexpr std::string_view kEnumeration = "COM::Enum";
constexpr std::string_view kNoStereotype = "<NONE>";

char visibilityMarker(const platform::Node& member) {
  const std::string scope = member.GetProperty("scope").text();
  if (platform::equalsIgnoringCase(scope, "public")) return '+';
  if (platform::equalsIgnoringCase(scope, "protected")) return '#';
  if (platform::equalsIgnoringCase(scope, "private")) return '-';
  return ' ';
}

std::string typeName(const platform::Node& member, std::string_view linkType) {
  const Ref<platform::Object> first = member.outgoing(linkType)->Item(1);
  return static_cast<platform::Link&>(*first).Target()->name();
}

class BoxUpdate {
 public:
  explicit BoxUpdate(platform::DiagramNode& box) : m_box(&box) { m_box->beginUpdate(); }
  ~BoxUpdate() { m_box->endUpdate(); }
  BoxUpdate(const BoxUpdate&) = delete;
  BoxUpdate& operator=(const BoxUpdate&) = delete;

 private:
  Ref<platform::DiagramNode> m_box;
};

std::int32_t charactersOf(std::string_view utf8) {
  const auto isStart = [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; };
  return static_cast<std::int32_t>(std::count_if(utf8.begin(), utf8.end(), isStart));
}

}  // namespace

std::string stereotypeName(const platform::Node& node) {
  const auto links = node.outgoing(node.Parent()->name() + ".As.Stereotype");
  if (links->Count() == 0) return {};
  return static_cast<platform::Link&>(*links->Item(1)).Target()->name();
}

std::string stereotypeLabel(const platform::Node& node) {
  const std::string name = stereotypeName(node);
  if (name.empty() || name == kNoStereotype) return {};
  return "<<" + name + ">>";
}

void Class::Node(platform::DiagramNode* box) {
  if (!box) {
    throw platform::Error(platform::ErrorNumber::invalidCall, "A class wrapper needs a box");
  }
  m_box = box;
}

void Class::clsObject(platform::Node* node) {
  if (!node || node->Parent()->name() != types::kClass) {
    throw platform::Error(platform::ErrorNumber::invalidCall, "A class wrapper needs a class");
  }
  m_node = node;
}

std::string Class::name() const { return node().name(); }
void Class::name(Text name) { node().name(name); }

void Class::Populate() {
  const platform::Node& shown = node();
  const BoxUpdate update(*m_box);
  m_box->fillColor(platform::kButtonFaceColor);
  const std::string stereotype = stereotypeLabel(shown);
  m_box->text(stereotype.empty() ? shown.name() : stereotype + "\r\n" + shown.name());
  populateAttributes();
  populateOperations();
}

std::string Class::GetString(Text text, std::int32_t width) const {
  const std::int32_t missing = Max(width - charactersOf(text), 0);
  return std::string(text).append(static_cast<std::size_t>(missing), ' ');
}

void Class::populateAttributes() {
  const BoxUpdate update(*m_box);
  const bool isEnumeration = stereotypeName(node()) == kEnumeration;
  const auto section = m_box->Section(0);
  section->clearRows();
  const auto links = node().outgoing(types::kClassHasAttrib);
  std::int32_t widest = 0;
  for (platform::Link& link : each<platform::Link>(links)) {
    widest = Max(widest, charactersOf(link.Target()->name()));
  }
  for (platform::Link& link : each<platform::Link>(links)) {
    const Ref<platform::Node> attribute = link.Target();
    const std::string text =
        isEnumeration ? attribute->name() + "=" + attribute->GetProperty("value").text()
                      : attribute->name() + ":" + typeName(*attribute, types::kAttribHasDataType);
    section->addRow(visibilityMarker(*attribute) + GetString(text, widest), "STRING",
                    attribute->identifier());
  }
  if (links->Count() == 0) section->addRow("EMPTY ATT", "STRING", "");
}

void Class::populateOperations() {
  const BoxUpdate update(*m_box);
  const auto section = m_box->Section(1);
  section->clearRows();
  const auto links = node().outgoing(types::kClassHasOperation);
  for (platform::Link& link : each<platform::Link>(links)) {
    const Ref<platform::Node> operation = link.Target();
    section->addRow(operationText(*operation), "STRING", operation->identifier());
  }
  if (links->Count() == 0) section->addRow("EMPTY OP", "STRING", "");
}

std::string Class::operationText(const platform::Node& operation) const {
  std::string text = visibilityMarker(operation) + operation.name() + "(";
  if (m_viewParameter) {
    std::string_view separator;
    for (platform::Link& link :
         each<platform::Link>(operation.outgoing(types::kOperationHasParameter))) {
      const Ref<platform::Node> parameter = link.Target();
      text.append(separator).append(parameter->name()).append(":");
      text.append(typeName(*parameter, types::kParameterHasDataType));
      separator = ",";
    }
  }
  text.append(")");
  if (operation.outgoing(types::kOperationHasDataType)->Count() > 0) {
    text.append(" : ").append(typeName(operation, types::kOperationHasDataType));
  }
  return text;
}

platform::Node& Class::node() const {
  if (!m_node) {
    throw platform::Error(platform::ErrorNumber::objectMissing, "The class wrapper has no node");
  }
  return *m_node;
}

const platform::MemberTable& Class::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<Class>()
          .property("Node", &Class::Node, &Class::Node)
          .property("clsObject", &Class::clsObject, &Class::clsObject)
          .property("name", &Class::name, &Class::name)
          .property("viewParameter", &Class::viewParameter, &Class::viewParameter)
          .method("Populate", &Class::Populate)
          .method("GetString", &Class::GetString)
          .build();
  return kTable;
}

}  // namespace brisel::repository
