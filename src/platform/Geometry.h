#pragma once

#include <algorithm>

namespace brisel::platform {

/// A position on the canvas in twips (1/1440 inch), x to the right, y downwards.
struct Point {
  double x = 0;
  double y = 0;

  friend constexpr bool operator==(const Point&, const Point&) = default;
  [[nodiscard]] friend constexpr Point operator+(Point a, Point b) {
    return {a.x + b.x, a.y + b.y};
  }
  [[nodiscard]] friend constexpr Point operator-(Point a, Point b) {
    return {a.x - b.x, a.y - b.y};
  }
  [[nodiscard]] friend constexpr Point operator*(Point a, double factor) {
    return {a.x * factor, a.y * factor};
  }
};

/// A width and a height in twips.
struct Size {
  double width = 0;
  double height = 0;

  friend constexpr bool operator==(const Size&, const Size&) = default;
};

/// An upright rectangle in twips. Empty when its width or height is not above zero.
struct Rect {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  friend constexpr bool operator==(const Rect&, const Rect&) = default;

  [[nodiscard]] constexpr double right() const { return left + width; }
  [[nodiscard]] constexpr double bottom() const { return top + height; }
  [[nodiscard]] constexpr Point topLeft() const { return {left, top}; }
  [[nodiscard]] constexpr Point center() const { return {left + width / 2, top + height / 2}; }
  [[nodiscard]] constexpr Size size() const { return {width, height}; }
  [[nodiscard]] constexpr bool isEmpty() const { return !(width > 0 && height > 0); }
  [[nodiscard]] constexpr bool contains(Point p) const {
    return p.x >= left && p.x <= right() && p.y >= top && p.y <= bottom();
  }
  [[nodiscard]] constexpr bool contains(const Rect& r) const {
    return r.left >= left && r.right() <= right() && r.top >= top && r.bottom() <= bottom();
  }
  /// True when the two share more than an edge.
  [[nodiscard]] constexpr bool intersects(const Rect& r) const {
    return left < r.right() && r.left < right() && top < r.bottom() && r.top < bottom();
  }
  [[nodiscard]] constexpr Rect movedBy(Point d) const {
    return {left + d.x, top + d.y, width, height};
  }
  [[nodiscard]] constexpr Rect grownBy(double margin) const {
    return {left - margin, top - margin, width + 2 * margin, height + 2 * margin};
  }
  /// The smallest rectangle around both; an empty one adds nothing.
  [[nodiscard]] constexpr Rect united(const Rect& r) const {
    if (isEmpty()) return r;
    if (r.isEmpty()) return *this;
    const double l = std::min(left, r.left);
    const double t = std::min(top, r.top);
    return {l, t, std::max(right(), r.right()) - l, std::max(bottom(), r.bottom()) - t};
  }
};

inline constexpr double kTwipsPerInch = 1440;
/// Twips of one pixel at 100 % zoom (96 pixels an inch).
inline constexpr double kTwipsPerPixel = kTwipsPerInch / 96;
/// Twips of one typographic point.
inline constexpr double kTwipsPerPoint = kTwipsPerInch / 72;

}  // namespace brisel::platform
