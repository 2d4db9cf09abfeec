#pragma once

#include <QImage>
#include <QPoint>
#include <QRegion>
#include <QSize>
#include <vector>

#include "canvas/DiagramControl.h"
#include "qt/FixedFont.h"

namespace brisel::qt {

/// The picture of what a control shows, kept from one painting to the next: what was scrolled is
/// moved, and only what changed or came into sight is painted.
class DiagramPicture {
 public:
  explicit DiagramPicture(const canvas::DiagramControl& control) : m_control(control) {}

  /// In device pixels, of which `ratio` make one of the control's pixels.
  void resize(QSize size, double ratio);
  /// These areas, in twips, must be painted again.
  void damage(const std::vector<platform::Rect>& areas);

  /// Brings the picture up to date and gives it.
  const QImage& update();

  /// The part of the view, in its own pixels, in which the area is seen with the handles on it.
  [[nodiscard]] QRect widgetRectOf(const platform::Rect& area) const;
  /// False when the control shows another part, or at another zoom, than the picture does.
  [[nodiscard]] bool isCurrentPart() const;

 private:
  [[nodiscard]] QRect pixelsOf(const platform::Rect& area) const;
  [[nodiscard]] QPoint offset() const;
  [[nodiscard]] double scale() const;
  void moveBy(QPoint delta);
  void paint(const QRect& pixels);

  const canvas::DiagramControl& m_control;
  FixedFonts m_fonts;
  QImage m_image;
  double m_ratio = 1;
  double m_paintedScale = 0;
  QPoint m_paintedOffset;
  QRegion m_dirty;  ///< in device pixels, at the painted offset and scale
};

}  // namespace brisel::qt
