#pragma once

#include <algorithm>
#include <vector>

namespace brisel::layout {

/// Lines that leave a row at one place and share a horizontal piece up to where each turns down: a
/// trunk, or one line alone.
struct Comb {
  double top = 0;
  std::vector<double> bottoms = {};  ///< sorted

  [[nodiscard]] int lines() const { return static_cast<int>(bottoms.size()); }
  /// The lines whose horizontal pieces pass over x.
  [[nodiscard]] int over(double x) const {
    if (x == top) return 0;
    const auto left = std::lower_bound(bottoms.begin(), bottoms.end(), x);
    if (x < top) return static_cast<int>(left - bottoms.begin());
    return static_cast<int>(bottoms.end() - std::upper_bound(left, bottoms.end(), x));
  }
  /// Pairs of lines that cross when the horizontal piece lies above that of the other.
  [[nodiscard]] int crossingsAbove(const Comb& other) const {
    int pairs = over(other.top) * other.lines();
    for (const double x : bottoms) pairs += other.over(x);
    return pairs;
  }
};

}  // namespace brisel::layout
