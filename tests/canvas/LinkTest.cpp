#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "canvas/Link.h"
#include "platform/Error.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using platform::Error;
using platform::Point;
using platform::Rect;
using platform::Value;
using test::checkInvariants;
using test::DiagramBuilder;

class LinkTest : public testing::Test, protected DiagramBuilder {
 protected:
  LinkTest() : a(box("a", "A", 0, 0)), b(box("b", "B", 9000, 0)) {}
  ~LinkTest() override { EXPECT_EQ(checkInvariants(*control), ""); }

  Node& a;
  Node& b;
};

TEST_F(LinkTest, extraPointsAreTheEndsAndTheBendsInOrder) {
  Link& l = line("l", "a", "b");
  const auto points = l.ExtraPoints();
  ASSERT_EQ(points->Count(), 2) << "a straight line";
  EXPECT_EQ(points->at(0), (Point{a.bounds().right(), a.bounds().center().y}));
  EXPECT_EQ(points->at(1), (Point{b.bounds().left, b.bounds().center().y}));
  points->Add(4000, 3000);
  points->Add(5000, 4000);
  EXPECT_EQ(points->Count(), 4) << "the collection is live";
  EXPECT_EQ(points->at(1), (Point{4000, 3000}));
  EXPECT_EQ(points->at(2), (Point{5000, 4000})) << "put before the last point";
  EXPECT_EQ(points->Item(4)->get("x"), Value(points->at(3).x));
  EXPECT_EQ(points->copy()->Count(), 4);
  EXPECT_THROW(static_cast<void>(points->Item(0)), Error);
  EXPECT_THROW(static_cast<void>(points->Item(5)), Error);
  points->Clear();
  EXPECT_EQ(points->Count(), 2) << "only the bends are cleared";
}

TEST_F(LinkTest, endsFollowTheBoxesWhateverTheBends) {
  Link& l = line("l", "a", "b");
  const Rect box = a.bounds();
  const std::vector<std::vector<Point>> bendings = {{},
                                                    {{4000, 200}},
                                                    {box.center()},
                                                    {{box.left + 10, box.top + 10}},
                                                    {{300, 4000}, {300, -4000}},
                                                    {box.topLeft()},
                                                    {{4000, 4000}, b.bounds().center()}};
  for (const auto& bends : bendings) {
    l.bends(bends);
    for (const Rect& place : {Rect{0, 0, 2000, 900}, Rect{0, 0, 0, 0}, Rect{8000, 100, 3000, 3000},
                              Rect{9000, 0, 600, 480}, Rect{-5000, 9000, 10, 4000}}) {
      a.bounds(place);
      EXPECT_EQ(checkInvariants(*control), "");
    }
  }
}

TEST_F(LinkTest, aBendBesideItsBoxMakesARightAngle) {
  Link& l = line("l", "a", "b");
  l.bends({{a.bounds().left + 50, 5000}, {b.bounds().right() - 50, 5000}});
  EXPECT_EQ(l.points().front(), (Point{a.bounds().left + 50, a.bounds().bottom()}));
  EXPECT_EQ(l.points().back(), (Point{b.bounds().right() - 50, b.bounds().bottom()}));
}

TEST_F(LinkTest, parallelLinesStandApartUntilTheyAreAlone) {
  Link& first = line("l", "a", "b");
  const auto alone = first.points();
  Link& second = line("m", "b", "a");
  Link& third = line("n", "a", "b");
  const std::vector<const Link*> all = {&first, &second, &third};
  for (const Link* one : all) {
    for (const Link* other : all) {
      if (one == other) continue;
      EXPECT_GT(std::abs(middleOf(one->points()).y - middleOf(other->points()).y), 60)
          << one->key() << ' ' << other->key();
    }
  }
  second.bends({{4500, 6000}});
  control->deleteLink("n");
  EXPECT_EQ(first.points(), alone) << "a bent line needs no room beside the straight one";
}

TEST_F(LinkTest, linksToTheOwnBoxGoRoundACornerAndDoNotCoincide) {
  Link& first = line("l", "a", "a");
  Link& second = line("m", "a", "a");
  first.text("a text longer than its loop");
  second.text("another one");
  EXPECT_FALSE(first.labelArea().intersects(second.labelArea()));
  for (const Link* loop : {&first, &second}) {
    ASSERT_GE(loop->points().size(), 4U);
    for (int i = 0; i <= 100; ++i) {
      EXPECT_FALSE(loop->labelArea().contains(placeOn(loop->points(), i / 100.0))) << "seen whole";
    }
    for (std::size_t i = 1; i + 1 < loop->points().size(); ++i) {
      EXPECT_FALSE(a.bounds().contains(loop->points()[i]));
    }
  }
  EXPECT_NE(first.points()[1], second.points()[1]);
  first.bends({{3000, -2000}, {4000, -1000}});
  a.bounds(a.bounds().movedBy({700, 70}));
  EXPECT_EQ(first.bends().front(), (Point{3700, -1930})) << "a loop moves with its box";
}

TEST_F(LinkTest, reattachedEndsCountWithTheirNewPair) {
  Node& c = box("c", "C", 0, 6000);
  Link& first = line("l", "a", "b");
  Link& second = line("m", "a", "b");
  second.reattachTarget(c);
  EXPECT_EQ(&second.targetNode(), &c);
  EXPECT_EQ(first.points()[0].y, a.bounds().center().y) << "alone again";
  second.reattachTarget(a);
  EXPECT_TRUE(second.isLoop());
  EXPECT_EQ(a.attached().size(), 3U);
  EXPECT_EQ(control->getIncomingLinks("a")->Count(), 1);
  EXPECT_EQ(control->getOutgoingLinks("a")->Count(), 2);
  DiagramBuilder other;
  EXPECT_THROW(second.reattachSource(other.box("x", "X", 0, 0)), Error);
}

TEST_F(LinkTest, endTextsStandClearOfBoxAndLine) {
  Link& l = line("l", "a", "b", "label");
  l.beginText("0..*\nparent");
  l.endText("children");
  for (const Point place : {Point{9000, 0}, {9000, 5000}, {0, 5000}, {100, -7000}, {-9000, 300}}) {
    b.bounds({place.x, place.y, 1500, 900});
    for (const auto& [text, own] :
         {std::pair{l.beginTextArea(), a.bounds()}, {l.endTextArea(), b.bounds()}}) {
      EXPECT_FALSE(text.intersects(own)) << place.x << ' ' << place.y;
      EXPECT_TRUE(l.extent().grownBy(0.001).contains(text));
    }
    for (const Rect& text : {l.beginTextArea(), l.endTextArea()}) {
      for (int i = 0; i <= 100; ++i) {
        const Point on = l.points()[0] + (l.points()[1] - l.points()[0]) * (i / 100.0);
        EXPECT_FALSE(text.grownBy(-1).contains(on)) << place.x << ' ' << place.y << " at " << i;
      }
    }
  }
}

TEST_F(LinkTest, textsOfNeighbouringLinesStandApart) {
  a.bounds({0, 0, 3000, 900});
  b.bounds({0, 5000, 3000, 900});
  std::vector<Link*> links;
  for (const double x : {1200.0, 1800.0}) {
    Link& link = line("l" + std::to_string(links.size()), "a", "b", "is related to");
    link.bends({{x, 1800}, {x, 4000}});
    link.beginText("beginning 1");
    link.endText("end 0..*");
    links.push_back(&link);
  }
  EXPECT_FALSE(links[0]->labelArea().intersects(links[1]->labelArea()));
  EXPECT_FALSE(links[0]->beginTextArea().intersects(links[1]->beginTextArea()));
  EXPECT_FALSE(links[0]->endTextArea().intersects(links[1]->endTextArea()));
  links[1]->reattachSource(b);
  links[1]->reattachTarget(a);
  links[1]->bends({{1800, 4000}, {1800, 1800}});
  EXPECT_FALSE(links[0]->labelArea().intersects(links[1]->labelArea())) << "whatever their way";
}

}  // namespace
}  // namespace brisel::canvas
