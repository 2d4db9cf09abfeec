#include "layout/LabelPlacement.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace brisel::layout {
namespace {

using platform::Point;
using platform::Rect;
using platform::Size;

constexpr std::size_t kUsual = 40;  ///< candidates for which there is room at once

double lengthOf(Point way) { return std::hypot(way.x, way.y); }

Rect around(Point middle, Size size) {
  return {middle.x - size.width / 2, middle.y - size.height / 2, size.width, size.height};
}

/// A place on a line, with the direction that the line has there.
struct Anchor {
  Point at;
  Point along;
  double share;  ///< of the length of the line before it
  double room;   ///< as far the line runs straight on to either side
};

/// How long a line in this direction runs under a label.
double reach(Point along, Size size) {
  return std::abs(along.x) * size.width + std::abs(along.y) * size.height;
}

class Course {
 public:
  explicit Course(const std::vector<Point>& points) : m_points(points) {
    for (std::size_t i = 1; i < points.size(); ++i) m_length += lengthOf(points[i] - points[i - 1]);
  }

  [[nodiscard]] double length() const { return m_length; }
  [[nodiscard]] Anchor at(double share) const {
    double left = m_length * share;
    for (std::size_t i = 1; i < m_points.size(); ++i) {
      const Point way = m_points[i] - m_points[i - 1];
      const double piece = lengthOf(way);
      if (piece > 0 && left <= piece) {
        return {m_points[i - 1] + way * (left / piece), way * (1 / piece), share,
                std::min(left, piece - left)};
      }
      left -= piece;
    }
    return {m_points.front(), {1, 0}, share, 0};
  }

  /// The middles of the pieces on which a label leaves some line to be seen at either side, the
  /// nearest to the share first.
  [[nodiscard]] std::vector<Anchor> middles(Size label, double share, double seen) const {
    std::vector<Anchor> anchors;
    double before = 0;
    for (std::size_t i = 1; i < m_points.size(); ++i) {
      const Point way = m_points[i] - m_points[i - 1];
      const double piece = lengthOf(way);
      if (piece > 0 && piece >= reach(way * (1 / piece), label) + 2 * seen) {
        anchors.push_back({m_points[i - 1] + way * 0.5, way * (1 / piece),
                           (before + piece / 2) / m_length, piece / 2});
      }
      before += piece;
    }
    std::stable_sort(anchors.begin(), anchors.end(), [&](const Anchor& a, const Anchor& b) {
      return std::abs(a.share - share) < std::abs(b.share - share);
    });
    return anchors;
  }

 private:
  const std::vector<Point>& m_points;
  double m_length = 0;
};

/// At either side of the line, so far away from it.
void addAside(const Anchor& anchor, Size size, double gap, std::vector<LabelCandidate>& found) {
  // Above first, or to the right of a line that runs upright.
  Point normal{-anchor.along.y, anchor.along.x};
  if (normal.y > 1e-9 || (std::abs(normal.y) <= 1e-9 && normal.x < 0)) normal = normal * -1;
  const double away = reach(normal, size) / 2 + gap;
  found.push_back({around(anchor.at + normal * away, size)});
  found.push_back({around(anchor.at - normal * away, size)});
}

/// Whether a label on the line hides no bend.
bool isStraightUnder(const Anchor& anchor, Size size, double gap) {
  return anchor.room >= reach(anchor.along, size) / 2 + gap;
}

/// On the line, rather not over one of its bends, then at its sides.
void addAround(const Anchor& anchor, bool hasBends, Size size, double gap,
               std::vector<LabelCandidate>& found) {
  const bool hidesBend = hasBends && !isStraightUnder(anchor, size, gap);
  found.push_back({around(anchor.at, size), true, hidesBend ? 1 : 0});
  addAside(anchor, size, gap, found);
}

/// Beside the line, further and further from its first point, but nearer to that than to the last;
/// on it where it runs straight on at either side.
void addAlong(const std::vector<Point>& course, Size size, bool hasHead, const LabelGaps& gaps,
              std::vector<LabelCandidate>& found) {
  constexpr int kSteps = 8;
  constexpr int kStepsOfAStrike = 3;
  constexpr double kNearer = 0.4;
  const Course whole(course);
  const double under = reach(whole.at(0).along, size);
  double at = gaps.box + under / 2;
  const auto addOnLine = [&](int reluctance) {
    const Anchor anchor = whole.at(at / whole.length());
    if (!isStraightUnder(anchor, size, gaps.beside)) return;
    found.push_back({around(anchor.at, size), true, reluctance});
  };
  if (!hasHead && at < kNearer * whole.length()) addOnLine(0);
  at += size.height + gaps.clear;
  for (int k = 0; k < kSteps && at < kNearer * whole.length(); ++k) {
    const std::size_t first = found.size();
    addAside(whole.at(at / whole.length()), size, gaps.line, found);
    for (std::size_t i = first; i < found.size(); ++i) found[i].reluctance = k / kStepsOfAStrike;
    addOnLine(k / kStepsOfAStrike);
    at += (k < kSteps / 2 ? 1 : 2) * (size.height + 2 * gaps.clear);
  }
}

}  // namespace

std::vector<LabelCandidate> nameCandidates(const std::vector<Point>& course, Size size,
                                           double share, const LabelGaps& gaps) {
  constexpr std::size_t kMostPieces = 6;
  constexpr std::array kAside = {0.0, -0.1, 0.1, -0.2, 0.2};
  constexpr std::array kFarAside = {0.0, -0.18, 0.18, -0.36, 0.36};
  constexpr double kNearestToEnd = 0.1;
  constexpr std::array kAway = {1.5, 3.0, 5.0, 8.0};  // in heights of the label
  const Course whole(course);
  std::vector<LabelCandidate> found;
  found.reserve(kUsual);
  const bool hasBends = course.size() > 2;
  if (hasBends) {
    auto middles = whole.middles(size, share, 2 * gaps.head);
    if (middles.size() > kMostPieces) middles.resize(kMostPieces);
    for (const Anchor& anchor : middles) addAround(anchor, hasBends, size, gaps.beside, found);
  }
  for (const double aside : kAside) {
    const double at = share + aside;
    if (aside != 0 && (at < kNearestToEnd || at > 1 - kNearestToEnd)) continue;
    addAround(whole.at(at), hasBends, size, gaps.beside, found);
  }
  const std::size_t near = found.size();
  for (const double away : kAway) {
    for (const double aside : kFarAside) {
      const double at = share + aside;
      if (at < kNearestToEnd || at > 1 - kNearestToEnd) continue;
      addAside(whole.at(at), size, away * size.height, found);
    }
  }
  for (std::size_t i = near; i < found.size(); ++i) found[i].reluctance = kCrowd;
  return found;
}

std::vector<LabelCandidate> endCandidates(const Rect& box, const std::vector<Point>& course,
                                          Size size, bool hasHead, const LabelGaps& gaps) {
  const Point end = course[0];
  const Point next = course[1];
  const Point middle = box.center();
  const bool onRight = end.x >= box.right();
  const bool onLeft = end.x <= box.left;
  const bool upright = !onLeft && !onRight;
  // Beside a line that leaves straight, the text stands towards the nearer corner of the box: out
  // of the way of the next line's.
  const bool low = upright ? next.x > end.x || (next.x == end.x && end.x < middle.x)
                           : !(next.y < end.y || (next.y == end.y && end.y > middle.y));
  const double away = hasHead ? gaps.head : gaps.line;
  std::vector<LabelCandidate> found;
  found.reserve(kUsual);
  for (const bool before : {low, !low}) {
    Rect area{0, 0, size.width, size.height};
    if (upright) {
      area.top = end.y <= box.top ? end.y - gaps.box - size.height : end.y + gaps.box;
      area.left = before ? end.x - away - size.width : end.x + away;
    } else {
      area.left = onRight ? end.x + gaps.box : end.x - gaps.box - size.width;
      area.top = before ? end.y - away - size.height : end.y + away;
    }
    found.push_back({area});
  }
  addAlong(course, size, hasHead, gaps, found);
  // Past the corners of a box that stands too near on the other side.
  const std::array<Rect, 2> beside{found[0].area, found[1].area};
  for (const double share : upright ? std::array{0.3, 0.6, 0.9} : std::array{1.5, 3.0, 5.0}) {
    for (std::size_t i = 0; i < beside.size(); ++i) {
      const double sign = (i == 0) == low ? -1 : 1;
      const Point by =
          upright ? Point{sign * share * size.width, 0} : Point{0, sign * share * size.height};
      found.push_back({beside[i].movedBy(by), false, kCrowd});
    }
  }
  return found;
}

}  // namespace brisel::layout
