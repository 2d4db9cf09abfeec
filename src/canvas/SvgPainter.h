#pragma once

#include <string>

#include "canvas/Painter.h"

namespace brisel::canvas {

/// Draws into an SVG 1.1 document whose user unit is the pixel of 100 %. Text stays text, so that
/// the picture can be searched and restyled. The same calls give the same bytes.
class SvgPainter : public Painter {
 public:
  /// The area becomes the document's page, widened to whole pixels.
  explicit SvgPainter(const platform::Rect& area);
  [[nodiscard]] const platform::Rect& page() const { return m_page; }

  void fillRect(const platform::Rect& rect, Color color) override;
  void drawFrame(const platform::Rect& rect, const Pen& pen) override;
  void drawPolyline(std::span<const platform::Point> points, const Pen& pen) override;
  void drawPolygon(std::span<const platform::Point> points, Color fill, const Pen& pen) override;
  void drawText(platform::Point baseline, std::string_view text, const TextStyle& style) override;

  /// The whole document; the painter is empty afterwards.
  [[nodiscard]] std::string finish();

 private:
  void number(double twips);
  void attribute(std::string_view name, double twips);
  void paint(std::string_view name, Color color);
  void stroke(const Pen& pen);
  void points(std::span<const platform::Point> points);

  platform::Rect m_page;
  std::string m_svg;
};

/// Appends UTF-8 text so that it may stand in an XML element or attribute: markup is escaped,
/// control characters are left out, broken sequences become U+FFFD.
void appendXmlText(std::string& xml, std::string_view text);

}  // namespace brisel::canvas
