#include "controls/TabStrip.h"

#include <algorithm>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::controls {

using platform::Error;
using platform::ErrorNumber;
using platform::Ref;

Tab* TabStrip::find(std::string_view key) const {
  const auto found = std::find_if(m_tabs.begin(), m_tabs.end(),
                                  [&](const auto& tab) { return tab->key() == key; });
  return found == m_tabs.end() ? nullptr : found->get();
}

Tab& TabStrip::at(std::string_view key) const {
  if (Tab* found = find(key)) return *found;
  throw Error(ErrorNumber::notFound, "Unknown tab: " + std::string(key));
}

bool TabStrip::contains(std::string_view key) const { return find(key) != nullptr; }

void TabStrip::add(std::string_view key, std::string_view caption) {
  if (find(key)) {
    throw Error(ErrorNumber::duplicateKey, "A tab has the key already: " + std::string(key));
  }
  m_tabs.push_back(platform::make<Tab>(key, caption));
  if (m_selected.empty()) m_selected = key;
  Changed();
}

void TabStrip::caption(std::string_view key, std::string_view caption) {
  Tab& tab = at(key);
  if (tab.caption() == caption) return;
  tab.caption(caption);
  Changed();
}

void TabStrip::visible(std::string_view key, bool visible) {
  Tab& tab = at(key);
  if (tab.visible() == visible) return;
  tab.visible(visible);
  selectLeft();
}

void TabStrip::remove(std::string_view key) {
  const Ref<Tab> gone = &at(key);
  std::erase(m_tabs, gone);
  selectLeft();
}

void TabStrip::clear() {
  m_tabs.clear();
  m_selected.clear();
  Changed();
}

/// Another tab where the selected one cannot be seen any more; tells of both.
void TabStrip::selectLeft() {
  const Tab* selectedTab = find(m_selected);
  if (selectedTab && selectedTab->visible()) return Changed();
  const auto left =
      std::find_if(m_tabs.begin(), m_tabs.end(), [](const auto& tab) { return tab->visible(); });
  const std::string next = left == m_tabs.end() ? std::string() : (*left)->key();
  const bool differs = next != m_selected;
  m_selected = next;
  Changed();
  if (differs) SelectionChanged();
}

void TabStrip::select(std::string_view key) {
  if (at(key).key() == m_selected) return;
  m_selected = key;
  Changed();
}

void TabStrip::Choose(std::string_view key) {
  if (!at(key).visible()) {
    throw Error(ErrorNumber::invalidCall, "The tab is hidden: " + std::string(key));
  }
  if (!Enabled() || key == m_selected) return;
  select(key);
  SelectionChanged();
}

Ref<platform::Collection> TabStrip::Tabs() const {
  return platform::make<platform::ObjectList>(
      std::vector<Ref<platform::Object>>(m_tabs.begin(), m_tabs.end()));
}

const platform::MemberTable& Tab::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<Tab>()
                                                  .property("key", &Tab::key)
                                                  .property("caption", &Tab::caption)
                                                  .property("visible", &Tab::visible)
                                                  .build();
  return kTable;
}

const platform::MemberTable& TabStrip::memberTable() const {
  using T = TabStrip;
  static const platform::MemberTable kTable = platform::MemberTableOf<T>(Control::memberTable())
                                                  .property("Tabs", &T::Tabs)
                                                  .property("selected", &T::selected)
                                                  .method("Choose", &T::Choose)
                                                  .event("SelectionChanged", &T::SelectionChanged)
                                                  .build();
  return kTable;
}

}  // namespace brisel::controls
