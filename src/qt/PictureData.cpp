#include "qt/PictureData.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgRenderer>
#include <algorithm>
#include <cmath>

#include "qt/Text.h"

namespace brisel::qt {

namespace {

const QString kDrawing = QStringLiteral("image/svg+xml");
const QString kPoints = QStringLiteral("image/png");
const QString kOwn = QStringLiteral("application/x-qt-image");

/// Nothing when the bytes are no drawing.
QImage drawingAsPicture(const QByteArray& svg) {
  constexpr double kLargestCopy = 40e6;  // pixels
  QSvgRenderer drawing(svg);
  const QSizeF size = drawing.defaultSize();
  const double pixels = size.width() * size.height();
  if (!drawing.isValid() || pixels < 1) return {};
  QImage picture((size * std::min(1.0, std::sqrt(kLargestCopy / pixels))).toSize(),
                 QImage::Format_RGB32);
  if (picture.isNull()) return {};
  picture.fill(Qt::white);
  QPainter painter(&picture);
  drawing.render(&painter);
  return picture;
}

}  // namespace

PictureData::PictureData(const std::vector<std::pair<std::string, std::string>>& byKind) {
  for (const auto& [kind, bytes] : byKind) {
    setData(toQt(kind), QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
  }
}

QStringList PictureData::formats() const {
  QStringList kinds = QMimeData::formats();
  for (const QString& kind : {kPoints, kOwn}) {
    if (hasFormat(kind) && !kinds.contains(kind)) kinds += kind;
  }
  return kinds;
}

bool PictureData::hasFormat(const QString& kind) const {
  const QStringList given = QMimeData::formats();
  if (kind == kPoints) return given.contains(kPoints) || given.contains(kDrawing);
  if (kind == kOwn) return hasFormat(kPoints);
  return given.contains(kind);
}

QVariant PictureData::retrieveData(const QString& kind, QMetaType type) const {
  const bool isGiven = QMimeData::formats().contains(kind);
  if (isGiven || (kind != kPoints && kind != kOwn)) return QMimeData::retrieveData(kind, type);
  if (picture().isNull()) return {};
  if (kind == kOwn) return picture();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture().save(&buffer, "PNG");
  return bytes;
}

const QImage& PictureData::picture() const {
  if (m_picture.isNull()) {
    const QByteArray points =
        QMimeData::retrieveData(kPoints, QMetaType(QMetaType::QByteArray)).toByteArray();
    const QByteArray drawing =
        QMimeData::retrieveData(kDrawing, QMetaType(QMetaType::QByteArray)).toByteArray();
    m_picture = points.isEmpty() ? drawingAsPicture(drawing) : QImage::fromData(points);
  }
  return m_picture;
}

}  // namespace brisel::qt
