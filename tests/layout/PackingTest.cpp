#include <gtest/gtest.h>

#include "layout/Numbers.h"
#include "layout/OverlapRemoval.h"
#include "layout/Packing.h"

namespace brisel::layout {
namespace {

using platform::Point;
using platform::Rect;
using platform::Size;

std::vector<Size> someSizes(int items, std::uint64_t seed) {
  Numbers numbers(seed);
  std::vector<Size> sizes;
  for (int i = 0; i < items; ++i) {
    const double large = numbers.part() < 0.05 ? 5 : 1;
    sizes.push_back({large * (10 + 90 * numbers.part()), large * (10 + 50 * numbers.part())});
  }
  return sizes;
}

void expectApart(const std::vector<Size>& sizes, const std::vector<Point>& at, double gap) {
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    const Rect a{at[i].x, at[i].y, sizes[i].width + gap, sizes[i].height + gap};
    for (std::size_t k = 0; k < sizes.size(); ++k) {
      const Rect b{at[k].x, at[k].y, sizes[k].width + gap, sizes[k].height + gap};
      ASSERT_FALSE(i != k && a.grownBy(-1e-3).intersects(b)) << i << " and " << k;
    }
  }
}

TEST(Packing, FillsTheWantedShapeWithoutOverlaps) {
  for (const double aspect : {0.5, 1.0, 1.6, 3.0}) {
    for (const std::uint64_t seed : {1, 2, 3}) {
      const auto sizes = someSizes(120, seed);
      const auto places = packed(sizes, 10, aspect);
      expectApart(sizes, places, 10);
      double area = 0;
      for (const Size& s : sizes) area += (s.width + 10) * (s.height + 10);
      EXPECT_LT(waste(extent(sizes, places), aspect), 1.6 * area);
    }
  }
}

TEST(Packing, ShelvesKeepTheWidth) {
  const auto sizes = someSizes(200, 4);
  const auto places = shelved(sizes, 10, 2500);
  expectApart(sizes, places, 10);
  EXPECT_LE(extent(sizes, places).width, 2500);
}

TEST(OverlapRemoval, EndsEveryOverlap) {
  Numbers numbers(3);
  for (const double spread : {0.0, 50.0, 1000.0, 100'000.0}) {
    const auto sizes = someSizes(300, 5);
    std::vector<Point> places;
    for (std::size_t i = 0; i < sizes.size(); ++i) {
      places.push_back({spread * numbers.part(), spread * numbers.part()});
    }
    removeOverlaps(sizes, 10, places);
    expectApart(sizes, places, 9);
  }
}

}  // namespace
}  // namespace brisel::layout
