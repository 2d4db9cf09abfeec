#include "qt/FileWatch.h"

#include <QFileInfo>

namespace brisel::qt {

namespace {

constexpr int kSettleTime = 200;  // ms, for a program that writes in many steps

}  // namespace

FileWatch::FileWatch() {
  m_settled.setSingleShot(true);
  m_settled.setInterval(kSettleTime);
  connect(&m_settled, &QTimer::timeout, this, [this] { look(); });
  const auto touched = [this] { m_settled.start(); };
  connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, touched);
  connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, touched);
}

void FileWatch::follow(const QString& path) {
  if (path == m_path) return;
  if (const QStringList before = m_watcher.files() + m_watcher.directories(); !before.isEmpty()) {
    m_watcher.removePaths(before);
  }
  m_path = path;
  if (path.isEmpty()) return;
  m_watcher.addPath(path);
  // A program that replaces the file, as a careful one does, takes the watched one away.
  m_watcher.addPath(QFileInfo(path).absolutePath());
}

void FileWatch::look() {
  if (!m_watcher.files().contains(m_path) && QFileInfo::exists(m_path)) m_watcher.addPath(m_path);
  Touched();
}

}  // namespace brisel::qt
