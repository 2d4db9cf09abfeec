#include "qt/QtPainter.h"

#include <QGlyphRun>
#include <QString>
#include <algorithm>
#include <cmath>

namespace brisel::qt {

using canvas::Color;
using canvas::Pen;
using canvas::TextStyle;
using platform::Point;
using platform::Rect;

namespace {

constexpr double kDash = 6 * platform::kTwipsPerPixel;
constexpr double kShortestDash = 3;  ///< in widths of the line
constexpr double kDashGap = 2.0 / 3;
constexpr double kBeyond = 16;  ///< pixels around the device within which nothing is left out

QColor toQColor(Color color) { return QColor::fromRgba(color); }

/// Characters that are one glyph in one column whatever stands beside them.
bool standsAlone(char32_t c) {
  return c < 0x300 || (c >= 0x370 && c < 0x530 && !(c >= 0x483 && c <= 0x489)) ||
         (c >= 0x2010 && c < 0x2028) || (c >= 0x2030 && c < 0x205F) ||
         (c >= 0x20A0 && c < 0x20D0) || (c >= 0x2100 && c < 0x2C00);
}

}  // namespace

QtPainter::QtPainter(QPainter& painter, FixedFonts& fonts, double scale, QPoint offset)
    : m_painter(painter), m_fonts(fonts), m_scale(scale), m_offset(offset) {
  const QRectF device(0, 0, painter.device()->width(), painter.device()->height());
  if (painter.device()->devType() == QInternal::Image) {
    m_raster = LineRaster(*static_cast<QImage*>(painter.device()));
  }
  m_bounds = device.adjusted(-kBeyond, -kBeyond, kBeyond, kBeyond);
}

int QtPainter::x(double twips) const {
  return static_cast<int>(std::floor(twips * m_scale + 0.5)) - m_offset.x();
}

int QtPainter::y(double twips) const {
  return static_cast<int>(std::floor(twips * m_scale + 0.5)) - m_offset.y();
}

int QtPainter::penWidth(const Pen& pen) const {
  return std::max(1, static_cast<int>(std::lround(pen.width * m_scale)));
}

/// Never empty: what is smaller than a pixel still shows.
QRect QtPainter::pixels(const Rect& rect) const {
  const int left = x(rect.left);
  const int top = y(rect.top);
  return {left, top, std::max(1, x(rect.right()) - left), std::max(1, y(rect.bottom()) - top)};
}

void QtPainter::finish() {
  flushLines();
  flushGlyphs();
}

void QtPainter::fillRect(const Rect& rect, Color color) {
  finish();
  m_painter.fillRect(pixels(rect), toQColor(color));
}

void QtPainter::drawFrame(const Rect& rect, const Pen& pen) {
  finish();
  const QRect outer = pixels(rect);
  const int width = penWidth(pen);
  const QColor color = toQColor(pen.color);
  const int inside = std::max(0, outer.height() - 2 * width);
  m_painter.fillRect(outer.left(), outer.top(), outer.width(), width, color);
  m_painter.fillRect(outer.left(), outer.top() + outer.height() - width, outer.width(), width,
                     color);
  m_painter.fillRect(outer.left(), outer.top() + width, width, inside, color);
  m_painter.fillRect(outer.left() + outer.width() - width, outer.top() + width, width, inside,
                     color);
}

/// Where a line of the width runs that goes through the point: through the middle of the pixel.
QPointF QtPainter::exact(Point point, int width) const {
  const double middle = width % 2 == 1 ? 0.5 : 0;
  return {point.x * m_scale - m_offset.x() + middle, point.y * m_scale - m_offset.y() + middle};
}

void QtPainter::drawPolyline(std::span<const Point> points, const Pen& pen) {
  flushGlyphs();
  if (!(pen == m_linePen)) flushLines();
  m_linePen = pen;
  double way = 0;
  for (std::size_t i = 1; i < points.size(); ++i) way = addSegment(points[i - 1], points[i], way);
}

/// `way` is how far along its polyline the segment begins, in pixels; gives where it ends.
double QtPainter::addSegment(Point from, Point to, double way) {
  const int width = penWidth(m_linePen);
  const QLineF line(exact(from, width), exact(to, width));
  const double length = line.length();
  const auto [first, last] = seenPart(line);
  if (first >= last) return way + length;
  const bool upright = x(from.x) == x(to.x) || y(from.y) == y(to.y);
  const auto add = [&](double begin, double end) {
    const QLineF part(line.pointAt(begin), line.pointAt(end));
    if (!upright || m_linePen.quick) {
      m_slanted.push_back(part);
    } else {
      m_upright.push_back(barOf(part, width));
    }
  };
  if (!m_linePen.dashed || m_linePen.quick) {
    add(first, last);
    return way + length;
  }
  const double dash = std::max(kShortestDash * width, kDash * m_scale);
  const double period = dash * (1 + kDashGap);
  double at = std::floor((way + first * length) / period) * period - way;
  for (; at < last * length; at += period) {
    const double begin = std::max(at / length, first);
    const double end = std::min((at + dash) / length, last);
    if (begin < end) add(begin, end);
  }
  return way + length;
}

/// The part of the line that is on the device, as parts of its length (Liang and Barsky 1984).
std::pair<double, double> QtPainter::seenPart(const QLineF& line) const {
  double first = 0;
  double last = 1;
  const auto cut = [&](double step, double room) {
    if (step == 0) {
      if (room < 0) last = -1;
    } else if (step < 0) {
      first = std::max(first, room / step);
    } else {
      last = std::min(last, room / step);
    }
  };
  cut(-line.dx(), line.x1() - m_bounds.left());
  cut(line.dx(), m_bounds.right() - line.x1());
  cut(-line.dy(), line.y1() - m_bounds.top());
  cut(line.dy(), m_bounds.bottom() - line.y1());
  return {first, last};
}

/// A level or plumb line as whole pixels, its ends included.
QRect QtPainter::barOf(const QLineF& line, int width) {
  const auto low = [](double a, double b) { return static_cast<int>(std::floor(std::min(a, b))); };
  const auto high = [](double a, double b) { return static_cast<int>(std::floor(std::max(a, b))); };
  const int left = low(line.x1(), line.x2()) - width / 2;
  const int top = low(line.y1(), line.y2()) - width / 2;
  return {left, top, high(line.x1(), line.x2()) - left - width / 2 + width,
          high(line.y1(), line.y2()) - top - width / 2 + width};
}

void QtPainter::flushLines() {
  if (m_upright.empty() && m_slanted.empty()) return;
  const QColor color = toQColor(m_linePen.color);
  for (const QRect& bar : m_upright) m_painter.fillRect(bar, color);
  if (m_raster.isValid() && !m_linePen.quick) {
    for (const QLineF& line : m_slanted) {
      m_raster.draw(line, penWidth(m_linePen), m_linePen.color);
    }
  } else if (!m_slanted.empty()) {
    const int width = m_linePen.quick ? 0 : penWidth(m_linePen);
    m_painter.setRenderHint(QPainter::Antialiasing, !m_linePen.quick);
    m_painter.setPen(QPen(color, width, Qt::SolidLine, Qt::FlatCap));
    m_painter.drawLines(m_slanted.data(), static_cast<int>(m_slanted.size()));
  }
  m_upright.clear();
  m_slanted.clear();
}

void QtPainter::drawPolygon(std::span<const Point> points, Color fill, const Pen& pen) {
  const int width = penWidth(pen);
  m_corners.clear();
  for (const Point point : points) m_corners.push_back(exact(point, width));
  const auto outside = [&](auto isOutside) {
    return std::all_of(m_corners.begin(), m_corners.end(), isOutside);
  };
  if (outside([&](QPointF p) { return p.x() < m_bounds.left(); }) ||
      outside([&](QPointF p) { return p.x() > m_bounds.right(); }) ||
      outside([&](QPointF p) { return p.y() < m_bounds.top(); }) ||
      outside([&](QPointF p) { return p.y() > m_bounds.bottom(); })) {
    return;
  }
  finish();
  m_painter.setRenderHint(QPainter::Antialiasing, true);
  m_painter.setPen(QPen(toQColor(pen.color), width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
  m_painter.setBrush(fill == canvas::kNoColor ? QBrush(Qt::NoBrush) : QBrush(toQColor(fill)));
  m_painter.drawPolygon(m_corners.data(), static_cast<int>(m_corners.size()));
}

void QtPainter::drawText(Point baseline, std::string_view text, const TextStyle& style) {
  flushLines();
  if (!(m_glyphStyle == style)) flushGlyphs();
  m_glyphStyle = style;
  const QPointF start(x(baseline.x), y(baseline.y));
  if (!gatherGlyphs(text, style, start)) drawShaped(text, style, start);
}

/// False when some character needs more than a glyph of the font; then nothing is gathered.
bool QtPainter::gatherGlyphs(std::string_view text, const TextStyle& style, QPointF start) {
  FixedFont& face = style.bold ? m_fonts.bold : m_fonts.regular;
  const double advance = canvas::kColumnWidth * style.size * m_scale;
  const std::size_t gathered = m_glyphs.size();
  const auto add = [&](char32_t c, int column) {
    const quint32 glyph = face.glyph(c);
    if (c <= U' ') return true;
    if (glyph == 0 || !standsAlone(c)) return false;
    m_glyphs.push_back(glyph);
    m_glyphPositions.emplace_back(start.x() + column * advance, start.y());
    return true;
  };
  const bool ascii = std::all_of(text.begin(), text.end(),
                                 [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  bool complete = true;
  int column = 0;
  if (ascii) {
    for (const char c : text) complete = add(static_cast<char32_t>(c), column++) && complete;
  } else {
    const auto characters =
        QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUcs4();
    for (const char32_t c : characters) complete = add(c, column++) && complete;
  }
  if (complete) return true;
  m_glyphs.resize(gathered);
  m_glyphPositions.resize(gathered);
  return false;
}

void QtPainter::drawShaped(std::string_view text, const TextStyle& style, QPointF at) {
  flushGlyphs();
  const QFont& face = (style.bold ? m_fonts.bold : m_fonts.regular).shaped();
  const double zoom = style.size * m_scale / face.pixelSize();
  m_painter.save();
  m_painter.translate(at);
  m_painter.scale(zoom, zoom);
  m_painter.setFont(face);
  m_painter.setPen(toQColor(style.color));
  m_painter.drawText(QPointF(),
                     QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
  m_painter.restore();
}

void QtPainter::flushGlyphs() {
  if (m_glyphs.empty()) return;
  QGlyphRun run;
  FixedFont& face = m_glyphStyle.bold ? m_fonts.bold : m_fonts.regular;
  run.setRawFont(face.at(m_glyphStyle.size * m_scale));
  run.setRawData(m_glyphs.data(), m_glyphPositions.data(), static_cast<int>(m_glyphs.size()));
  m_painter.setPen(toQColor(m_glyphStyle.color));
  m_painter.drawGlyphRun(QPointF(), run);
  m_glyphs.clear();
  m_glyphPositions.clear();
}

}  // namespace brisel::qt
