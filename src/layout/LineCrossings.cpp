#include "layout/LineCrossings.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

namespace brisel::layout {
namespace {

using platform::Point;

/// What a line that sweeps from the top down meets.
struct Stop {
  enum Kind { end, across, start };  ///< at one height vertical pieces end first and start last
  double y;
  Kind kind;
  double left;
  double right;
};

template <class Take>
void eachPiece(const std::vector<Polyline>& lines, Take&& take) {
  for (const Polyline& line : lines) {
    for (std::size_t i = 1; i < line.size(); ++i) take(line[i - 1], line[i]);
  }
}

}  // namespace

std::int64_t lineCrossings(const std::vector<Polyline>& lines) {
  std::vector<Stop> stops;
  eachPiece(lines, [&](Point a, Point b) {
    const auto [left, right] = std::minmax(a.x, b.x);
    const auto [top, bottom] = std::minmax(a.y, b.y);
    if (a.y == b.y) {
      stops.push_back({a.y, Stop::across, left, right});
    } else {
      stops.push_back({top, Stop::start, left, right});
      stops.push_back({bottom, Stop::end, left, right});
    }
  });
  std::sort(stops.begin(), stops.end(), [](const Stop& a, const Stop& b) {
    return std::tie(a.y, a.kind, a.left, a.right) < std::tie(b.y, b.kind, b.left, b.right);
  });
  std::map<double, int> open;  // vertical pieces by where they stand
  std::int64_t crossings = 0;
  for (const Stop& stop : stops) {
    if (stop.kind == Stop::start) ++open[stop.left];
    if (stop.kind == Stop::end && --open[stop.left] == 0) open.erase(stop.left);
    if (stop.kind != Stop::across) continue;
    for (auto it = open.upper_bound(stop.left); it != open.end() && it->first < stop.right; ++it) {
      crossings += it->second;
    }
  }
  return crossings;
}

double lineLength(const std::vector<Polyline>& lines) {
  double length = 0;
  eachPiece(lines, [&](Point a, Point b) { length += std::hypot(b.x - a.x, b.y - a.y); });
  return length;
}

}  // namespace brisel::layout
