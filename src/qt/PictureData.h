#pragma once

#include <QImage>
#include <QMimeData>
#include <string>
#include <utility>
#include <vector>

namespace brisel::qt {

/// What is put on the clipboard, by kind. A drawing ("image/svg+xml") is offered as points too, for
/// those who take no drawings: as "image/png" and as the toolkit's own picture, made when somebody
/// asks for them, and smaller where a large diagram would be too large a picture.
class PictureData : public QMimeData {
 public:
  explicit PictureData(const std::vector<std::pair<std::string, std::string>>& byKind);

  [[nodiscard]] QStringList formats() const override;
  [[nodiscard]] bool hasFormat(const QString& kind) const override;

 protected:
  [[nodiscard]] QVariant retrieveData(const QString& kind, QMetaType type) const override;

 private:
  [[nodiscard]] const QImage& picture() const;

  mutable QImage m_picture;
};

}  // namespace brisel::qt
