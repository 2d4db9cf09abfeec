#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/Event.h"
#include "platform/Object.h"

namespace brisel::platform {

/// The tool-bar and menu control: bands of tools, popup menus, a free `Tag`.
class ToolBarControl : public Object {
 public:
  [[nodiscard]] virtual std::string Tag() const = 0;
  virtual void Tag(std::string_view tag) = 0;

  virtual void addBand(std::string_view key, std::string_view caption) = 0;
  /// A tool at the end of a band; `opens` is the key of the band that it opens as a sub-menu, or
  /// empty. "&" in the caption marks the mnemonic. An Error (notFound) for an unknown band.
  virtual void addTool(std::string_view band, std::string_view key, std::string_view caption,
                       std::string_view opens) = 0;
  /// A tool that no band shows.
  virtual void addLooseTool(std::string_view key, std::string_view caption) = 0;
  virtual void RecalcLayout() = 0;
  virtual void checked(std::string_view tool, bool checked) = 0;
  [[nodiscard]] virtual bool checked(std::string_view tool) const = 0;
  /// An unknown key does nothing; so too for the three below.
  virtual void enabled(std::string_view tool, bool enabled) = 0;
  virtual void caption(std::string_view band, std::string_view caption) = 0;
  /// Asked for each tool when a popup is shown: why its command would do nothing now, in a short
  /// sentence, or empty. A tool that has an objection cannot be chosen there; `Click` does not ask.
  virtual void objections(std::function<std::string(std::string_view tool)> rule) = 0;
  /// Shows or hides a docked band; raises BandShown or BandClosed when that changes it.
  virtual void showBand(std::string_view band, bool show) = 0;
  [[nodiscard]] virtual bool isBandShown(std::string_view band) const = 0;
  /// Pops the band up at the mouse; an unknown key does nothing.
  virtual void popUp(std::string_view band) = 0;
  /// A person's click on a tool: raises ToolClick, for a disabled tool nothing. A key that no band
  /// and no collection has may be of a tool that the host shows itself.
  virtual void Click(std::string_view tool) = 0;

  Event<std::string> ToolClick;    ///< the tool's key
  Event<std::string> BandShown;    ///< the band's key
  Event<std::string> BandClosed;   ///< the band's key
  Event<std::string> KeyReleased;  ///< the key's name ("F1")
};

}  // namespace brisel::platform
