#pragma once

#include <vector>

#include "platform/Geometry.h"

namespace brisel::canvas {

/// How a diagram is put on paper.
enum class PageFit {
  onePage,  ///< all of it on one page, at 100 % at most
  tiles     ///< at 100 % on as many pages as that takes
};

/// A page: the part of the canvas that it shows, in twips, at its scale.
struct Page {
  platform::Rect area;
  double scale = 1;
  int row = 1;  ///< from the top and the left, from 1
  int column = 1;
};

/// At the lower edge of a page that is one of several: room in twips for the mark that tells which.
inline constexpr double kPageMark = 300;
/// More tiles than this are none that a person glues: then the scale is less than 100 %.
inline constexpr int kMostPages = 400;

/// The pages that show the picture, row by row. The paper is what of a sheet can be printed on, in
/// twips; none for paper without room.
[[nodiscard]] std::vector<Page> pagesOf(const platform::Rect& picture, platform::Size paper,
                                        PageFit fit);
/// Whether the picture comes out larger, or on fewer pages, on the paper lying than standing. The
/// paper is given standing.
[[nodiscard]] bool isBetterLying(const platform::Rect& picture, platform::Size paper, PageFit fit);

}  // namespace brisel::canvas
