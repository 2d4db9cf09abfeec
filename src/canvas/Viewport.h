#pragma once

#include "platform/Event.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

/// Which part of the canvas is seen and how large: the zoom, the point at the upper left corner
/// and the size of the window onto it. Pixels are those of the view, before any scaling of the
/// screen; at 100 % one is 15 twips.
class Viewport {
 public:
  static constexpr double kSmallestZoom = 2;
  static constexpr double kLargestZoom = 800;

  /// Percent.
  [[nodiscard]] double zoom() const { return m_zoom; }
  /// What lies at the upper left corner, in twips.
  [[nodiscard]] platform::Point scroll() const { return m_scroll; }
  /// In pixels.
  [[nodiscard]] platform::Size size() const { return m_size; }

  [[nodiscard]] double pixelsPerTwip() const { return m_zoom / 100 / platform::kTwipsPerPixel; }
  [[nodiscard]] platform::Point toPixels(platform::Point twips) const;
  [[nodiscard]] platform::Rect toPixels(const platform::Rect& twips) const;
  [[nodiscard]] platform::Point toTwips(platform::Point pixels) const;
  [[nodiscard]] platform::Rect toTwips(const platform::Rect& pixels) const;
  [[nodiscard]] double toTwips(double pixels) const { return pixels / pixelsPerTwip(); }
  /// The part of the canvas that is seen, in twips.
  [[nodiscard]] platform::Rect visible() const;

  void resize(platform::Size pixels);
  /// Scrolling is rounded to whole pixels, so that a picture can be moved as it is.
  void scrollTo(platform::Point twips);
  void scrollBy(platform::Point pixels);
  /// The point of the canvas stays where it is seen. The percentage is brought into the range.
  void zoomTo(double percent, platform::Point around);
  /// Around the middle.
  void zoomTo(double percent);
  /// Shows all of the area, at 100 % at most.
  void fit(const platform::Rect& area);
  void centerOn(platform::Point point);
  /// Scrolls as little as brings the area into view; of a larger one its upper left part.
  void reveal(const platform::Rect& area);

  platform::Event<> ScrollChanged;
  platform::Event<> ZoomChanged;  ///< the scroll position may have changed with it
  platform::Event<> SizeChanged;

 private:
  [[nodiscard]] platform::Point onPixel(platform::Point twips) const;

  double m_zoom = 100;
  platform::Point m_scroll;
  platform::Size m_size{800, 600};
};

}  // namespace brisel::canvas
