#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Object.h"

namespace brisel::platform {

class ToolBarControl;

enum class MessageIcon { none, information, question, warning, critical };

struct Message {
  std::string title;
  std::string text;
  std::vector<std::string> buttons = {"OK"};  ///< captions; the first is the default
  MessageIcon icon = MessageIcon::none;
};

struct FileDialog {
  std::string title;
  std::string filter;     ///< "DIM Format (*.dim)|*.dim": name and pattern, "|" between all parts
  std::string extension;  ///< added to a name without one, with its dot
  std::string path;       ///< what is offered first; may be empty
};

/// What the components ask of the desktop: modal dialogs, clipboard, popup menus, printer. A window
/// system's shell shows them; the automatic shell answers from a queue.
class Shell : public Object {
 public:
  /// Shows a message box; the caption of the button that closed it.
  virtual std::string showMessage(const Message& message) = 0;
  /// The chosen path, or nothing when the dialog was cancelled.
  virtual std::optional<std::string> askOpenFile(const FileDialog& dialog) = 0;
  virtual std::optional<std::string> askSaveFile(const FileDialog& dialog) = 0;
  /// Pops the band up at the mouse. The choice comes back as a click on the tool-bar control,
  /// inside the call or later.
  virtual void showPopup(ToolBarControl& toolBar, std::string_view band) = 0;
  /// Shows a form by its class's name ("frmAssociation") modally: until its property "Visible" is
  /// false. One that the person closes by its window's button is cancelled: its "Cancel" is
  /// clicked.
  virtual void runForm(std::string_view name, Object& form) = 0;
  /// Shows a window of a tool beside the others, by the tool's programmatic identifier, until the
  /// person closes it; the tool lives at least as long. A shell without windows shows nothing.
  virtual void showTool(std::string_view /*name*/, Object& /*tool*/) {}
  /// Shows how far a task is that takes long, from 0 to 1, with a way to cancel it: false when the
  /// person did. Called again and again; what a person may do meanwhile is to cancel, no more.
  /// A shell without a person shows nothing.
  virtual bool showProgress(std::string_view /*task*/, double /*share*/) { return true; }
  /// The task is over, one way or the other.
  virtual void hideProgress() {}
  /// Puts a picture on the clipboard, by MIME type ("image/svg+xml", "image/png", "text/plain").
  virtual void copy(const std::vector<std::pair<std::string, std::string>>& byKind) = 0;
};

}  // namespace brisel::platform
