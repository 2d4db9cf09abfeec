#pragma once

#include <QMainWindow>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "component/Document.h"
#include "qt/FileWatch.h"
#include "qt/HostButtons.h"

namespace brisel::qt {

class EditorWidget;
class HelpWindow;
class MainMenus;
class MessageBar;
class RecentMenu;
class QtShell;
class StatusLine;

/// A window of the application: one diagram with menus, status bar and a strip for messages. The
/// document, and the shell whose dialogs it is the front of, must outlive it. What concerns other
/// windows it asks of whoever listens.
class MainWindow : public QMainWindow {
 public:
  MainWindow(component::Document& document, platform::Ref<QtShell> shell);
  ~MainWindow() override;

  /// Opens the files as one model in the place of the diagram; tells in the strip what went wrong,
  /// then it is false, or was left out.
  bool openFiles(const std::vector<std::string>& files);
  /// Tells of what another program did to the file, even when it was told before.
  void lookAgain();
  /// True while it shows an empty diagram in which nothing was done yet.
  [[nodiscard]] bool isUntouched() const { return m_document.isUntouched(); }
  /// True when nothing would be lost, or the person wants to lose it.
  [[nodiscard]] bool mayClose();
  /// Closes, whatever is lost.
  void closeUnasked();
  void bringToFront();
  /// Takes the size of the other window and a place where both can be seen.
  void standBeside(const QWidget& other);
  /// Keeps size and place for the next window of the program.
  void rememberPlace() const;
  [[nodiscard]] EditorWidget& editor() const { return *m_editor; }
  [[nodiscard]] MessageBar& messages() const { return *m_messages; }
  [[nodiscard]] MainMenus& menus() const { return *m_menus; }
  /// Brings title, counts and the unsaved mark up to date at once; happens by itself soon after
  /// every change.
  void refreshState();

  platform::Event<> NewWindowAsked;
  platform::Event<std::string> OpenAsked;  ///< a file, once for each that is to be opened
  platform::Event<> QuitAsked;
  platform::Event<> Closed;  ///< raised inside the event

 protected:
  /// A window that is used again looks what became of its file.
  void changeEvent(QEvent* event) override;
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
  void reload();
  void lookAtFile();
  void tellOfNotes();
  [[nodiscard]] bool mayReplaceDiagram();
  void showHelp(const std::string& page);

  component::Document& m_document;
  platform::Ref<QtShell> m_shell;
  EditorWidget* m_editor;
  MessageBar* m_messages;
  HelpWindow* m_help = nullptr;
  HostButtons m_hostButtons;
  std::unique_ptr<MainMenus> m_menus;
  std::unique_ptr<RecentMenu> m_recent;
  std::unique_ptr<StatusLine> m_status;
  FileWatch m_watch;
  component::FileStamp::Change m_toldChange = component::FileStamp::Change::none;
  bool m_closesUnasked = false;
  QTimer m_refresh;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
