#include "editor/ViewSettings.h"

#include "repository/ViewDefaults.h"

namespace brisel::editor {

using platform::Value;

namespace {

Value stored(bool flag) { return flag ? repository::kSettingTrue : repository::kSettingFalse; }
bool isSet(const platform::Node& node, std::string_view key) {
  return node.GetProperty(key) == Value(repository::kSettingTrue);
}

}  // namespace

ViewSettings::ViewSettings(platform::ComponentRegistry& registry)
    : m_shown(registry.create("BriselDataStructures.MHashTable")),
      m_categories(registry.create("BriselDataStructures.MHashTable")) {
  for (const auto& [key, shown] : repository::kTypeCategories) addCategory(key, shown);
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
  if (key == repository::kViewAttributes) m_attributes = !m_attributes;
  if (key == repository::kViewOperations) m_operations = !m_operations;
  if (key == repository::kViewParameters) m_parameters = !m_parameters;
}

void ViewSettings::save(platform::Node& layoutNode) const {
  for (const std::string& key : categories()) layoutNode.SetProperty(key, stored(isShown(key)));
  layoutNode.SetProperty(repository::kViewAttributes, stored(m_attributes));
  layoutNode.SetProperty(repository::kViewOperations, stored(m_operations));
  layoutNode.SetProperty(repository::kViewParameters, stored(m_parameters));
}

void ViewSettings::load(const platform::Node& layoutNode) {
  for (const std::string& key : categories()) {
    if (isSet(layoutNode, key)) {
      show(key);
    } else {
      hide(key);
    }
  }
  m_attributes = isSet(layoutNode, repository::kViewAttributes);
  m_operations = isSet(layoutNode, repository::kViewOperations);
  m_parameters = isSet(layoutNode, repository::kViewParameters);
}

}  // namespace brisel::editor
