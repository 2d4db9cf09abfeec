#include "controls/ToolBarControl.h"

#include <algorithm>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"
#include "platform/Shell.h"

namespace brisel::controls {

using platform::Error;
using platform::ErrorNumber;
using platform::make;
using platform::MemberTable;
using platform::MemberTableOf;
using platform::Ref;

namespace {

template <class T>
Ref<T> withKey(const std::vector<Ref<T>>& all, std::string_view key) {
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const Ref<T>& one) { return one->key() == key; });
  return found == all.end() ? Ref<T>() : *found;
}

template <class T>
Ref<platform::Collection> listOf(const std::vector<Ref<T>>& all) {
  return make<platform::ObjectList>(std::vector<Ref<platform::Object>>(all.begin(), all.end()));
}

}  // namespace

Ref<platform::Collection> Band::Tools() const { return listOf(m_tools); }

void ToolBarControl::addBand(std::string_view key, std::string_view caption) {
  m_bands.push_back(make<Band>(std::string(key), std::string(caption)));
  LayoutChanged();
}

void ToolBarControl::addTool(std::string_view bandKey, std::string_view key,
                             std::string_view caption, std::string_view opens) {
  const Ref<Band> to = band(bandKey);
  if (!to) throw Error(ErrorNumber::notFound, "Unknown band: " + std::string(bandKey));
  addLooseTool(key, caption);
  m_tools.back() = make<Tool>(std::string(key), std::string(caption), std::string(opens));
  to->add(m_tools.back());
  LayoutChanged();
}

void ToolBarControl::addLooseTool(std::string_view key, std::string_view caption) {
  if (tool(key)) {
    throw Error(ErrorNumber::duplicateKey, "A tool has the key already: " + std::string(key));
  }
  m_tools.push_back(make<Tool>(std::string(key), std::string(caption), std::string()));
}

void ToolBarControl::checked(std::string_view key, bool checked) {
  if (const Ref<Tool> found = tool(key)) found->checked(checked);
}

bool ToolBarControl::checked(std::string_view key) const {
  const Ref<Tool> found = tool(key);
  return found && found->checked();
}

void ToolBarControl::enabled(std::string_view key, bool enabled) {
  if (const Ref<Tool> found = tool(key)) found->enabled(enabled);
}

void ToolBarControl::caption(std::string_view bandKey, std::string_view caption) {
  const Ref<Band> found = band(bandKey);
  if (!found || found->caption() == caption) return;
  found->caption(caption);
  LayoutChanged();
}

std::string ToolBarControl::objection(std::string_view key) const {
  return m_objections ? m_objections(key) : std::string();
}

bool ToolBarControl::isBandShown(std::string_view key) const {
  const Ref<Band> found = band(key);
  return found && found->visible();
}

void ToolBarControl::popUp(std::string_view bandKey) {
  if (!band(bandKey)) return;
  m_popupBand = bandKey;
  m_registry.shell().showPopup(*this, bandKey);
}

void ToolBarControl::Click(std::string_view key) {
  const Ref<Tool> known = tool(key);
  if (known && !known->enabled()) return;
  ToolClick(std::string(key));
}

Ref<platform::Collection> ToolBarControl::Bands() const { return listOf(m_bands); }
Ref<Band> ToolBarControl::band(std::string_view key) const { return withKey(m_bands, key); }
Ref<Tool> ToolBarControl::tool(std::string_view key) const { return withKey(m_tools, key); }

void ToolBarControl::showBand(std::string_view key, bool show) {
  const Ref<Band> shown = band(key);
  if (!shown || shown->visible() == show) return;
  shown->visible(show);
  if (show) {
    BandShown(std::string(key));
  } else {
    BandClosed(std::string(key));
  }
}

void ToolBarControl::KeyPress(std::string_view key, std::string_view) {
  KeyReleased(std::string(key));
}

const MemberTable& Tool::memberTable() const {
  static const MemberTable kTable = MemberTableOf<Tool>()
                                        .property("key", &Tool::key)
                                        .property("caption", &Tool::caption)
                                        .property("opens", &Tool::opens)
                                        .property("checked", &Tool::checked, &Tool::checked)
                                        .property("enabled", &Tool::enabled, &Tool::enabled)
                                        .build();
  return kTable;
}

const MemberTable& Band::memberTable() const {
  static const MemberTable kTable = MemberTableOf<Band>()
                                        .property("key", &Band::key)
                                        .property("caption", &Band::caption)
                                        .property("Tools", &Band::Tools)
                                        .property("Visible", &Band::visible)
                                        .build();
  return kTable;
}

const MemberTable& ToolBarControl::memberTable() const {
  using T = ToolBarControl;
  static const MemberTable kTable = MemberTableOf<T>()
                                        .property("Tag", &T::Tag, &T::Tag)
                                        .property("Bands", &T::Bands)
                                        .method("addBand", &T::addBand)
                                        .method("addTool", &T::addTool)
                                        .optional(1)
                                        .method("addLooseTool", &T::addLooseTool)
                                        .method("Click", &T::Click)
                                        .method("objection", &T::objection)
                                        .property("PopupBand", &T::PopupBand)
                                        .method("RecalcLayout", &T::RecalcLayout)
                                        .method("KeyPress", &T::KeyPress)
                                        .optional(1)
                                        .build();
  return kTable;
}

}  // namespace brisel::controls
