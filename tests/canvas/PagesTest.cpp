#include <gtest/gtest.h>

#include "canvas/Pages.h"

namespace brisel::canvas {
namespace {

using platform::Rect;
using platform::Size;

constexpr Size kPaper{9000, 12000 + kPageMark};

TEST(Pages, fitOnOnePageOrTileAtFullSize) {
  const struct {
    const char* name;
    Rect picture;
    PageFit fit;
    std::size_t pages;
    double scale;
  } cases[] = {
      {"small, fitted", {0, 0, 3000, 3000}, PageFit::onePage, 1, 1},
      {"small, tiled", {-500, 70, 3000, 3000}, PageFit::tiles, 1, 1},
      {"twice as wide, fitted", {0, 0, 18000, 3000}, PageFit::onePage, 1, 0.5},
      {"twice as wide, tiled", {0, 0, 18000, 3000}, PageFit::tiles, 2, 1},
      {"a little wider", {0, 0, 9010, 3000}, PageFit::tiles, 2, 1},
      {"fills pages to the edge", {0, 0, 18000, 24000}, PageFit::tiles, 4, 1},
      {"no picture", {}, PageFit::tiles, 0, 1},
  };
  for (const auto& test : cases) {
    const auto pages = pagesOf(test.picture, kPaper, test.fit);
    ASSERT_EQ(pages.size(), test.pages) << test.name;
    for (const Page& page : pages) EXPECT_DOUBLE_EQ(page.scale, test.scale) << test.name;
  }
  EXPECT_TRUE(pagesOf({0, 0, 100, 100}, {0, 0}, PageFit::tiles).empty());
}

TEST(Pages, tilesCoverThePictureOnceRowByRow) {
  const Rect picture{-3000, 700, 20000, 30000};
  const auto pages = pagesOf(picture, kPaper, PageFit::tiles);
  ASSERT_EQ(pages.size(), 9U);
  Rect around;
  double covered = 0;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    around = around.united(pages[i].area);
    covered += pages[i].area.width * pages[i].area.height;
    EXPECT_EQ(pages[i].row, static_cast<int>(i / 3) + 1);
    EXPECT_EQ(pages[i].column, static_cast<int>(i % 3) + 1);
  }
  EXPECT_EQ(around.topLeft(), picture.topLeft());
  EXPECT_TRUE(around.contains(picture));
  EXPECT_DOUBLE_EQ(covered, around.width * around.height) << "no overlap, no hole";
}

TEST(Pages, aHugeDiagramDoesNotFillTheRoomWithPaper) {
  const auto pages = pagesOf({0, 0, 2e9, 1e6}, kPaper, PageFit::tiles);
  EXPECT_LE(pages.size(), 400U);
  EXPECT_GT(pages.size(), 100U);
  EXPECT_LT(pages.front().scale, 1);
}

TEST(Pages, paperIsTurnedWhereThatHelps) {
  const struct {
    Rect picture;
    PageFit fit;
    bool lying;
  } cases[] = {
      {{0, 0, 3000, 2000}, PageFit::onePage, false},  // fits either way
      {{0, 0, 20000, 3000}, PageFit::onePage, true},
      {{0, 0, 3000, 20000}, PageFit::onePage, false},
      {{0, 0, 12000, 8000}, PageFit::tiles, true},
      {{0, 0, 8000, 12000}, PageFit::tiles, false},
      {{}, PageFit::tiles, false},
  };
  for (const auto& test : cases) {
    EXPECT_EQ(isBetterLying(test.picture, kPaper, test.fit), test.lying)
        << test.picture.width << " by " << test.picture.height;
  }
}

}  // namespace
}  // namespace brisel::canvas
