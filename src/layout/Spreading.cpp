#include "layout/Spreading.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

namespace brisel::layout {
namespace {

using platform::Point;
using platform::Rect;
using platform::Size;

/// Of the whole to what the boxes cover with their gaps.
constexpr double kSpreadLooseness = 2;

class Spreader {
 public:
  Spreader(const std::vector<Size>& boxes, double gap, std::vector<Point>& places)
      : m_boxes(boxes), m_gap(gap), m_places(places), m_order(boxes.size()) {
    std::iota(m_order.begin(), m_order.end(), 0);
  }

  void run() {
    if (m_boxes.size() < 2) return;
    drawApart();
    if (!isHeaped()) return;
    const Rect whole = extent();
    divide(m_order, whole);
  }

 private:
  [[nodiscard]] double room(int n) const {
    return (m_boxes[n].width + m_gap) * (m_boxes[n].height + m_gap);
  }
  [[nodiscard]] double roomOf(std::span<const int> some) const {
    double sum = 0;
    for (const int n : some) sum += room(n);
    return sum;
  }
  [[nodiscard]] Point centre(int n) const {
    return m_places[n] + Point{m_boxes[n].width / 2, m_boxes[n].height / 2};
  }
  [[nodiscard]] Rect extent() const {
    Rect whole;
    for (const int n : m_order) {
      whole = whole.united(
          {m_places[n].x, m_places[n].y, m_boxes[n].width + m_gap, m_boxes[n].height + m_gap});
    }
    return whole;
  }

  void drawApart() {
    const Rect whole = extent();
    const double factor =
        std::sqrt(kSpreadLooseness * roomOf(m_order) / (whole.width * whole.height));
    if (!(factor > 1)) return;
    for (Point& place : m_places) place = place * factor;
  }

  /// Whether a box overlaps several others, on average of a sample.
  [[nodiscard]] bool isHeaped() const {
    constexpr std::size_t kSample = 200;
    constexpr double kMany = 2;
    const std::size_t step = std::max<std::size_t>(1, m_boxes.size() / kSample);
    double overlaps = 0;
    double looked = 0;
    for (std::size_t i = 0; i < m_boxes.size(); i += step, ++looked) {
      const Rect own{m_places[i].x, m_places[i].y, m_boxes[i].width, m_boxes[i].height};
      for (std::size_t k = 0; k < m_boxes.size(); ++k) {
        if (k == i) continue;
        overlaps +=
            own.intersects({m_places[k].x, m_places[k].y, m_boxes[k].width, m_boxes[k].height});
      }
    }
    return overlaps > kMany * looked;
  }

  void divide(std::span<int> some, const Rect& area) {
    if (some.size() == 1) {
      const Size& box = m_boxes[some[0]];
      m_places[some[0]] = area.center() - Point{box.width / 2, box.height / 2};
      return;
    }
    const bool across = area.width >= area.height;
    std::sort(some.begin(), some.end(), [&](int a, int b) {
      const double p = across ? centre(a).x : centre(a).y;
      const double q = across ? centre(b).x : centre(b).y;
      return p != q ? p < q : a < b;
    });
    const double all = roomOf(some);
    std::size_t half = 1;
    double first = room(some[0]);
    while (half + 1 < some.size() && first + room(some[half]) / 2 < all / 2) {
      first += room(some[half++]);
    }
    const double share = first / all;
    Rect low = area;
    Rect high = area;
    (across ? low.width : low.height) *= share;
    (across ? high.width : high.height) *= 1 - share;
    (across ? high.left : high.top) = across ? low.right() : low.bottom();
    divide(some.subspan(0, half), low);
    divide(some.subspan(half), high);
  }

  const std::vector<Size>& m_boxes;
  double m_gap;
  std::vector<Point>& m_places;
  std::vector<int> m_order;
};

}  // namespace

void spread(const std::vector<Size>& boxes, double gap, std::vector<Point>& places) {
  Spreader(boxes, gap, places).run();
}

}  // namespace brisel::layout
