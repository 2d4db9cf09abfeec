#include "qt/Icon.h"

#include <QDir>
#include <QFileInfo>

#include "qt/Text.h"

namespace brisel::qt {

QIcon loadIcon(std::string_view path) {
  const QFileInfo file(toQt(path).replace('\\', '/'));
  const QString drawing = file.path() + '/' + file.completeBaseName() + ".svg";
  if (QFileInfo::exists(drawing)) return QIcon(drawing);
  return file.exists() ? QIcon(file.filePath()) : QIcon();
}

}  // namespace brisel::qt
