#include "canvas/Pages.h"

#include <algorithm>
#include <cmath>

namespace brisel::canvas {

using platform::Rect;
using platform::Size;

namespace {

constexpr double kRounding = 1;  // twips: not enough for a page of its own

double fittingScale(const Rect& picture, Size paper) {
  return std::min({1.0, paper.width / picture.width, paper.height / picture.height});
}

double pagesAlong(double length, double page) {
  return std::max(1.0, std::ceil((length - kRounding) / page));
}

double countAt(double scale, const Rect& picture, Size tile) {
  return pagesAlong(picture.width * scale, tile.width) *
         pagesAlong(picture.height * scale, tile.height);
}

}  // namespace

std::vector<Page> pagesOf(const Rect& picture, Size paper, PageFit fit) {
  if (picture.isEmpty() || !(paper.width > 0 && paper.height > kPageMark)) return {};
  const double fitting = fittingScale(picture, paper);
  if (fit == PageFit::onePage || fitting >= 1) return {{picture, fitting, 1, 1}};
  const Size tile{paper.width, paper.height - kPageMark};
  double scale = 1;
  while (countAt(scale, picture, tile) > kMostPages) scale *= 0.9;
  const int columns = static_cast<int>(pagesAlong(picture.width * scale, tile.width));
  const int rows = static_cast<int>(pagesAlong(picture.height * scale, tile.height));
  const Size part{tile.width / scale, tile.height / scale};
  std::vector<Page> pages;
  for (int row = 0; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      const Rect area{picture.left + column * part.width, picture.top + row * part.height,
                      part.width, part.height};
      pages.push_back({area, scale, row + 1, column + 1});
    }
  }
  return pages;
}

bool isBetterLying(const Rect& picture, Size paper, PageFit fit) {
  const Size lying{paper.height, paper.width};
  if (picture.isEmpty()) return false;
  if (fit == PageFit::tiles) {
    const auto standingPages = pagesOf(picture, paper, fit).size();
    const auto lyingPages = pagesOf(picture, lying, fit).size();
    if (standingPages != lyingPages) return lyingPages < standingPages;
  }
  return fittingScale(picture, lying) > fittingScale(picture, paper);
}

}  // namespace brisel::canvas
