#include "layout/LabelChoice.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

#include "layout/Segments.h"

namespace brisel::layout {
namespace {

using platform::Point;
using platform::Rect;

/// Chooses one of the candidates for a label.
class Choice {
 public:
  Choice(const std::vector<LabelCandidate>& candidates, const std::vector<Point>& course,
         const LabelSurroundings& around, const LabelGaps& gaps, std::vector<Rect>& examined)
      : m_candidates(candidates),
        m_course(course),
        m_around(around),
        m_gaps(gaps),
        m_examined(examined),
        m_firstExamined(examined.size()) {}

  [[nodiscard]] Rect made() {
    if (const LabelCandidate* best = leastCrossed()) return best->area;
    if (const auto pushed = leastPushed()) return *pushed;
    return leastCovering()->area;
  }

 private:
  /// Among those that cover no solid; nothing if there is none.
  [[nodiscard]] const LabelCandidate* leastCrossed() {
    const LabelCandidate* best = nullptr;
    int least = 2 * kCrowd + 1;
    for (const LabelCandidate& one : m_candidates) {
      if (one.reluctance >= least) continue;
      if (coversSolid(one.area)) continue;
      const int cost = one.reluctance + crossedBy(one, std::min(least - one.reluctance, kCrowd));
      if (cost >= least) continue;
      least = cost;
      best = &one;
      if (least == 0) break;
    }
    return best;
  }

  /// The first candidates are near to each other: so are all places that are looked at here.
  [[nodiscard]] std::optional<Rect> leastPushed() {
    constexpr std::size_t kMost = 3;
    constexpr double kPerStrike = 300;
    constexpr std::array<Point, 4> kWays{{{-1, 0}, {1, 0}, {0, -1}, {0, 1}}};
    std::optional<Rect> best;
    double least = 0;
    for (std::size_t i = 0; i < std::min(kMost, m_candidates.size()); ++i) {
      const Rect& from = m_candidates[i].area;
      const Rect solid = inTheWay(from);
      for (const Point way : kWays) {
        const auto area = pushed(from, way, solid);
        if (!area) continue;
        const Point by = area->topLeft() - from.topLeft();
        const double cost =
            (std::abs(by.x) + std::abs(by.y)) / kPerStrike + crossedBy({*area}, kCrowd);
        if (best && cost >= least) continue;
        least = cost;
        best = area;
      }
    }
    return best;
  }

  /// Moved in one direction past the solid and all that is in the way then, if that is not far.
  [[nodiscard]] std::optional<Rect> pushed(Rect area, Point way, Rect solid) {
    constexpr int kMostTimes = 4;
    constexpr double kSlack = 1;  // what is rounded is not in the way again
    const double most = 6 * area.height + std::abs(way.x) * area.width / 2;
    double sum = 0;
    for (int i = 0; i < kMostTimes; ++i) {
      const double by = kSlack + m_gaps.clear +
                        (way.x < 0   ? area.right() - solid.left
                         : way.x > 0 ? solid.right() - area.left
                         : way.y < 0 ? area.bottom() - solid.top
                                     : solid.bottom() - area.top);
      sum += by;
      if (sum > most) return {};
      area = area.movedBy(way * by);
      solid = inTheWay(area);
      if (solid.isEmpty()) return area;
    }
    return {};
  }

  [[nodiscard]] Rect inTheWay(const Rect& place) {
    const Rect area = place.grownBy(m_gaps.clear);
    examine(area);
    return m_around.inTheWay(area);
  }

  [[nodiscard]] const LabelCandidate* leastCovering() const {
    const Rect& first = m_candidates.front().area;
    // Whatever covers more than that is as bad as anything.
    const double most = std::ceil(4 * first.width * first.height);
    double least = most;
    int lines = kCrowd + 1;
    const LabelCandidate* best = nullptr;
    for (const LabelCandidate& one : m_candidates) {
      const Rect area = one.area.grownBy(m_gaps.clear);
      const double covered = std::min(m_around.covered(area, std::min(least + 1, most)), most);
      if (covered > least) continue;
      const int crossed = crossedBy(one, kCrowd);
      if (covered == least && crossed >= lines) continue;
      least = covered;
      lines = crossed;
      best = &one;
    }
    return best;
  }

  [[nodiscard]] bool coversSolid(const Rect& place) {
    const Rect area = place.grownBy(m_gaps.clear);
    examine(area);
    return m_around.covered(area, 1) > 0;
  }

  [[nodiscard]] int crossedBy(const LabelCandidate& one, int enough) const {
    int count = 0;
    for (std::size_t i = 1; !one.onLine && i < m_course.size(); ++i) {
      count += strike(m_course[i - 1], m_course[i], one.area);
    }
    if (count < enough) count += m_around.crossed(one.area.grownBy(m_gaps.hair), enough - count);
    // How far beyond a crowd it was counted is chance.
    return std::min(count, kCrowd);
  }

  /// Notes the area in few rectangles, of which none is much larger than what it stands for.
  void examine(const Rect& area) {
    constexpr double kLargest = 8192;
    if (m_examined.size() > m_firstExamined) {
      const Rect both = m_examined.back().united(area);
      if (both == m_examined.back() || std::max(both.width, both.height) <= kLargest) {
        m_examined.back() = both;
        return;
      }
    }
    m_examined.push_back(area);
  }

  const std::vector<LabelCandidate>& m_candidates;
  const std::vector<Point>& m_course;
  const LabelSurroundings& m_around;
  const LabelGaps& m_gaps;
  std::vector<Rect>& m_examined;
  std::size_t m_firstExamined;
};

}  // namespace

int strike(Point from, Point to, const Rect& area) {
  if (!crosses(from, to, area)) return 0;
  return std::abs(to.x - from.x) > std::abs(to.y - from.y) ? 3 : 1;
}

Rect bestOf(const std::vector<LabelCandidate>& candidates, const std::vector<Point>& course,
            const LabelSurroundings& around, const LabelGaps& gaps, std::vector<Rect>& examined) {
  return Choice(candidates, course, around, gaps, examined).made();
}

}  // namespace brisel::layout
