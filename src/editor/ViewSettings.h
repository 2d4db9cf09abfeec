#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"

namespace brisel::editor {

/// What the diagram shows: the type categories (stereotypes under which elements of type libraries
/// are kept) and the compartments. Owned by the editor; stored on the model's "Layout" node.
class ViewSettings {
 public:
  /// Registers the categories: builtin types start hidden, all others shown, no compartment shown.
  explicit ViewSettings(platform::ComponentRegistry& registry);

  [[nodiscard]] std::vector<std::string> categories() const;
  [[nodiscard]] bool isCategory(std::string_view key) const;
  [[nodiscard]] bool isShown(std::string_view category) const;
  void show(std::string_view category);
  void hide(std::string_view category);

  /// The compartments' flags, by key "ViewAttributes", "ViewOperations" or "ViewParameters".
  [[nodiscard]] bool attributes() const { return m_attributes; }
  [[nodiscard]] bool operations() const { return m_operations; }
  [[nodiscard]] bool parameters() const { return m_parameters; }
  /// Any other key toggles nothing.
  void toggleCompartment(std::string_view key);

  /// Writes every category and compartment as "%TRUE%" or "%FALSE%".
  void save(platform::Node& layoutNode) const;
  /// "%TRUE%" shows, anything else hides.
  void load(const platform::Node& layoutNode);

 private:
  void addCategory(std::string_view key, bool shown);

  platform::Ref<platform::Object> m_shown;       ///< key to key: what is shown now
  platform::Ref<platform::Object> m_categories;  ///< key to whether it starts shown
  bool m_attributes = false;
  bool m_operations = false;
  bool m_parameters = false;
};

}  // namespace brisel::editor
