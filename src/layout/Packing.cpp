#include "layout/Packing.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace brisel::layout {
namespace {

using platform::Point;
using platform::Size;

/// The lower border of what was placed so far, as steps from left to right.
class Skyline {
 public:
  explicit Skyline(double width) : m_width(width), m_steps{{0, 0}} {}

  Point place(Size size) {
    std::size_t best = 0;
    double bestTop = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
      if (i > 0 && m_steps[i].left + size.width > m_width) break;
      const double top = topFor(i, size.width);
      if (top < bestTop) {
        bestTop = top;
        best = i;
      }
    }
    const Point at{m_steps[best].left, bestTop};
    cover(best, at.x + size.width, bestTop + size.height);
    return at;
  }

 private:
  struct Step {
    double left;
    double top;
  };

  [[nodiscard]] double topFor(std::size_t i, double width) const {
    const double right = m_steps[i].left + width;
    double top = 0;
    for (; i < m_steps.size() && m_steps[i].left < right; ++i) top = std::max(top, m_steps[i].top);
    return top;
  }

  void cover(std::size_t first, double right, double top) {
    std::size_t end = first;
    double after = 0;
    while (end < m_steps.size() && m_steps[end].left < right) after = m_steps[end++].top;
    const bool ends = end < m_steps.size() && m_steps[end].left == right;
    const double left = m_steps[first].left;
    m_steps.erase(m_steps.begin() + static_cast<std::ptrdiff_t>(first),
                  m_steps.begin() + static_cast<std::ptrdiff_t>(end));
    const auto at = m_steps.begin() + static_cast<std::ptrdiff_t>(first);
    if (ends) {
      m_steps.insert(at, Step{left, top});
    } else {
      m_steps.insert(at, {Step{left, top}, Step{right, after}});
    }
  }

  double m_width;
  std::vector<Step> m_steps;
};

std::vector<int> highestFirst(const std::vector<Size>& items) {
  std::vector<int> order(items.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin(), order.end(),
                   [&](int a, int b) { return items[a].height > items[b].height; });
  return order;
}

}  // namespace

std::vector<Point> shelved(const std::vector<Size>& items, double gap, double width) {
  std::vector<Point> places(items.size());
  Point at;
  double rowHeight = 0;
  for (const int i : highestFirst(items)) {
    if (at.x > 0 && at.x + items[i].width > width) {
      at = {0, at.y + rowHeight + gap};
      rowHeight = 0;
    }
    places[i] = at;
    at.x += items[i].width + gap;
    rowHeight = std::max(rowHeight, items[i].height);
  }
  return places;
}

Size extent(const std::vector<Size>& items, const std::vector<Point>& places) {
  Size size;
  for (std::size_t i = 0; i < items.size(); ++i) {
    size.width = std::max(size.width, places[i].x + items[i].width);
    size.height = std::max(size.height, places[i].y + items[i].height);
  }
  return size;
}

double waste(Size size, double aspect) {
  const double width = std::max(size.width, size.height * aspect);
  return width * width / aspect;
}

std::vector<Point> packed(const std::vector<Size>& items, double gap, double aspect) {
  constexpr int kWidths = 24;
  double area = 0;
  double widest = 0;
  for (const Size& item : items) {
    area += (item.width + gap) * (item.height + gap);
    widest = std::max(widest, item.width + gap);
  }
  const std::vector<int> order = highestFirst(items);
  std::vector<Point> best(items.size());
  double least = std::numeric_limits<double>::infinity();
  for (int k = 0; k < kWidths; ++k) {
    const double width = std::max(widest, std::sqrt(area * aspect) * (0.8 + 0.06 * k));
    Skyline skyline(width);
    std::vector<Point> places(items.size());
    for (const int i : order) {
      places[i] = skyline.place({items[i].width + gap, items[i].height + gap});
    }
    const double now = waste(extent(items, places), aspect);
    if (now < least) {
      least = now;
      best = std::move(places);
    }
  }
  return best;
}

}  // namespace brisel::layout
