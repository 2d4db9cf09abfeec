#include "canvas/LinkRoute.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "platform/Diagram.h"
#include "platform/Text.h"

namespace brisel::canvas {

using platform::Point;
using platform::Rect;
using platform::Size;

namespace {

double lengthOf(Point vector) { return std::hypot(vector.x, vector.y); }

/// Where a line that comes from `next` meets the box.
Point meeting(const Rect& box, Point next) {
  const bool besideX = next.x > box.left && next.x < box.right();
  const bool besideY = next.y > box.top && next.y < box.bottom();
  if (besideX && !besideY) return {next.x, next.y < box.top ? box.top : box.bottom()};
  if (besideY && !besideX) return {next.x < box.left ? box.left : box.right(), next.y};
  return leaving(box, box.center(), next);
}

/// How far the line through two middles may be pushed sideways, from the middle of its fan, and
/// still meet both boxes.
double roomAcross(const Rect& box, Point normal) {
  return (std::abs(normal.x) * box.width + std::abs(normal.y) * box.height) / 2;
}

std::vector<Point> straight(const Rect& source, const Rect& target, Rank rank) {
  Point from = source.center();
  Point to = target.center();
  const double length = lengthOf(to - from);
  if (rank.count > 1 && length > 0) {
    const Point along = (to - from) * ((rank.reversed ? -1 : 1) / length);
    const Point normal{-along.y, along.x};
    const double room = 0.8 * std::min(roomAcross(source, normal), roomAcross(target, normal));
    const auto count = static_cast<double>(rank.count);
    const double spacing = std::min(kParallelSpacing, 2 * room / count);
    const double offset = (static_cast<double>(rank.index) - (count - 1) / 2) * spacing;
    from = from + normal * offset;
    to = to + normal * offset;
  }
  return {leaving(source, from, to), leaving(target, to, from)};
}

template <class Iterator>
LineEnd lineEnd(Iterator begin, Iterator end) {
  const Point tip = *begin;
  const auto found = std::find_if(begin, end, [&](Point p) { return !(p == tip); });
  return {tip, found == end ? Point{tip.x + 1, tip.y} : *found};
}

}  // namespace

Point leaving(const Rect& box, Point from, Point through) {
  const Point way = through - from;
  if (way == Point{}) return {from.x, box.top};
  constexpr double kNever = std::numeric_limits<double>::infinity();
  const double reachX = way.x > 0   ? (box.right() - from.x) / way.x
                        : way.x < 0 ? (box.left - from.x) / way.x
                                    : kNever;
  const double reachY = way.y > 0   ? (box.bottom() - from.y) / way.y
                        : way.y < 0 ? (box.top - from.y) / way.y
                                    : kNever;
  Point end = from + way * std::min(reachX, reachY);
  // The side that was met, exactly, so that later questions for the side need no tolerance.
  if (reachX <= reachY) end.x = way.x > 0 ? box.right() : box.left;
  if (reachY <= reachX) end.y = way.y > 0 ? box.bottom() : box.top;
  return end;
}

std::vector<Point> route(const Rect& source, const Rect& target, const std::vector<Point>& bends,
                         Rank rank) {
  if (bends.empty()) return straight(source, target, rank);
  std::vector<Point> points;
  points.reserve(bends.size() + 2);
  points.push_back(meeting(source, bends.front()));
  points.insert(points.end(), bends.begin(), bends.end());
  points.push_back(meeting(target, bends.back()));
  return points;
}

std::vector<Point> loop(const Rect& box, Rank rank) {
  const auto index = static_cast<double>(rank.index);
  const auto count = static_cast<double>(rank.count);
  const auto ends = [&](double side) {
    const double most = rank.count > 1 ? 0.8 * side : side / 2;
    return std::round(std::min(most, std::max(kLoopSize, count * kLoopEnds)) * (index + 1) / count);
  };
  const double down = ends(box.height);
  const double across = ends(box.width);
  const double reach = kLoopSize + index * kParallelSpacing;
  const double right = box.right();
  return {{right, box.top + down},
          {right + reach, box.top + down},
          {right + reach, box.top - reach},
          {right - across, box.top - reach},
          {right - across, box.top}};
}

LineEnd beginOf(const std::vector<Point>& points) { return lineEnd(points.begin(), points.end()); }

LineEnd endOf(const std::vector<Point>& points) { return lineEnd(points.rbegin(), points.rend()); }

Rect headArea(int arrow, const LineEnd& end) {
  if (arrow == 0) return {};
  const auto code = static_cast<platform::Arrow>(arrow);
  const bool isDiamond = code == platform::Arrow::diamond || code == platform::Arrow::filledDiamond;
  const Point way = end.from - end.tip;
  const Point along = way * (1 / lengthOf(way));
  const Point across = Point{-along.y, along.x} * (isDiamond ? kDiamondHalfWidth : kArrowHalfWidth);
  const Point base = end.tip + along * (isDiamond ? kDiamondLength : kArrowLength);
  // A diamond is widest half way.
  const Point wide = isDiamond ? end.tip + along * (kDiamondLength / 2) : base;
  const auto [left, right] = std::minmax({end.tip.x, base.x, (wide - across).x, (wide + across).x});
  const auto [top, bottom] = std::minmax({end.tip.y, base.y, (wide - across).y, (wide + across).y});
  return {left, top, right - left, bottom - top};
}

Rect rectAround(Point a, Point b) {
  return {std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x), std::abs(a.y - b.y)};
}

std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (true) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    lines.push_back(line);
    if (end == std::string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

Size textSize(std::string_view text, const Font& font) {
  if (text.empty()) return {};
  int columns = 0;
  const auto lines = linesOf(text);
  for (const std::string_view line : lines) columns = std::max(columns, platform::columnsOf(line));
  return {std::min(kReach, columns * font.columnWidth()),
          std::min(kReach, static_cast<double>(lines.size()) * font.lineHeight())};
}

Size labelSize(std::string_view text, const Font& font) {
  const Size size = textSize(text, font);
  return {size.width, std::max(0.0, size.height - font.leading())};
}

Point middleOf(const std::vector<Point>& points) { return placeOn(points, 0.5); }

Point placeOn(const std::vector<Point>& points, double share) {
  double length = 0;
  for (std::size_t i = 1; i < points.size(); ++i) length += lengthOf(points[i] - points[i - 1]);
  double left = length * share;
  for (std::size_t i = 1; i < points.size(); ++i) {
    const Point way = points[i] - points[i - 1];
    const double piece = lengthOf(way);
    if (piece > 0 && left <= piece) return points[i - 1] + way * (left / piece);
    left -= piece;
  }
  return points.front();
}

std::vector<layout::LabelCandidate> loopNameCandidates(const std::vector<Point>& points,
                                                       Size size) {
  const Point corner = points[3];
  const double over = corner.y - kTextGap - size.height;
  const double right = points[1].x + kTextGap;
  std::vector<layout::LabelCandidate> found{
      {{corner.x, over, size.width, size.height}},
      {{right, corner.y, size.width, size.height}},
      {{corner.x, over - size.height - kTextGap, size.width, size.height}},
      {{right - size.width, over, size.width, size.height}},
      {{right, points[1].y, size.width, size.height}}};
  // Further up and down on the right, where other loops and the texts of ends leave room.
  constexpr int kFurther = 8;
  for (int i = 1; i <= kFurther; ++i) {
    const double away = i * (size.height + kTextGap);
    const int reluctance = i > 3 ? layout::kCrowd : 0;
    found.push_back({{right, corner.y + away, size.width, size.height}, false, reluctance});
    found.push_back({{right, corner.y - away, size.width, size.height}, false, reluctance});
    found.push_back({{corner.x, over - size.height - kTextGap - away, size.width, size.height},
                     false,
                     reluctance});
  }
  return found;
}

double distance(Point point, Point from, Point to) {
  const Point way = to - from;
  const Point there = point - from;
  const double square = way.x * way.x + way.y * way.y;
  const double along =
      square > 0 ? std::clamp((there.x * way.x + there.y * way.y) / square, 0.0, 1.0) : 0;
  return lengthOf(there - way * along);
}

}  // namespace brisel::canvas
