#include "qt/Icon.h"

#include <QDir>
#include <QFileInfo>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "qt/Text.h"

namespace brisel::qt {

namespace {

/// Of what cannot be chosen; styles would draw it in greys that stand out on dark desktops.
constexpr double kDisabledOpacity = 0.35;

/// A drawing, made anew for each size.
class DrawnIcon : public QIconEngine {
 public:
  explicit DrawnIcon(QString file) : m_file(std::move(file)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    painter->save();
    if (mode == QIcon::Disabled) painter->setOpacity(painter->opacity() * kDisabledOpacity);
    QSvgRenderer(m_file).render(painter, rect);
    painter->restore();
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    const QString key = QString("%1 %2x%3 %4")
                            .arg(m_file)
                            .arg(size.width())
                            .arg(size.height())
                            .arg(mode == QIcon::Disabled);
    QPixmap drawn;
    if (QPixmapCache::find(key, &drawn)) return drawn;
    drawn = QPixmap(size);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    paint(&painter, QRect(QPoint(), size), mode, state);
    painter.end();
    QPixmapCache::insert(key, drawn);
    return drawn;
  }

  [[nodiscard]] QIconEngine* clone() const override { return new DrawnIcon(m_file); }

 private:
  QString m_file;
};

}  // namespace

QIcon loadIcon(std::string_view path) {
  const QFileInfo file(toQt(path).replace('\\', '/'));
  const QString drawing = file.path() + '/' + file.completeBaseName() + ".svg";
  if (QFileInfo::exists(drawing)) return QIcon(new DrawnIcon(drawing));
  return file.exists() ? QIcon(file.filePath()) : QIcon();
}

}  // namespace brisel::qt
