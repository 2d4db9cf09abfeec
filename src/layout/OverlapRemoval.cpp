#include "layout/OverlapRemoval.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <map>
#include <numeric>

#include "layout/LayerGraph.h"
#include "layout/Occupied.h"

namespace brisel::layout {
namespace {

using platform::Point;
using platform::Rect;
using platform::Size;

class Remover {
 public:
  Remover(const std::vector<Size>& boxes, double gap, std::vector<Point>& positions)
      : m_boxes(boxes), m_gap(gap), m_positions(positions), m_order(boxes.size()) {
    std::iota(m_order.begin(), m_order.end(), 0);
  }

  void run(const Step& step) {
    constexpr int kRounds = 60;
    for (int round = 0; round < kRounds; ++round) {
      if (step) step(static_cast<double>(round) / kRounds);
      if (!pushApart()) return;
    }
    if (!settle()) sweepRight();
  }

 private:
  void sortByLeft() {
    std::sort(m_order.begin(), m_order.end(), [&](int a, int b) {
      const Point& p = m_positions[a];
      const Point& q = m_positions[b];
      if (p.x != q.x) return p.x < q.x;
      if (p.y != q.y) return p.y < q.y;
      return a < b;
    });
  }

  /// Moves each overlapping pair apart along the shorter way; false when there was none.
  bool pushApart() {
    sortByLeft();
    m_shift.assign(m_positions.size(), {});
    bool any = false;
    for (int i = 0; i < count(m_order); ++i) {
      const int a = m_order[i];
      const double reach = m_positions[a].x + m_boxes[a].width + m_gap;
      const int last = std::min(count(m_order), i + 1 + kNeighbours);
      for (int j = i + 1; j < last && m_positions[m_order[j]].x < reach; ++j) {
        any |= push(a, m_order[j]);
      }
    }
    for (std::size_t n = 0; n < m_shift.size(); ++n) m_positions[n] = m_positions[n] + m_shift[n];
    return any;
  }

  bool push(int a, int b) {
    constexpr double kShare = 0.55;
    const Point p = m_positions[a];
    const Point q = m_positions[b];
    const double right = p.x + m_boxes[a].width + m_gap - q.x;
    const double left = q.x + m_boxes[b].width + m_gap - p.x;
    const double down = p.y + m_boxes[a].height + m_gap - q.y;
    const double up = q.y + m_boxes[b].height + m_gap - p.y;
    constexpr double kTolerance = 1e-6;
    if (std::min({right, left, down, up}) <= kTolerance * m_gap) return false;
    if (std::min(right, left) < std::min(down, up)) {
      const double by = (right <= left ? right : -left) * kShare;
      m_shift[a].x -= by;
      m_shift[b].x += by;
    } else {
      const double by = (down <= up ? down : -up) * kShare;
      m_shift[a].y -= by;
      m_shift[b].y += by;
    }
    return true;
  }

  /// Takes the boxes from the middle outwards and moves each that is still in the way to the
  /// nearest free place; false when that takes too long.
  bool settle() {
    Point middle;
    double side = 0;
    for (std::size_t n = 0; n < m_boxes.size(); ++n) {
      const double share = 1 / static_cast<double>(m_boxes.size());
      middle = middle + centre(static_cast<int>(n)) * share;
      side += 2 * share * std::max(m_boxes[n].width, m_boxes[n].height);
    }
    const auto distance = [&](int n) {
      const Point way = centre(n) - middle;
      return std::hypot(way.x, way.y);
    };
    std::sort(m_order.begin(), m_order.end(), [&](int a, int b) {
      const double p = distance(a);
      const double q = distance(b);
      return p != q ? p < q : a < b;
    });
    Occupied occupied(side);
    std::int64_t budget = 200'000 + 40 * static_cast<std::int64_t>(m_boxes.size());
    for (const int n : m_order) {
      Rect box{m_positions[n].x, m_positions[n].y, m_boxes[n].width, m_boxes[n].height};
      const auto shift = occupied.nearestFree({box}, m_gap * (1 - 1e-9), budget);
      if (!shift) return false;
      m_positions[n] = m_positions[n] + *shift;
      occupied.add(box.movedBy(*shift));
    }
    return true;
  }

  [[nodiscard]] Point centre(int n) const {
    return m_positions[n] + Point{m_boxes[n].width / 2, m_boxes[n].height / 2};
  }

  /// Takes the boxes from left to right and moves each right of all that share its height.
  void sweepRight() {
    sortByLeft();
    std::map<double, double> front;  // from this y on nothing reaches further right than this x
    front[-INFINITY] = -INFINITY;
    for (const int n : m_order) {
      const double top = m_positions[n].y;
      const double bottom = top + m_boxes[n].height + m_gap;
      auto from = std::prev(front.upper_bound(top));
      double x = m_positions[n].x;
      double last = from->second;
      auto to = from;
      for (; to != front.end() && to->first < bottom; ++to) {
        x = std::max(x, to->second);
        last = to->second;
      }
      front.erase(front.lower_bound(top), to);
      front.emplace(bottom, last);
      front[top] = x + m_boxes[n].width + m_gap;
      m_positions[n].x = x;
    }
  }

  /// A box is compared with so many to its right in one round; the sweep ends what this misses.
  static constexpr int kNeighbours = 400;
  const std::vector<Size>& m_boxes;
  double m_gap;
  std::vector<Point>& m_positions;
  std::vector<int> m_order;
  std::vector<Point> m_shift;
};

}  // namespace

void removeOverlaps(const std::vector<Size>& boxes, double gap, std::vector<Point>& positions,
                    const Step& step) {
  Remover(boxes, gap, positions).run(step);
}

}  // namespace brisel::layout
