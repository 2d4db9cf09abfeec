#pragma once

#include <QPointer>
#include <QProgressDialog>
#include <QWidget>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Shell.h"

namespace brisel::qt {

/// The shell of the window system: message boxes, file dialogs, popup menus and the clipboard as Qt
/// shows them, in front of the window that was named last.
class QtShell : public platform::Shell {
 public:
  /// The window that dialogs belong to; may be nothing, and may go before the shell does.
  void window(QWidget* window) { m_window = window; }

  /// Closes the windows of tools that it showed.
  void closeTools();

  std::string showMessage(const platform::Message& message) override;
  std::optional<std::string> askOpenFile(const platform::FileDialog& dialog) override;
  std::optional<std::string> askSaveFile(const platform::FileDialog& dialog) override;
  /// Returns at once; the choice comes later, as a click on the tool-bar control.
  void showPopup(platform::ToolBarControl& toolBar, std::string_view band) override;
  /// A form without a view of its own is hidden again at once.
  void runForm(std::string_view name, platform::Object& form) override;
  void showTool(std::string_view name, platform::Object& tool) override;
  /// A small dialog with "Cancel" in front of everything: what a person does elsewhere waits.
  bool showProgress(std::string_view task, double share) override;
  void hideProgress() override;
  void copy(const std::vector<std::pair<std::string, std::string>>& byKind) override;

 private:
  [[nodiscard]] QWidget* front() const;

  QPointer<QWidget> m_window;
  std::vector<QPointer<QWidget>> m_tools;
  QPointer<QProgressDialog> m_progress;
};

}  // namespace brisel::qt
