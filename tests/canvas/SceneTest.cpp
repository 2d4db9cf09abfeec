#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "canvas/Scene.h"
#include "platform/Error.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using platform::Error;
using platform::Point;
using platform::Rect;
using platform::Ref;
using platform::Size;
using test::checkInvariants;
using test::DiagramBuilder;

class SceneTest : public testing::Test, protected DiagramBuilder {
 protected:
  ~SceneTest() override { EXPECT_EQ(checkInvariants(*control), ""); }

  /// The keys of what lies in the area, in the order of painting.
  std::string itemsIn(const Rect& area) const {
    std::vector<const Node*> nodes;
    std::vector<const Link*> links;
    control->scene().itemsIn(area, nodes, links);
    std::string keys;
    for (const Node* node : nodes) keys += node->key() + ' ';
    for (const Link* link : links) keys += link->key() + ' ';
    return keys;
  }
};

TEST_F(SceneTest, aFittedBoxHoldsItsTextAndFollowsIt) {
  Node& node = box("a", "<<COM::Enum>>\r\nColour", 100, 200, {"+red=1", "+darkgreen=2"});
  const auto font = control->scene().textFont();
  const auto roomOfTitle = [&] { return node.bounds().width - 2 * kPadding; };
  EXPECT_GE(roomOfTitle(), 13 * control->scene().titleFont().columnWidth());
  const auto bottomOfRows = [&](std::size_t section) {
    return node.firstRow(section) +
           static_cast<double>(node.section(section).rows().size()) * node.rowHeight();
  };
  EXPECT_LE(bottomOfRows(0) + kSectionPadding, node.bounds().bottom());
  EXPECT_EQ(node.bounds().topLeft(), (Point{100, 200})) << "fitting keeps the upper left corner";

  const Size small = node.bounds().size();
  node.Section(0)->addRow("+" + std::string(60, 'w'), "STRING", "");
  EXPECT_GE(node.bounds().width, 61 * font.columnWidth() + 2 * kPadding);
  EXPECT_GE(node.bounds().height, small.height + font.lineHeight() - 1);
  node.Section(0)->visible(false);
  EXPECT_LT(node.bounds().height, small.height) << "a hidden section takes no room";
  node.Section(0)->visible(true);
  node.Section(1)->visible(true);
  EXPECT_GT(node.sectionArea(1).height, 0) << "an empty compartment is seen";

  node.fitToText(false);
  const Rect kept = node.bounds();
  node.text(std::string(80, 'W'));
  node.Section(0)->addRow("more", "STRING", "");
  EXPECT_EQ(node.bounds(), kept) << "without fitting the size is a person's own";
  node.fitToText(true);
  node.width(300);
  EXPECT_EQ(node.bounds().width, 300) << "setting a size ends the fitting";
  node.Section(0)->addRow("more", "STRING", "");
  EXPECT_EQ(node.bounds().width, 300);
}

TEST_F(SceneTest, fontsChangeWhatFits) {
  Node& node = box("a", "Alpha", 0, 0, {"+attribute:integer"});
  const double before = node.bounds().width;
  control->SectionFont("Courier New", 20);
  EXPECT_GT(node.bounds().width, 1.8 * before - 2 * kPadding);
  for (const double size : {0.0, -1.0, 1e-300, 1e9, std::nan("")}) {
    EXPECT_THROW(control->LabelFont("Courier New", size), Error) << size;
  }
}

TEST_F(SceneTest, isFoundWhereItLiesAfterMovesOfEverySize) {
  Node& a = box("a", "A", 0, 0);
  box("b", "B", 6000, 0);
  Link& l = line("l", "a", "b");
  for (const double far : {0.0, 2047.0, 2049.0, -70000.0, 1e7, -2e9, 100.0}) {
    a.bounds({far, -far, 700, 500});
    EXPECT_NE(itemsIn({far + 1, -far + 1, 5, 5}).find("a "), std::string::npos) << far;
    const Point on = middleOf(l.points());
    EXPECT_NE(itemsIn({on.x - 2, on.y - 2, 4, 4}).find("l "), std::string::npos) << far;
    EXPECT_EQ(checkInvariants(*control), "");
  }
  a.bounds({100, 0, 1e9, 1e9});
  EXPECT_EQ(itemsIn({9e8, 9e8, 1, 1}), "a ");
  EXPECT_EQ(itemsIn({-1e300, -1e300, 2e300, 2e300}), "a b l ");
  EXPECT_EQ(itemsIn({std::nan(""), 0, 1, 1}), "");
}

TEST_F(SceneTest, aLongLineIsFoundOnItsWayOnly) {
  box("a", "A", 0, 0);
  Node& b = box("b", "B", 90000, 60000);
  Link& l = line("l", "a", "b", "label");
  l.endText("0..*");
  l.endArrow(13);
  const auto isFound = [&](Point at) { return itemsIn({at.x, at.y, 1, 1}) == "l "; };
  EXPECT_TRUE(isFound(placeOn(l.points(), 0.3)));
  EXPECT_TRUE(isFound(l.endTextArea().center()));
  EXPECT_FALSE(isFound({80000, 5000}));
  EXPECT_EQ(itemsIn(l.extent().grownBy(9)), "a b l ") << "once, however many parts are touched";
  l.bends({{80000, 5000}});
  EXPECT_TRUE(isFound({80000, 5000}));
  EXPECT_FALSE(isFound({40000, 30000})) << "where it ran before";
  b.bounds({4000, 0, 700, 500});
  l.bends({});
  EXPECT_EQ(itemsIn({60000, 0, 60000, 60000}), "") << "short again";
}

TEST_F(SceneTest, geometryRevisionCountsWhatIsStoredOfAPicture) {
  Node& a = box("a", "A", 0, 0);
  box("b", "B", 6000, 0);
  Link& l = line("l", "a", "b");
  Scene& scene = control->scene();
  const auto changes = [&](const auto& action) {
    const auto before = scene.geometryRevision();
    action();
    return scene.geometryRevision() != before;
  };
  EXPECT_TRUE(changes([&] { a.left(100); }));
  EXPECT_TRUE(changes([&] { l.bends({{3000, 3000}}); }));
  EXPECT_TRUE(changes([&] { control->createNode("c", "C", 0, 0, 0, 0, 2); }));
  EXPECT_TRUE(changes([&] { control->createLink("m", "", "a", "c"); }));
  EXPECT_TRUE(changes([&] { control->deleteLink("m"); }));
  EXPECT_TRUE(changes([&] { control->deleteNode("c"); }));
  EXPECT_FALSE(changes([&] { a.left(100); }));
  EXPECT_FALSE(changes([&] { l.bends({{3000, 3000}}); }));
  EXPECT_FALSE(changes([&] {
    a.selected(true);
    a.fillColor(0);
    l.endText("1");
    control->zoom(50);
    control->refresh();
  }));
  EXPECT_TRUE(changes([&] { control->Clear(); }));
}

TEST_F(SceneTest, tellsTheOldAndTheNewPlaceOnceAnUpdate) {
  Node& a = box("a", "A", 0, 0);
  box("b", "B", 30000, 0);
  const Link& l = line("l", "a", "b");
  std::vector<Rect> told;
  int times = 0;
  const auto listening = control->scene().Damaged.connect([&](const std::vector<Rect>& areas) {
    told = areas;
    ++times;
  });
  const Rect before = a.bounds();
  control->beginUpdate();
  control->beginUpdate();
  a.bounds(before.movedBy({0, 5000}));
  a.text("AA");
  control->endUpdate();
  EXPECT_EQ(times, 0);
  control->endUpdate();
  control->endUpdate();
  EXPECT_EQ(times, 1);
  const auto tells = [&](const Rect& place) {
    return std::any_of(told.begin(), told.end(),
                       [&](const Rect& area) { return area.contains(place); });
  };
  EXPECT_TRUE(tells(before));
  EXPECT_TRUE(tells(a.bounds()));
  for (const double share : {0.0, 0.2, 0.5, 0.9, 1.0}) {
    const Point on = placeOn(l.points(), share);
    EXPECT_TRUE(tells(Rect{on.x, on.y, 0, 0}.grownBy(platform::kTwipsPerPixel / 2))) << share;
  }
  const auto revision = control->scene().revision();
  a.bounds(a.bounds());
  a.selected(false);
  EXPECT_EQ(control->scene().revision(), revision) << "nothing changed, a kept picture is good";
}

TEST_F(SceneTest, refusesGeometryOutOfReachAndKeepsWhatItHad) {
  Node& a = box("a", "A", 0, 0);
  box("b", "B", 9000, 0);
  Link& l = line("l", "a", "b");
  const std::string before = test::describe(*control);
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const double wrong : {std::nan(""), kInfinite, -kInfinite, 1e300, -3e9}) {
    EXPECT_THROW(a.left(wrong), Error) << wrong;
    EXPECT_THROW(l.ExtraPoints()->Add(0, wrong), Error) << wrong;
    EXPECT_THROW(control->createNode("n", "", 0, wrong, 100, 100, 2), Error) << wrong;
    EXPECT_THROW(control->SetNewNodeSize(wrong, 100), Error) << wrong;
  }
  EXPECT_THROW(a.width(kInfinite), Error);
  EXPECT_EQ(test::describe(*control), before);
  a.width(-5);
  EXPECT_EQ(a.bounds().width, 0) << "a negative size is none";
  ASSERT_TRUE(control->createNode("n", "", 0, 0, -1, 0, 2));
  EXPECT_FALSE(control->scene().node("n")->bounds().isEmpty()) << "takes the size of new nodes";
}

TEST_F(SceneTest, itemsThatLeftStillAnswer) {
  const Ref<Node> a(&box("a", "Alpha", 0, 0, {"+row"}));
  box("b", "B", 9000, 0);
  const Ref<Link> l(&line("l", "a", "b", "label"));
  l->setItem("__Association", a.get());
  const auto points = l->points();
  const auto section = a->Section(0);
  ASSERT_TRUE(control->deleteNode("a"));
  EXPECT_EQ(control->getLink("l"), nullptr);
  a->text("Changed");
  a->selected(true);
  a->bounds({5, 5, 900, 900});
  section->addRow("late", "STRING", "");
  EXPECT_FALSE(a->selected());
  EXPECT_EQ(section->Rows()->Count(), 2);
  EXPECT_EQ(l->points().size(), points.size());
  EXPECT_FALSE(l->getItem("__Association")) << "what it stored was let go of";
  l->text("still");
  EXPECT_THROW(l->reattachTarget(box("c", "C", 0, 0)), Error) << "of another canvas by now";
  EXPECT_FALSE(control->deleteNode(platform::Value(a))) << "gone already";
}

}  // namespace
}  // namespace brisel::canvas
