#include <string>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "canvas/Handles.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"
#include "support/RecordingPainter.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;
using test::DiagramBuilder;

/// A box to be dragged, and one that stands still at 4500 to 7500 across, 3000 to 4500 down.
class GuidesTest : public testing::Test, protected DiagramBuilder {
 protected:
  GuidesTest() : a(sized("a", {0, 0, 1500, 900})), b(sized("b", {4500, 3000, 3000, 1500})) {}
  ~GuidesTest() override { EXPECT_EQ(test::checkInvariants(*control), ""); }

  Node& sized(const char* key, const Rect& bounds) {
    Node& node = box(key, "A", 0, 0);
    node.fitToText(false);
    node.bounds(bounds);
    return node;
  }
  /// Drags the box until its corner would lie there, and holds it.
  void holdAt(Point corner, const char* modifiers = "") {
    const Point grip = a.bounds().topLeft() + Point{300, 200};
    at = corner + Point{300, 200};
    control->PointerPress(grip.x, grip.y, "left", "");
    control->PointerMove(at.x, at.y, modifiers);
  }
  void release() { control->PointerRelease(at.x, at.y, "left", ""); }
  /// The guides that are shown, as from and to.
  std::string guides() const {
    test::RecordingPainter painter;
    control->paintGesture(painter, control->viewport().pixelsPerTwip());
    std::string all;
    for (const auto& line : painter.lines) {
      for (const Point p : line.points) {
        all += std::to_string(static_cast<int>(p.x)) + ',' + std::to_string(static_cast<int>(p.y)) +
               ' ';
      }
    }
    return all;
  }

  Node& a;
  Node& b;
  Point at;
};

TEST_F(GuidesTest, edgesAndMiddlesAreDrawnToThoseOfANeighbour) {
  const struct {
    const char* what;
    Point corner;
    Point snapped;
    const char* guides;
  } cases[] = {
      {"left edges", {4530, 900}, {4500, 900}, "4500,900 4500,4500 "},
      {"left edge to the right one", {7430, 900}, {7500, 900}, "7500,900 7500,4500 "},
      {"right edges", {6089, 900}, {6000, 900}, "7500,900 7500,4500 "},
      {"just out of reach", {4595, 900}, {4595, 900}, ""},
      {"middles", {5200, 900}, {5250, 900}, "6000,900 6000,4500 "},
      {"both ways", {4489, 3050}, {4500, 3000}, "4500,3000 4500,4500 4500,3000 7500,3000 "},
      {"not an edge to a middle", {900, 3755}, {900, 3755}, ""},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.what);
    holdAt(test.corner);
    EXPECT_EQ(a.bounds().topLeft(), test.snapped);
    EXPECT_EQ(guides(), test.guides);
    release();
    EXPECT_EQ(a.bounds().topLeft(), test.snapped);
    EXPECT_EQ(guides(), "");
    a.bounds({0, 0, 1500, 900});
  }
}

TEST_F(GuidesTest, altAndNeighboursOutOfSightDoNotAlign) {
  holdAt({4530, 900}, "alt");
  EXPECT_EQ(a.bounds().left, 4530);
  release();
  EXPECT_EQ(a.bounds().left, 4530) << "Alt may be let go before the button";
  a.bounds({0, 0, 1500, 900});
  b.bounds({4500, 20000, 3000, 1500});
  holdAt({4530, 900});
  EXPECT_EQ(a.bounds().left, 4530) << "out of sight";
  control->KeyPress("Escape", "");
  control->zoom(25);
  holdAt({4800, 900});
  EXPECT_EQ(a.bounds().left, 4500) << "six pixels of the view, in which it is now";
  EXPECT_NE(guides(), "");
  control->KeyPress("Escape", "");
  EXPECT_EQ(guides(), "");
  EXPECT_EQ(a.bounds().left, 0);
  control->zoom(5);
  holdAt({4530, 900});
  EXPECT_EQ(guides(), "") << "too small to be aligned by eye";
  release();
}

TEST_F(GuidesTest, whatMovesTogetherIsAlignedAsOne) {
  Node& c = sized("c", {2000, 300, 1000, 900});
  control->selNode("c");
  control->selNode("a");
  holdAt({1460, 6000});
  EXPECT_EQ(c.bounds(), (Rect{3500, 6300, 1000, 900}));
  EXPECT_EQ(guides(), "4500,3000 4500,7200 ");
  release();
}

TEST_F(GuidesTest, pulledSidesAreAligned) {
  control->selNode("a");
  const auto pull = [&](Handle handle, Point way) {
    const Point from = handlesOf(a.bounds())[static_cast<std::size_t>(handle)];
    at = from + way;
    control->PointerPress(from.x, from.y, "left", "");
    control->PointerMove(at.x, at.y);
  };
  pull(Handle::bottomRight, {2960, 2160});
  EXPECT_EQ(a.bounds(), (Rect{0, 0, 4500, 3000}));
  EXPECT_EQ(guides(), "4500,0 4500,4500 0,3000 7500,3000 ");
  release();
  pull(Handle::right, {0, 0});
  control->PointerMove(at.x + 30, at.y);
  release();
  EXPECT_EQ(a.bounds(), (Rect{0, 0, 4500, 3000})) << "a click on a handle pulls nothing";
  pull(Handle::left, {9000, 0});
  EXPECT_EQ(a.bounds().width, a.minimumSize().width) << "the title stays readable";
  control->KeyPress("Escape", "");
  EXPECT_EQ(a.bounds(), (Rect{0, 0, 4500, 3000}));
}

}  // namespace
}  // namespace brisel::canvas
