#pragma once

#include <QImage>
#include <QLineF>

namespace brisel::qt {

/// The pixels of an opaque picture, to draw thin smooth lines into: many times faster than a
/// general stroke, which is what most lines of a diagram would otherwise cost. Holds no picture
/// when the format of the one given is another; the picture must stay as it is meanwhile.
class LineRaster {
 public:
  LineRaster() = default;
  explicit LineRaster(QImage& image);

  [[nodiscard]] bool isValid() const { return m_pixels != nullptr; }
  /// With flat ends; cut at the picture's border. The length must not be 0.
  void draw(const QLineF& line, double width, QRgb color) const;

 private:
  QRgb* m_pixels = nullptr;
  qsizetype m_stride = 0;  ///< pixels from one row to the next
  int m_width = 0;
  int m_height = 0;
};

}  // namespace brisel::qt
