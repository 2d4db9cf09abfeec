#pragma once

#include <QFileSystemWatcher>
#include <QTimer>

#include "platform/Event.h"

namespace brisel::qt {

/// Tells when something happened to the one file that it follows: written, replaced, removed. What
/// comes in quick succession is told once. On file systems that tell nothing, nothing is told.
class FileWatch : public QObject {
 public:
  FileWatch();

  /// From now on this file; none for an empty path.
  void follow(const QString& path);

  platform::Event<> Touched;

 private:
  void look();

  QString m_path;
  QFileSystemWatcher m_watcher;
  QTimer m_settled;
};

}  // namespace brisel::qt
