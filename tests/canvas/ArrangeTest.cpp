#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "canvas/Arrange.h"
#include "layout/FreePlaces.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Rect;

/// Asks somebody in the midst of a layout.
class AskingShell : public platform::Shell {
 public:
  std::string showMessage(const platform::Message& message) override {
    return message.buttons.front();
  }
  std::optional<std::string> askOpenFile(const platform::FileDialog&) override { return {}; }
  std::optional<std::string> askSaveFile(const platform::FileDialog&) override { return {}; }
  void showPopup(platform::ToolBarControl&, std::string_view) override {}
  void runForm(std::string_view, platform::Object&) override {}
  void copy(const std::vector<std::pair<std::string, std::string>>&) override {}
  bool showProgress(std::string_view, double share) override {
    EXPECT_GE(share, least) << "it only grows";
    EXPECT_LE(share, 1);
    least = share;
    isShown = true;
    return answer();
  }
  void hideProgress() override { isShown = false; }

  std::function<bool()> answer = [] { return true; };
  double least = 0;
  bool isShown = false;
};

class ArrangeTest : public testing::Test, protected test::DiagramBuilder {
 protected:
  ArrangeTest() {
    registry.shell(shell);
    for (int i = 0; i < 24; ++i) {
      const std::string key = "n" + std::to_string(i);
      box(key, "Class" + key, 4000.0 * (i % 6), 3000.0 * (i / 6), {"+name:string"});
      if (i == 0) continue;
      Link& link = line("l" + std::to_string(i), key, "n" + std::to_string((i - 1) / 3));
      link.endArrow(static_cast<int>(platform::Arrow::triangle));
    }
    line("x", "n3", "n20", "uses");
    line("loop", "n5", "n5", "knows");
  }
  ~ArrangeTest() override { EXPECT_EQ(test::checkInvariants(*control), ""); }

  std::map<std::string, Rect> places() const {
    std::map<std::string, Rect> all;
    for (const Node& node : control->scene().nodes()) all.emplace(node.key(), node.bounds());
    return all;
  }
  int overlaps() const {
    int pairs = 0;
    for (const auto& [key, one] : places()) {
      for (const auto& [otherKey, other] : places())
        pairs += key < otherKey && one.intersects(other);
    }
    return pairs;
  }

  platform::Ref<AskingShell> shell = platform::make<AskingShell>();
};

constexpr const char* kCodes[] = {"%HIERARCHY%", "MATRIX", "RANDOM", "SPRING"};

TEST_F(ArrangeTest, theSelectionAloneIsLaidOutWhenItIsSome) {
  for (const char* code : kCodes) {
    SCOPED_TRACE(code);
    control->unselectAll();
    control->Layout("MATRIX");
    for (const char* key : {"n1", "n4", "n5", "n6"}) control->selNode(std::string(key));
    control->viewport().scrollTo({300, 300});
    const auto before = places();
    std::vector<std::string> told;
    const auto connection =
        control->NodeMoved.connect([&](const std::string& key) { told.push_back(key); });
    control->Layout(code);
    EXPECT_EQ(overlaps(), 0);
    for (const auto& [key, box] : places()) {
      EXPECT_TRUE(control->scene().node(key)->selected() || box == before.at(key)) << key;
      EXPECT_EQ(std::count(told.begin(), told.end(), key), box != before.at(key) ? 1 : 0) << key;
    }
    EXPECT_EQ(control->viewport().scroll(), (Point{300, 300})) << "the view stays with it";
  }
  control->unselectAll();
  control->selNode(std::string("n7"));
  const auto before = places();
  control->Layout("%HIERARCHY%");
  int moved = 0;
  for (const auto& [key, box] : places()) moved += box != before.at(key);
  EXPECT_GT(moved, 12) << "one alone is no selection to lay out";
}

TEST_F(ArrangeTest, whatIsCancelledStaysAsItWas) {
  control->patience(std::chrono::milliseconds(0));
  std::string hint;
  const auto hinted = control->Hint.connect([&](const std::string& text) { hint = text; });
  for (const char* code : {"%HIERARCHY%", "SPRING"}) {
    SCOPED_TRACE(code);
    control->Layout("RANDOM");
    control->scene().link("x")->bends({{100, 100}});
    const auto before = test::describe(*control);
    for (int stopAt = 1; stopAt < 100; ++stopAt) {
      int asked = 0;
      shell->least = 0;
      shell->answer = [&] { return ++asked < stopAt; };
      control->Layout(code);
      EXPECT_FALSE(shell->isShown);
      if (asked < stopAt) break;
      ASSERT_EQ(test::describe(*control), before) << "stopped at the question " << stopAt;
      ASSERT_NE(hint.find("cancelled"), std::string::npos);
    }
    EXPECT_EQ(hint, "Laid out the diagram");
    EXPECT_NE(test::describe(*control), before) << "and at last not stopped";
  }
}

TEST_F(ArrangeTest, whatChangedMeanwhileIsNotOverrun) {
  control->patience(std::chrono::milliseconds(0));
  shell->answer = [&] {
    control->deleteNode(std::string("n9"));
    control->scene().node("n8")->left(77777);
    return true;
  };
  const auto before = places();
  control->Layout("%HIERARCHY%");
  EXPECT_EQ(control->scene().node("n8")->left(), 77777);
  EXPECT_EQ(control->scene().node("n7")->bounds(), before.at("n7"));
}

TEST_F(ArrangeTest, subClassesMeetTheirSuperClassAtOnePoint) {
  control->Layout("%HIERARCHY%");
  for (const Link& link : control->scene().links()) {
    if (link.endArrow() == 0) continue;
    const Link& first = *control->scene().link(
        "l" + std::to_string(3 * std::stoi(link.targetNode().key().substr(1)) + 1));
    const Point apart = link.points().back() - first.points().back();
    EXPECT_LT(std::abs(apart.x) + std::abs(apart.y), platform::kTwipsPerPixel) << link.key();
  }
}

}  // namespace
}  // namespace brisel::canvas
