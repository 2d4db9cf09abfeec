#pragma once

#include <QObject>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/Ref.h"

namespace brisel::qt {

class MainWindow;
class QtShell;

/// The application's windows: each has a diagram, components and a shell of its own, and is let go
/// of soon after it was closed. Needs a QApplication; closing the last window ends its loop.
class Windows : public QObject {
 public:
  using MakeShell = std::function<platform::Ref<QtShell>()>;

  /// `installationFolder` is where the files beside the library lie.
  explicit Windows(std::string installationFolder, MakeShell makeShell = {});
  ~Windows() override;

  /// A window on an empty diagram.
  MainWindow& add();
  /// Opens the files, which are those of one model: in the window that shows the first of them
  /// already, which comes to the front; in `from` while nothing was done in it; else in a new one.
  /// What cannot be opened is told in `from`, or without it in a window of its own.
  MainWindow& open(const std::vector<std::string>& files, MainWindow* from = nullptr);
  /// Closes all windows, unless a person wants to go on with one that has unsaved changes: then all
  /// stay open, and it is false.
  bool quit();
  /// Before the desktop's session ends: false when a person wants to go on. Nobody is asked where
  /// `mayAsk` is false.
  [[nodiscard]] bool prepareToEnd(bool mayAsk);

  /// In the order in which they were opened.
  [[nodiscard]] std::vector<MainWindow*> all() const;

 private:
  struct Entry;

  Entry& make();
  void show(Entry& entry);
  void connectEvents(Entry& entry);
  void followSession();
  [[nodiscard]] Entry* showing(const std::string& file) const;
  void letGoOf(Entry& entry);

  std::string m_installationFolder;
  MakeShell m_makeShell;
  std::vector<std::unique_ptr<Entry>> m_entries;
};

}  // namespace brisel::qt
