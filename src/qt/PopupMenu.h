#pragma once

#include <QPoint>
#include <string_view>

class QMenu;

namespace brisel::controls {
class ToolBarControl;
}

/// The popup menus of the tool-bar control.
namespace brisel::qt {

/// Fills the menu with the tools of the band, sub-menus included. Clicks reach the tool-bar
/// control, which the menu keeps alive. An unknown band leaves the menu empty.
void fillMenu(QMenu& menu, controls::ToolBarControl& toolBar, std::string_view band);

/// Where a menu that is asked for now pops up, on the screen: at the mouse, or at the item that the
/// keyboard asked it for.
[[nodiscard]] QPoint popupPlace();

/// While it lives, menus pop up there.
class PopupsAt {
 public:
  explicit PopupsAt(QPoint onScreen);
  ~PopupsAt();
  PopupsAt(const PopupsAt&) = delete;
  PopupsAt& operator=(const PopupsAt&) = delete;
};

}  // namespace brisel::qt
