#include "qt/LineRaster.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brisel::qt {

namespace {

/// Places across the line, in 65536ths of a pixel; pictures are far smaller than 32768 pixels.
constexpr int kFixedBits = 16;
constexpr int kFixedOne = 1 << kFixedBits;
int toFixed(double value) { return static_cast<int>(std::lround(value * kFixedOne)); }

/// Lays the colour over the pixel; `cover` is from 0 to 256.
QRgb blended(QRgb below, QRgb color, unsigned cover) {
  const unsigned rest = 256 - cover;
  const QRgb redBlue = ((below & 0xFF00FFU) * rest + (color & 0xFF00FFU) * cover) >> 8 & 0xFF00FFU;
  const QRgb green = ((below & 0xFF00U) * rest + (color & 0xFF00U) * cover) >> 8 & 0xFF00U;
  return 0xFF000000U | redBlue | green;
}

}  // namespace

LineRaster::LineRaster(QImage& image) {
  if (image.format() != QImage::Format_RGB32) return;
  m_pixels = reinterpret_cast<QRgb*>(image.bits());
  m_stride = image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb));
  m_width = image.width();
  m_height = image.height();
}

/// Walks along the axis in which the line is longer; each step covers the pixels of a band across.
void LineRaster::draw(const QLineF& line, double width, QRgb color) const {
  const bool steep = std::abs(line.dy()) > std::abs(line.dx());
  double from = steep ? line.y1() : line.x1();
  double to = steep ? line.y2() : line.x2();
  double across = steep ? line.x1() : line.y1();
  const double slope = steep ? line.dx() / line.dy() : line.dy() / line.dx();
  if (from > to) {
    across = steep ? line.x2() : line.y2();
    std::swap(from, to);
  }
  const qsizetype alongStep = steep ? m_stride : 1;
  const qsizetype acrossStep = steep ? 1 : m_stride;
  const int first = std::max(0, static_cast<int>(std::floor(from)));
  const int behind = std::min(steep ? m_height : m_width, static_cast<int>(std::ceil(to)));
  const int acrossEnd = steep ? m_width : m_height;
  const int half = toFixed(width / 2 * std::sqrt(1 + slope * slope));
  const int step = toFixed(slope);
  int middle = toFixed(across + slope * (first + 0.5 - from));
  for (int i = first; i < behind; ++i, middle += step) {
    const bool atEnd = i < from || i + 1 > to;
    const double share = atEnd ? std::min(to, i + 1.0) - std::max<double>(from, i) : 1;
    const int opacity = static_cast<int>(share * (qAlpha(color) + 1));
    const int low = middle - half;
    const int high = middle + half;
    const int last = std::min(acrossEnd - 1, (high - 1) >> kFixedBits);
    for (int j = std::max(0, low >> kFixedBits); j <= last; ++j) {
      const int edge = j << kFixedBits;
      const int cover = std::min(high, edge + kFixedOne) - std::max(low, edge);
      QRgb& pixel = m_pixels[i * alongStep + j * acrossStep];
      pixel = blended(pixel, color, static_cast<unsigned>((cover * opacity) >> kFixedBits));
    }
  }
}

}  // namespace brisel::qt
