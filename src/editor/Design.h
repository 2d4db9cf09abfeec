#pragma once

namespace brisel::platform {
class DiagramControl;
class ToolBarControl;
}  // namespace brisel::platform

#include <string>

/// The stored design of the editor's tool bars and menus.
namespace brisel::editor {

/// Adds the canvas's own buttons and separators. Icon files are named by the folder, a backslash
/// and the file's name.
void addCanvasButtons(platform::DiagramControl& diagram, const std::string& installationFolder);

/// Adds the popup bands with their tools, and the tools that no band shows.
void addPopupBands(platform::ToolBarControl& toolBar);

}  // namespace brisel::editor
