#include "qt/MatrixGlyphs.h"

#include <QPainter>
#include <QPolygonF>
#include <algorithm>
#include <array>
#include <utility>

#include "qt/Looks.h"

namespace brisel::qt {

namespace {

using Kind = repository::RelationshipKind;

constexpr std::size_t kMostReady = 200;
constexpr QSize kIconSize(24, 16);

/// By kind: on light and on dark ground. Apart in hue and, for those who see fewer hues, in shape.
constexpr std::array<std::pair<QRgb, QRgb>, 4> kColors = {{
    {0xff1f6fb2, 0xff6cb4ee},
    {0xff14804f, 0xff5fd39b},
    {0xffb35400, 0xfff2a65e},
    {0xff7b3fb5, 0xffc79cf2},
}};

}  // namespace

void MatrixGlyphs::palette(const QPalette& palette) {
  m_ground = palette.color(QPalette::Base);
  m_isDark = m_ground.lightnessF() < 0.5F;
  m_ready.clear();
}

QColor MatrixGlyphs::color(Kind kind, bool forward) const {
  const auto& [light, dark] = kColors[static_cast<std::size_t>(kind)];
  const QColor color(m_isDark ? dark : light);
  return forward ? color : mixed(color, m_ground, 0.45F);
}

const QPixmap& MatrixGlyphs::glyph(Kind kind, bool forward, QSize size, double ratio) {
  if (m_ready.size() > kMostReady) m_ready.clear();
  const auto [entry, isNew] =
      m_ready.try_emplace(Key(kind, forward, size.width(), size.height(), ratio));
  if (isNew) {
    QPixmap picture(size * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    draw(painter, QRectF(QPointF(), QSizeF(size)), kind, forward);
    entry->second = std::move(picture);
  }
  return entry->second;
}

QIcon MatrixGlyphs::icon(Kind kind) const {
  QIcon icon;
  for (const double ratio : {1.0, 2.0}) {
    QPixmap picture(kIconSize * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    draw(painter, QRectF(QPointF(), QSizeF(kIconSize)), kind, true);
    icon.addPixmap(picture);
  }
  return icon;
}

void MatrixGlyphs::draw(QPainter& painter, const QRectF& area, Kind kind, bool forward) const {
  painter.setRenderHint(QPainter::Antialiasing);
  const double line = std::clamp(area.height() / 11, 1.0, 2.0);
  const double high = std::min(area.height() - 2, area.width() * 0.5) / 2;  // of a head, half
  const double y = area.center().y();
  const double from = area.left() + 2 + line / 2;
  const double to = area.right() - 2 - line / 2;
  if (!forward) {
    painter.translate(2 * area.center().x(), 0);
    painter.scale(-1, 1);
  }
  const QColor ink = color(kind, forward);
  painter.setPen(QPen(ink, line, Qt::SolidLine, Qt::RoundCap, Qt::MiterJoin));
  painter.setBrush(kind == Kind::composite ? QBrush(ink) : QBrush(m_ground));
  painter.drawLine(QPointF(from, y), QPointF(to, y));
  switch (kind) {
    case Kind::association:
      painter.drawPolyline(QPolygonF({QPointF(to - high, y - high * 0.8), QPointF(to, y),
                                      QPointF(to - high, y + high * 0.8)}));
      break;
    case Kind::shared:
    case Kind::composite: {
      const double half = std::min(high, (to - from) / 3);
      painter.drawPolygon(
          QPolygonF({QPointF(from, y), QPointF(from + half, y - half * 0.8),
                     QPointF(from + 2 * half, y), QPointF(from + half, y + half * 0.8)}));
      break;
    }
    case Kind::generalization:
      painter.drawPolygon(QPolygonF({QPointF(to - 1.5 * high, y - high), QPointF(to, y),
                                     QPointF(to - 1.5 * high, y + high)}));
      break;
  }
}

}  // namespace brisel::qt
