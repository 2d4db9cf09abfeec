#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <string>

class QAction;
class QMenu;

namespace brisel::qt {

/// The menu of the files that were opened or saved last, newest first, kept in the settings for all
/// windows. Files that are gone are not offered; the list shrinks to what is offered.
class RecentMenu : public QObject {
 public:
  using Open = std::function<void(const std::string& file)>;

  /// The files stand before `clear`, the entry that forgets them. The menu must outlive it.
  RecentMenu(QMenu& menu, QAction& clear, Open open);

  [[nodiscard]] static QStringList files();
  /// Puts the file on top; the path becomes an absolute one.
  static void add(const QString& file);
  static void clear();

  /// Brings the entries up to date.
  void refresh();

 private:
  QMenu& m_menu;
  QAction& m_clear;
  Open m_open;
};

}  // namespace brisel::qt
