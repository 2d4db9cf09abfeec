#include "canvas/LinkBends.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "layout/Segments.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;

namespace {

/// Room for the arrow or diamond at the end of a line.
constexpr double kStubLength = 300;
/// How far from a corner an end stays when its side gets shorter.
constexpr double kCornerGap = 60;
/// Of a straight piece; bends are stored in whole twips.
constexpr double kStraight = 1;

enum class Side { none, left, right, top, bottom };

bool isUpright(Side side) { return side == Side::top || side == Side::bottom; }
bool isHigh(Side side) { return side == Side::right || side == Side::bottom; }

/// The coordinate that grows along a line that leaves the side, and the one across it.
double& along(Point& p, Side side) { return isUpright(side) ? p.y : p.x; }
double& across(Point& p, Side side) { return isUpright(side) ? p.x : p.y; }
double across(const Point& p, Side side) { return isUpright(side) ? p.x : p.y; }

/// Where the side lies, and from where to where it reaches.
double levelOf(const Rect& box, Side side) {
  switch (side) {
    case Side::left:
      return box.left;
    case Side::right:
      return box.right();
    case Side::top:
      return box.top;
    default:
      return box.bottom();
  }
}
double beginOf(const Rect& box, Side side) { return isUpright(side) ? box.left : box.top; }
double endOf(const Rect& box, Side side) { return isUpright(side) ? box.right() : box.bottom(); }

bool areNear(Point a, Point b, double distance) {
  return std::max(std::abs(a.x - b.x), std::abs(a.y - b.y)) < distance;
}

bool isAxisParallel(Point a, Point b) {
  return std::abs(a.x - b.x) < kStraight || std::abs(a.y - b.y) < kStraight;
}

/// The side of the box that a line meets at a right angle on its way to `next`.
Side sideMet(const Rect& box, Point end, Point next) {
  if (std::abs(end.x - next.x) < kStraight && end.x > box.left && end.x < box.right()) {
    if (next.y < box.top) return Side::top;
    if (next.y > box.bottom()) return Side::bottom;
  }
  if (std::abs(end.y - next.y) < kStraight && end.y > box.top && end.y < box.bottom()) {
    if (next.x < box.left) return Side::left;
    if (next.x > box.right()) return Side::right;
  }
  return Side::none;
}

bool isInside(const Rect& box, Point p) {
  return p.x > box.left && p.x < box.right() && p.y > box.top && p.y < box.bottom();
}

/// Points on the straight way between their neighbours are taken out.
void dropNeedless(std::vector<Point>& course) {
  const auto onWay = [](Point a, Point p, Point b) {
    const double byX = (p.x - a.x) * (b.x - p.x);
    const double byY = (p.y - a.y) * (b.y - p.y);
    const double turn = (p.x - a.x) * (b.y - p.y) - (p.y - a.y) * (b.x - p.x);
    return std::abs(turn) < 1e-6 && byX >= 0 && byY >= 0;
  };
  std::size_t kept = 1;
  for (std::size_t i = 1; i + 1 < course.size(); ++i) {
    if (!onWay(course[kept - 1], course[i], course[i + 1])) course[kept++] = course[i];
  }
  course[kept++] = course.back();
  course.resize(kept);
}

/// A bend straight above or below an end, on the way to the next point.
Point stub(Point end, Point next) {
  return {end.x, end.y + std::clamp((next.y - end.y) / 3, -kStubLength, kStubLength)};
}

/// Lets the bends, listed from the box on, follow it: `far` is the point behind the last of them.
void follow(std::vector<Point>& bends, Point end, Point far, Side side, const BoxChange& box) {
  const bool sameSize = box.before.size() == box.after.size();
  const double port = across(end, side);
  const double low = beginOf(box.after, side);
  const double high = endOf(box.after, side);
  const double corner = std::min(kCornerGap, (high - low) / 4);
  const double shift = sameSize ? low - beginOf(box.before, side)
                                : std::clamp(port, low + corner, high - corner) - port;
  const Point next = bends.size() > 1 ? bends[1] : far;
  const bool goesOn = std::abs(across(next, side) - across(bends[0], side)) < kStraight;
  if (goesOn && shift != 0) bends.insert(bends.begin(), bends[0]);
  across(bends[0], side) = port + shift;

  const double present = along(bends[0], side);
  // Neighbouring lines that are pushed stay apart: the longer the stub was, the longer it stays.
  const double before = std::abs(present - levelOf(box.before, side));
  const double stubLength = std::min(before, 0.75 * std::min(before, kStubLength) + 0.25 * before);
  const double level = levelOf(box.after, side);
  const double limit = isHigh(side) ? level + stubLength : level - stubLength;
  if (isHigh(side) ? present >= limit : present <= limit) return;
  // The piece beside the box stays parallel to its side.
  for (std::size_t i = 0; i < bends.size(); ++i) {
    if (std::abs(along(bends[i], side) - present) >= kStraight) break;
    along(bends[i], side) = limit;
  }
}

bool isSound(const Rect& source, const Rect& target, const std::vector<Point>& bends,
             Side sourceSide, Side targetSide) {
  const auto points = route(source, target, bends, {});
  const std::size_t last = points.size() - 1;
  if (sourceSide != Side::none && sideMet(source, points[0], points[1]) != sourceSide) return false;
  if (targetSide != Side::none && sideMet(target, points[last], points[last - 1]) != targetSide) {
    return false;
  }
  for (std::size_t i = 1; i < points.size(); ++i) {
    if (layout::crosses(points[i - 1], points[i], source)) return false;
    if (layout::crosses(points[i - 1], points[i], target)) return false;
  }
  return true;
}

/// Of a line that nobody drew with right angles.
void dropCovered(std::vector<Point>& bends, const BoxChange& source, const BoxChange& target) {
  const auto covered = [&](Point p) {
    return (isInside(source.after, p) && !isInside(source.before, p)) ||
           (isInside(target.after, p) && !isInside(target.before, p));
  };
  std::erase_if(bends, covered);
}

}  // namespace

std::vector<Point> bendsFor(const Rect& source, const Rect& target,
                            const std::vector<Point>& given) {
  std::vector<Point> course = given;
  dropNeedless(course);
  const Point first = course.front();
  const Point last = course.back();
  std::vector<Point> bends(course.begin() + 1, course.end() - 1);
  const auto drawn = route(source, target, bends, {});
  // Lines that share a trunk lie on each other exactly.
  const bool isStraight = bends.empty() && isAxisParallel(first, last);
  const double tolerance = isStraight ? kStraight : platform::kTwipsPerPixel;
  const bool keepsFirst = areNear(drawn.front(), first, tolerance);
  const bool keepsLast = areNear(drawn.back(), last, tolerance);
  if (isStraight) {
    const bool keepsAngle = drawn.front().x == drawn.back().x || drawn.front().y == drawn.back().y;
    if (keepsFirst && keepsLast && keepsAngle) return {};
    return {(first + last) * 0.5};
  }
  if (keepsFirst && keepsLast) return bends;
  if (bends.empty()) return {stub(first, last), stub(last, first)};
  if (!keepsFirst) bends.insert(bends.begin(), stub(first, course[1]));
  if (!keepsLast) bends.push_back(stub(last, course[course.size() - 2]));
  return bends;
}

std::vector<Point> bendsAfter(const std::vector<Point>& course, const BoxChange& source,
                              const BoxChange& target, Rank rank) {
  std::vector<Point> bends(course.begin() + 1, course.end() - 1);
  const bool sourceChanged = source.before != source.after;
  const bool targetChanged = target.before != target.after;
  if (!sourceChanged && !targetChanged) return bends;
  const std::size_t last = course.size() - 1;
  const Side sourceSide = sideMet(source.before, course[0], course[1]);
  const Side targetSide = sideMet(target.before, course[last], course[last - 1]);
  if (sourceSide == Side::none && targetSide == Side::none) {
    dropCovered(bends, source, target);
    return bends;
  }
  if (sourceChanged && sourceSide != Side::none) {
    follow(bends, course[0], course[last], sourceSide, source);
  }
  if (targetChanged && targetSide != Side::none) {
    std::reverse(bends.begin(), bends.end());
    const Point far = route(source.after, target.before, {bends.rbegin(), bends.rend()}, {})[0];
    follow(bends, course[last], far, targetSide, target);
    std::reverse(bends.begin(), bends.end());
  }
  if (isSound(source.after, target.after, bends, sourceSide, targetSide)) {
    return bendsFor(source.after, target.after, route(source.after, target.after, bends, {}));
  }
  return rightAngled(source.after, target.after, rank);
}

std::vector<Point> rightAngled(const Rect& source, const Rect& target, Rank rank) {
  const double apartX = std::max(target.left - source.right(), source.left - target.right());
  const double apartY = std::max(target.top - source.bottom(), source.top - target.bottom());
  if (apartX <= 0 && apartY <= 0) return {};
  const Side side = apartY >= apartX ? Side::top : Side::left;
  const double gap = std::max(apartX, apartY);
  // Of several between the same boxes each has its own way, none crosses another.
  const auto aside = [&](double room) {
    const auto count = static_cast<double>(rank.count);
    const double step = std::min(kParallelSpacing, std::max(0.0, room) / count);
    return (static_cast<double>(rank.index) - (count - 1) / 2) * step;
  };
  const auto& [first, second] = levelOf(source, side) < levelOf(target, side)
                                    ? std::pair(source, target)
                                    : std::pair(target, source);
  const Side facing = side == Side::top ? Side::bottom : Side::right;
  const double middle = levelOf(first, facing) + gap / 2;
  const auto pointAt = [&](double across, double level) {
    return isUpright(side) ? Point{across, level} : Point{level, across};
  };
  const double low = std::max(beginOf(source, side), beginOf(target, side));
  const double high = std::min(endOf(source, side), endOf(target, side));
  if (high - low > 2 * kCornerGap) {
    return {pointAt((low + high) / 2 + aside(high - low - 2 * kCornerGap), middle)};
  }
  const auto portOf = [&](const Rect& box) {
    Point centre = box.center();
    return across(centre, side) + aside(endOf(box, side) - beginOf(box, side) - 2 * kCornerGap);
  };
  const bool forward = (portOf(first) < portOf(second));
  const double level = middle + (forward ? -1 : 1) * aside(gap - 2 * kCornerGap);
  return {pointAt(portOf(source), level), pointAt(portOf(target), level)};
}

}  // namespace brisel::canvas
