#include "qt/FileFilter.h"

#include <QStringList>

#include "qt/Text.h"

namespace brisel::qt {

QString toQtFilter(std::string_view filter) {
  const QStringList parts = toQt(filter).split('|');
  QStringList entries;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString name = parts[i].trimmed();
    if (const qsizetype bracket = name.lastIndexOf(" ("); bracket > 0) name.truncate(bracket);
    const QString patterns = QString(parts[i + 1]).replace(';', ' ').simplified();
    if (!patterns.isEmpty()) entries += name + " (" + patterns + ')';
  }
  return entries.join(";;");
}

}  // namespace brisel::qt
