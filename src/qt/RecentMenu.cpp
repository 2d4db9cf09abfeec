#include "qt/RecentMenu.h"

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QSettings>

#include "qt/Text.h"

namespace brisel::qt {

namespace {

constexpr const char* kRecentSetting = "recentFiles";
constexpr qsizetype kMost = 10;

/// The name for the eye, the folder to tell it from others of the name.
QString entryOf(qsizetype number, const QString& file) {
  QString folder = QDir::toNativeSeparators(QFileInfo(file).absolutePath());
  if (folder.startsWith(QDir::homePath())) folder.replace(0, QDir::homePath().size(), "~");
  QString text = QFileInfo(file).fileName() + "  (" + folder + ')';
  text.replace('&', "&&");
  return (number < 9 ? "&" : "") + QString::number(number + 1) + "  " + text;
}

}  // namespace

RecentMenu::RecentMenu(QMenu& menu, QAction& clear, Open open)
    : m_menu(menu), m_clear(clear), m_open(std::move(open)) {
  menu.setToolTipsVisible(true);
  menu.insertSeparator(&clear);
  connect(&clear, &QAction::triggered, this, [] { RecentMenu::clear(); });
  refresh();
}

QStringList RecentMenu::files() {
  QStringList files = QSettings().value(kRecentSetting).toStringList();
  files.removeIf([](const QString& file) { return !QFileInfo(file).isFile(); });
  return files;
}

void RecentMenu::add(const QString& file) {
  const QString absolute = QFileInfo(file).absoluteFilePath();
  QStringList all = files();
  all.removeAll(absolute);
  all.prepend(absolute);
  QSettings().setValue(kRecentSetting, all.mid(0, kMost));
}

void RecentMenu::clear() { QSettings().remove(kRecentSetting); }

void RecentMenu::refresh() {
  for (QAction* action : m_menu.actions()) {
    if (action->data().isValid()) delete action;
  }
  const QStringList all = files();
  if (all != QSettings().value(kRecentSetting).toStringList()) QSettings().setValue(kRecentSetting, all);
  QAction* separator = m_menu.actions().constFirst();
  for (qsizetype i = 0; i < all.size(); ++i) {
    auto* action = new QAction(entryOf(i, all[i]), &m_menu);
    action->setData(all[i]);
    action->setStatusTip(QObject::tr("Open %1").arg(all[i]));
    action->setToolTip(all[i]);
    // Opening may bring the menu up to date, which takes this entry away.
    connect(
        action, &QAction::triggered, this, [this, file = fromQt(all[i])] { m_open(file); },
        Qt::QueuedConnection);
    m_menu.insertAction(separator, action);
  }
  m_menu.menuAction()->setEnabled(!all.isEmpty());
}

}  // namespace brisel::qt
