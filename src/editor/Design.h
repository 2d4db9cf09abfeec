#pragma once

namespace brisel::platform {
class DiagramControl;
class ToolBarControl;
}  // namespace brisel::platform

#include <functional>
#include <string>
#include <string_view>

/// The stored design of the editor's tool bars and menus.
namespace brisel::editor {

/// Adds the canvas's own buttons and separators. Icon files are named by the folder, a backslash
/// and the file's name.
void addCanvasButtons(platform::DiagramControl& diagram, const std::string& installationFolder);

/// Adds the popup bands with their tools, and the tools that no band shows. A tool that neither has
/// a command nor opens a band is disabled.
void addPopupBands(platform::ToolBarControl& toolBar,
                   const std::function<bool(std::string_view tool)>& hasCommand);

}  // namespace brisel::editor
