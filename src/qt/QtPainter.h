#pragma once

#include <QLineF>
#include <QPainter>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <utility>
#include <vector>

#include "canvas/Painter.h"
#include "qt/FixedFont.h"
#include "qt/LineRaster.h"

namespace brisel::qt {

/// Draws on anything that Qt paints on. A twip times the scale, less the offset, is a device pixel;
/// rectangles, frames and upright lines are laid on whole pixels, the same ones wherever the
/// offset stands. Calls of one kind are gathered, so finish() or the end of this object must come
/// before the QPainter's.
class QtPainter : public canvas::Painter {
 public:
  QtPainter(QPainter& painter, FixedFonts& fonts, double scale, QPoint offset);
  ~QtPainter() override { finish(); }

  void fillRect(const platform::Rect& rect, canvas::Color color) override;
  void drawFrame(const platform::Rect& rect, const canvas::Pen& pen) override;
  void drawPolyline(std::span<const platform::Point> points, const canvas::Pen& pen) override;
  void drawPolygon(std::span<const platform::Point> points, canvas::Color fill,
                   const canvas::Pen& pen) override;
  void drawText(platform::Point baseline, std::string_view text,
                const canvas::TextStyle& style) override;

  void finish();

 private:
  [[nodiscard]] int x(double twips) const;
  [[nodiscard]] int y(double twips) const;
  [[nodiscard]] int penWidth(const canvas::Pen& pen) const;
  [[nodiscard]] QRect pixels(const platform::Rect& rect) const;
  [[nodiscard]] QPointF exact(platform::Point point, int width) const;
  double addSegment(platform::Point from, platform::Point to, double way);
  [[nodiscard]] std::pair<double, double> seenPart(const QLineF& line) const;
  [[nodiscard]] static QRect barOf(const QLineF& line, int width);
  bool gatherGlyphs(std::string_view text, const canvas::TextStyle& style, QPointF start);
  void drawShaped(std::string_view text, const canvas::TextStyle& style, QPointF at);
  void flushGlyphs();
  void flushLines();

  QPainter& m_painter;
  FixedFonts& m_fonts;
  double m_scale;
  QPoint m_offset;

  QRectF m_bounds;  ///< of the device, and somewhat more

  std::vector<QPointF> m_corners;  ///< of the polygon that is being drawn

  std::vector<quint32> m_glyphs;
  std::vector<QPointF> m_glyphPositions;
  canvas::TextStyle m_glyphStyle;

  std::vector<QRect> m_upright;
  std::vector<QLineF> m_slanted;
  canvas::Pen m_linePen;
  LineRaster m_raster;
};

}  // namespace brisel::qt
