#include "editor/ViewSettings.h"

#include <array>

namespace brisel::editor {

using platform::Value;

namespace {

constexpr std::string_view kAttributes = "ViewAttributes";
constexpr std::string_view kOperations = "ViewOperations";
constexpr std::string_view kParameters = "ViewParameters";
constexpr std::string_view kTrue = "%TRUE%";
constexpr std::string_view kFalse = "%FALSE%";

Value stored(bool flag) { return flag ? kTrue : kFalse; }
bool isSet(const platform::Node& node, std::string_view key) {
  return node.GetProperty(key) == Value(kTrue);
}

}  // namespace

ViewSettings::ViewSettings(platform::ComponentRegistry& registry)
    : m_shown(registry.create("BriselDataStructures.MHashTable")),
      m_categories(registry.create("BriselDataStructures.MHashTable")) {
  addCategory("COM::Builtin", false);
  for (const std::string_view key : {"COM::Enum", "COM::TypeDef", "COM::Module", "COM::Interface",
                                     "COM::CoClass", "COM::DispInterface"}) {
    addCategory(key, true);
  }
}

void ViewSettings::addCategory(std::string_view key, bool shown) {
  m_categories->call("Add", {key, shown});
  if (shown) show(key);
}

std::vector<std::string> ViewSettings::categories() const {
  const auto keys = m_categories->call("Keys").object();
  const std::int64_t count = keys->call("Count").integer();
  std::vector<std::string> all;
  for (std::int64_t i = 1; i <= count; ++i) all.push_back(keys->call("Item", {i}).string());
  return all;
}

bool ViewSettings::isCategory(std::string_view key) const {
  return m_categories->call("ContainsKey", {key}).boolean();
}

bool ViewSettings::isShown(std::string_view category) const {
  return m_shown->call("ContainsKey", {category}).boolean();
}

void ViewSettings::show(std::string_view category) {
  if (!isShown(category)) m_shown->call("Add", {category, category});
}

void ViewSettings::hide(std::string_view category) { m_shown->call("Remove", {category}); }

void ViewSettings::toggleCompartment(std::string_view key) {
  if (key == kAttributes) m_attributes = !m_attributes;
  if (key == kOperations) m_operations = !m_operations;
  if (key == kParameters) m_parameters = !m_parameters;
}

void ViewSettings::save(platform::Node& layoutNode) const {
  for (const std::string& key : categories()) layoutNode.SetProperty(key, stored(isShown(key)));
  layoutNode.SetProperty(kAttributes, stored(m_attributes));
  layoutNode.SetProperty(kOperations, stored(m_operations));
  layoutNode.SetProperty(kParameters, stored(m_parameters));
}

void ViewSettings::load(const platform::Node& layoutNode) {
  for (const std::string& key : categories()) {
    if (isSet(layoutNode, key)) {
      show(key);
    } else {
      hide(key);
    }
  }
  m_attributes = isSet(layoutNode, kAttributes);
  m_operations = isSet(layoutNode, kOperations);
  m_parameters = isSet(layoutNode, kParameters);
}

}  // namespace brisel::editor
