#include "canvas/Viewport.h"

#include <algorithm>
#include <cmath>

namespace brisel::canvas {

using platform::Point;
using platform::Rect;
using platform::Size;

namespace {

/// Beyond this nothing can lie.
constexpr double kFarthest = 4e9;
/// Room kept around what is fitted into the view, in pixels.
constexpr double kFitMargin = 10;

}  // namespace

Point Viewport::toPixels(Point twips) const { return (twips - m_scroll) * pixelsPerTwip(); }

Rect Viewport::toPixels(const Rect& twips) const {
  const Point corner = toPixels(twips.topLeft());
  return {corner.x, corner.y, twips.width * pixelsPerTwip(), twips.height * pixelsPerTwip()};
}

Point Viewport::toTwips(Point pixels) const { return m_scroll + pixels * (1 / pixelsPerTwip()); }

Rect Viewport::toTwips(const Rect& pixels) const {
  const Point corner = toTwips(pixels.topLeft());
  return {corner.x, corner.y, toTwips(pixels.width), toTwips(pixels.height)};
}

Rect Viewport::visible() const {
  return {m_scroll.x, m_scroll.y, toTwips(m_size.width), toTwips(m_size.height)};
}

void Viewport::resize(Size pixels) {
  const Size wanted{std::max(0.0, pixels.width), std::max(0.0, pixels.height)};
  if (wanted == m_size) return;
  m_size = wanted;
  SizeChanged();
}

Point Viewport::onPixel(Point twips) const {
  const auto snap = [this](double value) {
    const double near = std::clamp(value, -kFarthest, kFarthest);
    return std::round(near * pixelsPerTwip()) / pixelsPerTwip();
  };
  return {snap(twips.x), snap(twips.y)};
}

void Viewport::scrollTo(Point twips) {
  if (std::isnan(twips.x) || std::isnan(twips.y)) return;
  const Point wanted = onPixel(twips);
  if (wanted == m_scroll) return;
  m_scroll = wanted;
  ScrollChanged();
}

void Viewport::scrollBy(Point pixels) { scrollTo(m_scroll + pixels * (1 / pixelsPerTwip())); }

void Viewport::zoomTo(double percent, Point around) {
  if (std::isnan(percent) || std::isnan(around.x) || std::isnan(around.y)) return;
  const double wanted = std::clamp(percent, kSmallestZoom, kLargestZoom);
  if (wanted == m_zoom) return;
  const Point seenAt = toPixels(around);
  m_zoom = wanted;
  m_scroll = onPixel(around - seenAt * (1 / pixelsPerTwip()));
  ZoomChanged();
}

void Viewport::zoomTo(double percent) { zoomTo(percent, visible().center()); }

void Viewport::fit(const Rect& area) {
  if (area.isEmpty() || m_size.width <= 2 * kFitMargin || m_size.height <= 2 * kFitMargin) {
    zoomTo(100);
    if (area.isEmpty()) scrollTo({});
    return;
  }
  const double across = (m_size.width - 2 * kFitMargin) / area.width;
  const double down = (m_size.height - 2 * kFitMargin) / area.height;
  zoomTo(std::min(100.0, std::min(across, down) * platform::kTwipsPerPixel * 100));
  centerOn(area.center());
}

void Viewport::centerOn(Point point) {
  scrollTo({point.x - toTwips(m_size.width) / 2, point.y - toTwips(m_size.height) / 2});
}

void Viewport::reveal(const Rect& area) {
  const Rect seen = visible();
  if (seen.contains(area)) return;
  const auto nearest = [](double from, double length, double low, double high) {
    if (low < from || high - low > length) return low;
    return high > from + length ? high - length : from;
  };
  scrollTo({nearest(seen.left, seen.width, area.left, area.right()),
            nearest(seen.top, seen.height, area.top, area.bottom())});
}

}  // namespace brisel::canvas
