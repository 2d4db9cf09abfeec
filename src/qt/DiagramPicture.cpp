#include "qt/DiagramPicture.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "canvas/ControlPainter.h"
#include "qt/QtPainter.h"

namespace brisel::qt {

using platform::Rect;

namespace {

/// More changed places than these are painted as the one rectangle around them.
constexpr int kMostPieces = 12;

int toPixel(double value) {
  constexpr double kReach = 1e9;
  return static_cast<int>(std::clamp(value, -kReach, kReach));
}

}  // namespace

double DiagramPicture::scale() const { return m_control.viewport().pixelsPerTwip() * m_ratio; }

QPoint DiagramPicture::offset() const {
  const platform::Point scroll = m_control.viewport().scroll();
  return {toPixel(std::round(scroll.x * scale())), toPixel(std::round(scroll.y * scale()))};
}

void DiagramPicture::resize(QSize size, double ratio) {
  if (m_image.size() == size && m_ratio == ratio) return;
  m_ratio = ratio;
  m_image = QImage(size, QImage::Format_RGB32);
  m_image.setDevicePixelRatio(ratio);
  m_dirty = QRegion(m_image.rect());
}

QRect DiagramPicture::pixelsOf(const Rect& area) const {
  const double margin = (canvas::kHandlePixels + 1) * m_ratio;
  const double s = scale();
  const QPoint first(toPixel(std::floor(area.left * s - margin)),
                     toPixel(std::floor(area.top * s - margin)));
  const QPoint behind(toPixel(std::ceil(area.right() * s + margin)),
                      toPixel(std::ceil(area.bottom() * s + margin)));
  return QRect(first - offset(), behind - offset()).intersected(m_image.rect());
}

QRect DiagramPicture::widgetRectOf(const Rect& area) const {
  const QRect pixels = pixelsOf(area);
  return QRectF(pixels.x() / m_ratio, pixels.y() / m_ratio, pixels.width() / m_ratio,
                pixels.height() / m_ratio)
      .toAlignedRect();
}

bool DiagramPicture::isCurrentPart() const {
  return offset() == m_paintedOffset && scale() == m_paintedScale;
}

void DiagramPicture::damage(const std::vector<Rect>& areas) {
  // What was scrolled or zoomed since the last painting is settled by update(), which must then see
  // the damage where it lies now.
  if (!isCurrentPart()) update();
  for (const Rect& area : areas) m_dirty += pixelsOf(area);
}

const QImage& DiagramPicture::update() {
  if (m_image.isNull()) return m_image;
  const QPoint now = offset();
  if (scale() != m_paintedScale) {
    m_dirty = QRegion(m_image.rect());
  } else if (now != m_paintedOffset) {
    moveBy(m_paintedOffset - now);
  }
  m_paintedScale = scale();
  m_paintedOffset = now;
  if (m_dirty.rectCount() > kMostPieces) m_dirty = QRegion(m_dirty.boundingRect());
  for (const QRect& piece : m_dirty) paint(piece);
  m_dirty = QRegion();
  return m_image;
}

/// Moves the pixels, and adds what came into sight to what is to be painted.
void DiagramPicture::moveBy(QPoint delta) {
  const QRect kept = m_image.rect().intersected(m_image.rect().translated(delta));
  m_dirty.translate(delta);
  m_dirty = m_dirty.united(QRegion(m_image.rect()).subtracted(kept)).intersected(m_image.rect());
  if (kept.isEmpty()) return;
  const auto bytes = static_cast<std::size_t>(kept.width()) * sizeof(QRgb);
  const auto moveRow = [&](int to) {
    uchar* row = m_image.scanLine(to) + kept.left() * static_cast<qsizetype>(sizeof(QRgb));
    const uchar* from = m_image.constScanLine(to - delta.y()) +
                        (kept.left() - delta.x()) * static_cast<qsizetype>(sizeof(QRgb));
    std::memmove(row, from, bytes);
  };
  if (delta.y() <= 0) {
    for (int y = kept.top(); y <= kept.bottom(); ++y) moveRow(y);
  } else {
    for (int y = kept.bottom(); y >= kept.top(); --y) moveRow(y);
  }
}

void DiagramPicture::paint(const QRect& pixels) {
  QImage piece(
      m_image.scanLine(pixels.top()) + pixels.left() * static_cast<qsizetype>(sizeof(QRgb)),
      pixels.width(), pixels.height(), m_image.bytesPerLine(), QImage::Format_RGB32);
  QPainter painter(&piece);
  const QPoint origin = m_paintedOffset + pixels.topLeft();
  const double s = m_paintedScale;
  const Rect area{origin.x() / s, origin.y() / s, pixels.width() / s, pixels.height() / s};
  QtPainter target(painter, m_fonts, s, origin);
  // A pixel more on each side: what ends there may be rounded into the piece.
  canvas::paintControl(m_control, target, area.grownBy(1 / s));
}

}  // namespace brisel::qt
