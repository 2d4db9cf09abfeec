#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "canvas/Palette.h"
#include "canvas/ScenePainter.h"
#include "support/DiagramBuilder.h"
#include "support/RecordingPainter.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;
using test::DiagramBuilder;
using test::RecordingPainter;

constexpr Rect kAll{-100000, -100000, 300000, 300000};
constexpr double kFullSize = 1 / platform::kTwipsPerPixel;

RecordingPainter painted(DiagramBuilder& diagram, double zoom = 1, const Rect& area = kAll) {
  RecordingPainter recording;
  ScenePainter(diagram.control->scene(), recording, zoom * kFullSize).paintItems(area);
  return recording;
}

std::vector<std::string> tenRows(const std::string& end) {
  std::vector<std::string> rows;
  for (int i = 0; i < 10; ++i) rows.push_back("+row" + std::to_string(i) + ":" + end);
  return rows;
}

TEST(ScenePainter, keepsTextWithinItsBoxWhateverItsSize) {
  DiagramBuilder diagram;
  Node& node = diagram.box("a", "<<COM::Interface>>\r\nVerwaltungsgrößenübersicht", 0, 0,
                           tenRows("größe類型 of something very long"), tenRows("int"));
  const Point needed{node.bounds().width, node.bounds().height};
  std::size_t most = 0;
  for (const double width : {needed.x + 300, needed.x, needed.x - 1, 2000.0, 700.0, 200.0, 20.0}) {
    for (const double height : {needed.y + 300, needed.y, 3000.0, 1300.0, 600.0, 100.0, 5.0}) {
      const Rect box{450, 300, width, height};
      node.bounds(box);
      const RecordingPainter recording = painted(diagram);
      most = std::max(most, recording.texts.size());
      for (const auto& text : recording.texts) {
        const double size = text.style.size;
        const double right = text.baseline.x + platform::columnsOf(text.text) * kColumnWidth * size;
        const Rect cell{text.baseline.x, text.baseline.y - 0.7 * size, right - text.baseline.x,
                        0.9 * size};
        EXPECT_TRUE(box.grownBy(1).contains(cell)) << text.text << " in " << width << 'x' << height;
      }
    }
  }
  EXPECT_EQ(most, 22U) << "in its full size the box shows two lines of title and 20 rows";
}

TEST(ScenePainter, cutsRowsBetweenCharacters) {
  DiagramBuilder diagram;
  Node& node = diagram.box("a", "A", 0, 0, {"類型類型類型類型類型"});
  node.bounds({0, 0, 2 * kPadding + 8 * 120, 1500});
  const RecordingPainter recording = painted(diagram);
  ASSERT_EQ(recording.texts.size(), 2U);
  EXPECT_EQ(recording.texts[1].text, "類型類…") << "three wide ones and a narrow one in eight";
}

TEST(ScenePainter, decoratesTheEndsAsUmlDoes) {
  DiagramBuilder diagram;
  diagram.box("sub", "Sub", 0, 6000);
  diagram.box("super", "Super", 0, 0);
  Link& link = diagram.line("l", "sub", "super");
  const Color ground = 0xFFFFFFFF;
  const struct {
    int begin, end;
    std::size_t corners;
    Color fill;
  } cases[] = {
      {0, 8, 3, ground}, {14, 0, 4, ground}, {13, 0, 4, palette::kLine}, {0, 0, 0, kNoColor}};
  for (const auto& [begin, end, corners, fill] : cases) {
    link.beginArrow(begin);
    link.endArrow(end);
    const RecordingPainter recording = painted(diagram);
    ASSERT_EQ(recording.polygons.size(), corners == 0 ? 0U : 1U);
    if (corners == 0) continue;
    const auto& polygon = recording.polygons.front();
    EXPECT_EQ(polygon.points.size(), corners);
    EXPECT_EQ(polygon.fill, fill);
    const Point tip = end != 0 ? link.points().back() : link.points().front();
    EXPECT_EQ(std::count(polygon.points.begin(), polygon.points.end(), tip), 1);
    for (const Point corner : polygon.points) {
      EXPECT_FALSE(diagram.control->scene().node("super")->bounds().grownBy(-1).contains(corner));
      EXPECT_FALSE(diagram.control->scene().node("sub")->bounds().grownBy(-1).contains(corner));
    }
  }
  link.endArrow(3);
  const RecordingPainter open = painted(diagram);
  EXPECT_TRUE(open.polygons.empty());
  EXPECT_EQ(open.lines.back().points[1], link.points().back());
}

TEST(ScenePainter, decoratesALineWhoseBendLiesOnItsEnd) {
  DiagramBuilder diagram;
  diagram.box("a", "A", 0, 0);
  diagram.box("b", "B", 9000, 0);
  Link& link = diagram.line("l", "a", "b");
  link.endArrow(8);
  link.bends({link.points().back()});
  for (const auto& polygon : painted(diagram).polygons) {
    for (const Point corner : polygon.points) EXPECT_TRUE(kAll.contains(corner));
  }
}

TEST(ScenePainter, paintsOnlyWhatCanBeMadeOut) {
  DiagramBuilder diagram;
  diagram.box("a", "Alpha", 0, 0, tenRows("int"));
  diagram.box("b", "Beta", 9000, 0, tenRows("int"));
  diagram.line("l", "a", "b", "label").dashed(true);
  EXPECT_EQ(painted(diagram, 1).texts.size(), 23U);
  const RecordingPainter bars = painted(diagram, 0.3);
  EXPECT_EQ(bars.texts.size(), 2U) << "titles can still be read";
  EXPECT_EQ(bars.fills.size(), 24U) << "a ground, a separator and ten bars each";
  const RecordingPainter blocks = painted(diagram, 0.03);
  EXPECT_TRUE(blocks.texts.empty());
  EXPECT_EQ(blocks.fills.size(), 2U);
  EXPECT_EQ(blocks.lines.size(), 1U);
}

TEST(ScenePainter, paintsOfABoxOnlyTheRowsInTheArea) {
  DiagramBuilder diagram;
  const Node& node = diagram.box("a", "Alpha", 0, 0, tenRows("int"));
  const double top = node.firstRow(0) + 3 * node.rowHeight();
  const RecordingPainter recording = painted(diagram, 1, {0, top + 20, 100, 10});
  std::vector<std::string> rows;
  for (const auto& text : recording.texts) rows.push_back(text.text);
  EXPECT_EQ(std::count(rows.begin(), rows.end(), "+row3:int"), 1);
  EXPECT_LE(rows.size(), 4U);
}

TEST(ScenePainter, paintsLabelsOverTheLinesThatCrossThem) {
  DiagramBuilder diagram;
  for (const auto& [key, x, y] :
       {std::tuple{"a", 0., 0.}, {"b", 9000., 9000.}, {"c", 9000., 0.}, {"d", 0., 9000.}}) {
    diagram.box(key, key, x, y);
  }
  Link& link = diagram.line("l", "a", "b", "first");
  diagram.line("m", "c", "d", "second");
  const RecordingPainter recording = painted(diagram);
  EXPECT_EQ(recording.fills.size(), 6U) << "each label has a ground";
  EXPECT_EQ(recording.texts.back().text, "second");

  // Its own line, which may run along the words, is hidden; those of others are seen to go on.
  link.beginText("a text that reaches far over both of the lines");
  link.bends({{200, 5000}});
  link.text("");
  const auto fills = painted(diagram).fills;
  const auto groundOf = [&](const Rect& area) {
    const auto found = std::find_if(fills.begin(), fills.end(),
                                    [&](const auto& fill) { return fill.rect == area; });
    return found == fills.end() ? 0 : found->color >> 24;
  };
  EXPECT_GE(groundOf(diagram.control->scene().link("m")->labelArea()), 0xE0U);
  EXPECT_LT(groundOf(link.beginTextArea()), 0xC0U);
  EXPECT_GT(groundOf(link.beginTextArea()), 0x80U);
}

TEST(ScenePainter, marksWhatIsSelectedAndTheRubberBand) {
  DiagramBuilder diagram;
  diagram.box("a", "A", 3000, 3000);
  diagram.box("b", "B", 9000, 3000);
  diagram.line("l", "a", "b");
  diagram.control->scene().node("a")->selected(true);
  EXPECT_EQ(painted(diagram).frames.size(), 2 + kHandleCount);
  diagram.control->scene().link("l")->selected(true);
  EXPECT_EQ(painted(diagram).frames.size(), 4 + kHandleCount);
  const Rect beside{2900, 2900, 95, 95};
  EXPECT_EQ(painted(diagram, 1, beside).frames.size(), 1 + kHandleCount)
      << "a handle reaches beyond its box";
}

}  // namespace
}  // namespace brisel::canvas
