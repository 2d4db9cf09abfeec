#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "platform/Collection.h"

namespace brisel::controls {

/// One tab of a strip. Still answers after it was removed.
class Tab : public platform::Object {
 public:
  Tab(std::string_view key, std::string_view caption) : m_key(key), m_caption(caption) {}

  [[nodiscard]] std::string key() const { return m_key; }
  [[nodiscard]] std::string caption() const { return m_caption; }
  void caption(std::string_view caption) { m_caption = caption; }
  [[nodiscard]] bool visible() const { return m_visible; }
  void visible(bool visible) { m_visible = visible; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_key;
  std::string m_caption;
  bool m_visible = true;
};

/// A row of tabs. While there is a visible tab, one of those is selected: the one that was added
/// first until another is chosen. Keys are compared exactly; an Error (notFound) names a key that
/// no tab has.
class TabStrip : public Control {
 public:
  /// A tab at the end. An Error (457) when the key is in use.
  void add(std::string_view key, std::string_view caption);
  void caption(std::string_view key, std::string_view caption);
  /// A hidden tab cannot be chosen; hiding or removing the selected tab selects the first visible
  /// one that is left, which raises SelectionChanged.
  void visible(std::string_view key, bool visible);
  void remove(std::string_view key);
  void clear();
  [[nodiscard]] bool contains(std::string_view key) const;
  /// The tabs, hidden ones included.
  [[nodiscard]] const std::vector<platform::Ref<Tab>>& tabs() const { return m_tabs; }
  [[nodiscard]] platform::Ref<platform::Collection> Tabs() const;

  /// The key of the selected tab; empty for none.
  [[nodiscard]] std::string selected() const { return m_selected; }
  /// Selected by the program: raises Changed only.
  void select(std::string_view key);

  /// Chosen by a person: raises SelectionChanged when it was not selected yet. An Error
  /// (invalidCall) for a hidden tab.
  void Choose(std::string_view key);

  /// A person chose a tab, or the selected one went.
  platform::Event<> SelectionChanged;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] Tab* find(std::string_view key) const;
  [[nodiscard]] Tab& at(std::string_view key) const;
  void selectLeft();

  std::vector<platform::Ref<Tab>> m_tabs;
  std::string m_selected;
};

}  // namespace brisel::controls
