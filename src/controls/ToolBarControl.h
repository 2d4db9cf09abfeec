#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Collection.h"
#include "platform/ComponentRegistry.h"
#include "platform/ToolBar.h"

namespace brisel::controls {

/// One command of a tool-bar control. Lives in the control's tool collection.
class Tool : public platform::Object {
 public:
  Tool(std::string key, std::string caption, std::string opens)
      : m_key(std::move(key)), m_caption(std::move(caption)), m_opens(std::move(opens)) {}

  [[nodiscard]] std::string key() const { return m_key; }
  /// "&" marks the mnemonic.
  [[nodiscard]] std::string caption() const { return m_caption; }
  /// The key of the band that the tool opens as a sub-menu, or empty.
  [[nodiscard]] std::string opens() const { return m_opens; }
  [[nodiscard]] bool checked() const { return m_checked; }
  void checked(bool checked) { m_checked = checked; }
  [[nodiscard]] bool enabled() const { return m_enabled; }
  void enabled(bool enabled) { m_enabled = enabled; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_key;
  std::string m_caption;
  std::string m_opens;
  bool m_checked = false;
  bool m_enabled = true;
};

/// A menu or tool bar: tools in order.
class Band : public platform::Object {
 public:
  Band(std::string key, std::string caption)
      : m_key(std::move(key)), m_caption(std::move(caption)) {}

  [[nodiscard]] std::string key() const { return m_key; }
  [[nodiscard]] std::string caption() const { return m_caption; }
  void caption(std::string_view caption) { m_caption = caption; }
  [[nodiscard]] bool visible() const { return m_visible; }
  void visible(bool visible) { m_visible = visible; }
  [[nodiscard]] const std::vector<platform::Ref<Tool>>& tools() const { return m_tools; }
  void add(platform::Ref<Tool> tool) { m_tools.push_back(std::move(tool)); }
  [[nodiscard]] platform::Ref<platform::Collection> Tools() const;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_key;
  std::string m_caption;
  bool m_visible = false;
  std::vector<platform::Ref<Tool>> m_tools;
};

/// The tool-bar and menu control: holds bands and tools; the shell shows them.
class ToolBarControl : public platform::ToolBarControl {
 public:
  explicit ToolBarControl(platform::ComponentRegistry& registry) : m_registry(registry) {}

  [[nodiscard]] std::string Tag() const override { return m_tag; }
  void Tag(std::string_view tag) override { m_tag = tag; }
  void addBand(std::string_view key, std::string_view caption) override;
  void addTool(std::string_view band, std::string_view key, std::string_view caption,
               std::string_view opens) override;
  void addLooseTool(std::string_view key, std::string_view caption) override;
  void RecalcLayout() override { LayoutChanged(); }
  void checked(std::string_view tool, bool checked) override;
  [[nodiscard]] bool checked(std::string_view tool) const override;
  void enabled(std::string_view tool, bool enabled) override;
  void caption(std::string_view band, std::string_view caption) override;
  void objections(std::function<std::string(std::string_view)> rule) override {
    m_objections = std::move(rule);
  }
  [[nodiscard]] std::string objection(std::string_view tool) const;
  void showBand(std::string_view key, bool show) override;
  [[nodiscard]] bool isBandShown(std::string_view key) const override;
  void popUp(std::string_view band) override;
  void Click(std::string_view tool) override;

  [[nodiscard]] platform::Ref<platform::Collection> Bands() const;
  /// Nothing for an unknown key.
  [[nodiscard]] platform::Ref<Band> band(std::string_view key) const;
  [[nodiscard]] platform::Ref<Tool> tool(std::string_view key) const;
  /// The key of the band popped up last.
  [[nodiscard]] std::string PopupBand() const { return m_popupBand; }
  /// A person pressed and released a key over the control; all but F1 are ignored by the editor.
  void KeyPress(std::string_view key, std::string_view modifiers);

  platform::Event<> LayoutChanged;  ///< bands or tools changed

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::ComponentRegistry& m_registry;
  std::vector<platform::Ref<Band>> m_bands;
  std::vector<platform::Ref<Tool>> m_tools;
  std::function<std::string(std::string_view)> m_objections;
  std::string m_tag;
  std::string m_popupBand;
};

}  // namespace brisel::controls
