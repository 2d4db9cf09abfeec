#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "component/Document.h"
#include "qt/HostButtons.h"

namespace brisel::qt {

class EditorWidget;
class HelpWindow;
class MainMenus;
class MessageBar;
class QtShell;
class StatusLine;

/// The application's window: one diagram with menus, status bar and a strip for messages. The
/// document, and the shell whose dialogs it is the front of, must outlive it.
class MainWindow : public QMainWindow {
 public:
  MainWindow(component::Document& document, platform::Ref<QtShell> shell);
  ~MainWindow() override;

  /// Opens the files as one model; tells in the strip what went wrong or was left out.
  void openFiles(const std::vector<std::string>& files);
  [[nodiscard]] EditorWidget& editor() const { return *m_editor; }
  [[nodiscard]] MessageBar& messages() const { return *m_messages; }
  [[nodiscard]] MainMenus& menus() const { return *m_menus; }
  /// Brings title, counts and the unsaved mark up to date at once; happens by itself soon after
  /// every change.
  void refreshState();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void giveHostObjects();
  void makeMenus();
  void connectDocument();
  void restorePlace();

  void newDiagram();
  void askAndOpen();
  void save(bool askForFile);
  void exportPicture();
  /// True when nothing would be lost, or the person wants to lose it.
  [[nodiscard]] bool mayReplaceDiagram();
  void showHelp(const std::string& page);

  component::Document& m_document;
  platform::Ref<QtShell> m_shell;
  EditorWidget* m_editor;
  MessageBar* m_messages;
  HelpWindow* m_help = nullptr;
  HostButtons m_hostButtons;
  std::unique_ptr<MainMenus> m_menus;
  std::unique_ptr<StatusLine> m_status;
  QTimer m_refresh;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
