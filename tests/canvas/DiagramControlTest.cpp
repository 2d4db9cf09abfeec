#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "component/AutomaticShell.h"
#include "platform/Error.h"
#include "platform/MemberTable.h"
#include "platform/ValueRecord.h"
#include "support/CanvasChecks.h"
#include "support/DiagramBuilder.h"

namespace brisel::canvas {
namespace {

using platform::Collection;
using platform::Error;
using platform::make;
using platform::Member;
using platform::Object;
using platform::Rect;
using platform::Ref;
using platform::Value;
using test::checkInvariants;
using test::DiagramBuilder;

class DiagramControlTest : public testing::Test, protected DiagramBuilder {
 protected:
  ~DiagramControlTest() override { EXPECT_EQ(checkInvariants(*control), ""); }

  /// Three classes of which b and c are sub classes of a.
  void family() {
    box("a", "A", 0, 0, {"+x:int", "+y:int"});
    box("b", "B", 50, 60, {}, {"+f()"});
    box("c", "C", 90, 20);
    line("ba", "b", "a").endArrow(8);
    line("ca", "c", "a").endArrow(8);
    line("bc", "b", "c", "knows");
  }
};

TEST_F(DiagramControlTest, answersToEveryNameThatHostsUse) {
  enum Kind { call, truth, number, object, collection };
  struct Case {
    const char* name;
    std::vector<Value> arguments;
    Kind kind = call;
  };
  family();
  const Value node(control->getNode("a"));
  const Value link(control->getLink("ba"));
  const Case cases[] = {
      {"ShowToolbar", {true}},
      {"AddImage", {"name", "file.bmp"}},
      {"AddButton", {"k", "", "tip", "k.bmp", true}},
      {"AddStandardButtons", {}},
      {"createNode", {"n", "N", 0, 0, 900, 900, 2}, truth},
      {"createLink", {"l", "L", "a", "n"}, truth},
      {"markNode", {node}, truth},
      {"markLink", {"ba"}, truth},
      {"unmarkAll", {}, truth},
      {"selNode", {"a"}, truth},
      {"selLink", {link}, truth},
      {"getSelectedNodes", {}, collection},
      {"getSelectedLinks", {}, collection},
      {"unselectAll", {}, truth},
      {"TransformExtent", {100}, number},
      {"getNode", {"a"}, object},
      {"getLink", {"ba"}, object},
      {"getAllLinks", {}, collection},
      {"getAllNodes", {}, collection},
      {"getIncomingLinks", {node}, collection},
      {"getOutgoingLinks", {"b"}, collection},
      {"getZoom", {}, number},
      {"zoom", {50}},
      {"noZoom", {}},
      {"DrawCreateMode", {}},
      {"ClickCreateMode", {}},
      {"SelectMode", {}},
      {"GetDiagram", {}, object},
      {"GetDiagramHandle", {}, number},
      {"refresh", {}},
      {"Layout", {"MATRIX"}},
      {"SetNewNodeSize", {3000, 1500}},
      {"LabelFont", {"Courier New", 15}},
      {"SectionFont", {"Courier New", 10}},
      {"PrintDiagram", {true}},
      {"GetCenter", {node}, object},
      {"GetHitNode", {control->GetCenter(node)}, object},
      {"deleteLink", {link}, truth},
      {"deleteNode", {node}, truth},
      {"Clear", {}},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.name);
    const Member* member = control->memberTable().find(one.name, Member::Kind::method);
    ASSERT_NE(member, nullptr);
    EXPECT_EQ(member->arguments, one.arguments.size());
    const Value result = control->call(one.name, one.arguments);
    switch (one.kind) {
      case call:
        EXPECT_TRUE(result.isEmpty());
        break;
      case truth:
        EXPECT_EQ(result, Value(true));
        break;
      case number:
        EXPECT_TRUE(result.isInteger() || result.isDouble());
        break;
      case object:
        EXPECT_TRUE(result.isObject());
        break;
      case collection:
        EXPECT_NE(platform::as<Collection>(result.object()), nullptr);
        break;
    }
  }
  for (const char* name :
       {"deleteSelectedItems", "deleteMarkedItems", "unmarkAll", "unselectAll"}) {
    EXPECT_EQ(control->call(name), Value(false)) << name << " with nothing there";
  }
}

TEST_F(DiagramControlTest, keepsWhatHostsSetByName) {
  const std::pair<const char*, Value> cases[] = {
      {"nodePicture", "TEXT"}, {"linkPicture", "p"},         {"linkBeginPicture", ""},
      {"linkEndPicture", "q"}, {"linkBeginArrow", 13},       {"linkEndArrow", 3},
      {"linkNodeCX", 1200},    {"linkNodeCY", 900},          {"BackColor", 0x00FF00},
      {"ShowGrid", true},      {"nodeNumberOfSections", "4"}};
  for (const auto& [name, value] : cases) {
    control->set(name, value);
    EXPECT_EQ(control->get(name), value) << name;
  }
  control->createNode("a", "A", 0, 0, 900, 900, 2);
  EXPECT_EQ(control->scene().node("a")->sectionCount(), 4U);
  EXPECT_EQ(line("l", "a", "a").endArrow(), 3) << "new links are decorated so";
  for (const char* wrong : {"-1", "17", "two", "2x", "", "99999999999999999999"}) {
    EXPECT_THROW(control->set("nodeNumberOfSections", wrong), Error) << wrong;
  }
  EXPECT_EQ(control->get("nodeNumberOfSections"), Value("4"));
  control->GetDiagram()->set("CanDrawLink", false);
  EXPECT_EQ(control->GetDiagram()->get("CanDrawLink"), Value(false));
}

TEST_F(DiagramControlTest, itemsAnswerByName) {
  family();
  const Ref<Object> node = control->call("getNode", {"a"}).object();
  const std::pair<const char*, Value> settings[] = {
      {"text", "Alpha"},  {"left", 120.0},    {"top", -30.0},    {"width", 4000.0},
      {"height", 2500.0}, {"fillColor", 255}, {"selected", true}};
  for (const auto& [name, value] : settings) {
    node->set(name, value);
    EXPECT_EQ(node->get(name), value) << name;
  }
  EXPECT_EQ(node->get("key"), Value("a"));
  EXPECT_EQ(node->get("style"), Value(Node::kClassBox));
  const Ref<Object> section = node->call("Section", {0}).object();
  section->call("addRow", {"+z:int", "STRING", "id-z"});
  const Ref<Object> row = section->get("Rows").object()->call("Item", {3}).object();
  EXPECT_EQ(row->get("text"), Value("+z:int"));
  EXPECT_EQ(row->get("kind"), Value("STRING"));
  EXPECT_EQ(row->get("tag"), Value("id-z"));
  section->set("visible", false);
  EXPECT_EQ(section->get("visible"), Value(false));
  EXPECT_THROW(node->call("Section", {2}), Error);
  node->call("fitToText", {true});
  EXPECT_NE(node->get("width"), Value(4000.0));

  const Ref<Object> link = control->call("getLink", {"bc"}).object();
  EXPECT_EQ(link->get("link"), Value(link)) << "one step more leads to the same";
  EXPECT_EQ(link->get("text"), Value("knows"));
  EXPECT_EQ(link->get("source"), Value(control->getNode("b")));
  EXPECT_EQ(link->get("target"), Value(control->getNode("c")));
  const Ref<Object> points = link->get("link").object()->get("ExtraPoints").object();
  points->call("Add", {5000, 6000.5});
  EXPECT_EQ(points->call("Item", {2}).object()->get("y"), Value(6000.5));
  EXPECT_EQ(points->get("Count"), Value(3));
  link->call("setItem", {"__Association", node});
  EXPECT_EQ(link->call("getItem", {"__Association"}), Value(node));
  EXPECT_EQ(link->call("getItem", {"__Class"}), Value());
}

TEST_F(DiagramControlTest, keysAreUniqueAndMadeWhenNoneIsGiven) {
  family();
  EXPECT_FALSE(control->createNode("a", "again", 0, 0, 100, 100, 2));
  EXPECT_FALSE(control->createLink("ba", "", "a", "b")) << "in use";
  EXPECT_FALSE(control->createLink("x", "", "a", "missing"));
  EXPECT_FALSE(control->createNode("", "no key and nobody to make one", 0, 0, 100, 100, 2));
  EXPECT_FALSE(control->deleteNode("missing"));
  EXPECT_FALSE(control->deleteNode(Value(7)));
  EXPECT_EQ(control->getNode("missing"), nullptr);
  EXPECT_TRUE(control->createNode("ba", "a link's key is free for a node", 0, 0, 100, 100, 2));
}

TEST_F(DiagramControlTest, aNodeTakesItsLinksAlongAndTellsOfEach) {
  family();
  line("loop", "a", "a");
  std::string told;
  std::vector<platform::Connection> listening;
  listening.push_back(control->LinkDeleted.connect([&](const std::string& key) {
    EXPECT_EQ(control->getNode("a"), nullptr) << "all are gone before the first is told of";
    told += key + ' ';
  }));
  listening.push_back(
      control->NodeDeleted.connect([&](const std::string& key) { told += key + ' '; }));
  control->selNode("a");
  control->markLink("bc");
  EXPECT_TRUE(control->deleteSelectedItems());
  EXPECT_TRUE(control->deleteMarkedItems());
  EXPECT_EQ(told, "ba ca loop a bc ");
}

TEST_F(DiagramControlTest, handlersMayTakeAwayWhatIsBeingMade) {
  family();
  std::vector<platform::Connection> listening;
  listening.push_back(
      control->NodeCreated.connect([&](const std::string& key) { control->deleteNode(key); }));
  listening.push_back(control->LinkCreated.connect([&](const std::string&) { control->Clear(); }));
  EXPECT_FALSE(control->createNode("n", "", 0, 0, 100, 100, 2));
  EXPECT_FALSE(control->createLink("l", "", "a", "b"));
  EXPECT_EQ(control->getAllNodes()->Count(), 0);
  listening.clear();

  family();
  listening.push_back(control->LinkDeleted.connect([&](const std::string&) {
    if (control->getNode("c")) control->deleteNode("c");
  }));
  listening.push_back(control->NodeMoved.connect([&](const std::string&) { control->Clear(); }));
  EXPECT_TRUE(control->deleteNode("b"));
  EXPECT_EQ(control->getAllNodes()->Count(), 1);
  control->Layout("RANDOM");
  EXPECT_EQ(control->getAllNodes()->Count(), 0);
}

TEST_F(DiagramControlTest, layoutsKeepBoxesApartOnWholeTwips) {
  for (const char* code : {"%HIERARCHY%", "MATRIX", "RANDOM", "SPRING"}) {
    SCOPED_TRACE(code);
    control->Clear();
    for (int i = 0; i < 25; ++i)
      box("n" + std::to_string(i), "Class" + std::to_string(i), 7.3, 7.3);
    for (int i = 1; i < 25; ++i) {
      line("l" + std::to_string(i), "n" + std::to_string(i), "n" + std::to_string(i / 3))
          .endArrow(8);
    }
    line("loop", "n3", "n3");
    std::size_t moved = 0;
    const auto listening = control->NodeMoved.connect([&](const std::string&) { ++moved; });
    control->Layout(code);
    EXPECT_EQ(moved, 25U);
    for (Node& one : control->scene().nodes()) {
      EXPECT_EQ(one.left(), std::floor(one.left()));
      EXPECT_EQ(one.top(), std::floor(one.top()));
      EXPECT_TRUE(one.left() >= 0 && one.top() >= 0);
      EXPECT_TRUE(one.fitsText()) << "a layout moves, it does not size";
      for (Node& other : control->scene().nodes()) {
        EXPECT_TRUE(&one == &other || !one.bounds().intersects(other.bounds()));
      }
    }
  }
  control->Layout("%HIERARCHY%");
  const std::string before = test::describe(*control);
  EXPECT_THROW(control->Layout("SPIRAL"), Error);
  EXPECT_EQ(test::describe(*control), before);
}

TEST_F(DiagramControlTest, hierarchicalLinesRunAroundBoxes) {
  // A line from the first row to the third, past boxes of the second that are wider.
  const std::vector<std::string> wide = {"+category:BookCategoryOfTheLibrary"};
  box("library", "Library", 0, 0);
  box("writer", "Writer", 0, 0);
  box("book", "Book", 0, 0, wide);
  box("copy", "Copy", 0, 0, wide);
  const char* lines[][2] = {{"library", "writer"}, {"library", "book"}, {"book", "writer"},
                            {"library", "copy"},   {"copy", "writer"},  {"library", "writer"}};
  for (const auto& [from, to] : lines)
    line(from + std::string(to) + std::to_string(control->getAllLinks()->Count()), from, to);
  control->Layout("%HIERARCHY%");
  for (Link& link : control->scene().links()) {
    for (std::size_t i = 1; i < link.points().size(); ++i) {
      for (int k = 0; k <= 200; ++k) {
        const auto on =
            link.points()[i - 1] + (link.points()[i] - link.points()[i - 1]) * (k / 200.0);
        for (Node& node : control->scene().nodes()) {
          ASSERT_FALSE(node.bounds().grownBy(-1).contains(on))
              << link.key() << " in " << node.key();
        }
      }
    }
  }
}

TEST_F(DiagramControlTest, layoutsCopeWithBoxesOfAnySize) {
  for (const char* code : {"%HIERARCHY%", "MATRIX", "RANDOM", "SPRING"}) {
    SCOPED_TRACE(code);
    control->Clear();
    for (int i = 0; i < 4; ++i) {
      control->createNode("n" + std::to_string(i), "", -2e9, 2e9, 2e9, 2e9, 2);
      control->createNode("m" + std::to_string(i), "", 2e9, 0, 1, 1, 2);
      control->scene().node("m" + std::to_string(i))->bounds({0, 0, 0, 0});
      control->createLink("l" + std::to_string(i), "", "n" + std::to_string(i), "m0");
    }
    control->Layout(code);
    EXPECT_EQ(checkInvariants(*control), "");
  }
}

TEST_F(DiagramControlTest, alignsTheSelectedBoxesOnly) {
  struct Case {
    const char* code;
    double (*side)(const Rect&);
    double want;
  };
  const Case cases[] = {{"TADJST", [](const Rect& r) { return r.top; }, 100},
                        {"BADJST", [](const Rect& r) { return r.bottom(); }, 6000},
                        {"LADJST", [](const Rect& r) { return r.left; }, 200},
                        {"RADJST", [](const Rect& r) { return r.right(); }, 9500}};
  for (const auto& [code, side, want] : cases) {
    SCOPED_TRACE(code);
    control->Clear();
    box("a", "A", 0, 0).bounds({200, 100, 1000, 800});
    box("b", "B", 0, 0).bounds({8000, 3000, 1500, 3000});
    box("c", "C", 0, 0).bounds({-500, -500, 700, 700});
    control->selNode("a");
    control->Layout(code);
    EXPECT_EQ(control->scene().node("a")->left(), 200) << "one alone stays";
    control->selNode("b");
    control->Layout(code);
    EXPECT_EQ(side(control->scene().node("a")->bounds()), want);
    EXPECT_EQ(side(control->scene().node("b")->bounds()), want);
    EXPECT_EQ(control->scene().node("c")->bounds(), (Rect{-500, -500, 700, 700}));
  }
}

TEST_F(DiagramControlTest, aButtonTellsTheHostFirstAndThenDoesItsOwn) {
  family();
  control->AddStandardButtons();
  control->AddButton("Mine", "", "", "", true);
  control->AddButton("Off", "", "", "", false);
  std::string told;
  const auto listening = control->ToolbarButton.connect([&](const std::string& key) {
    told += key + '@' + std::to_string(static_cast<int>(control->getZoom())) + ' ';
  });
  for (const char* key : {"ZoomOut", "ZoomNo", "ZoomIn", "Mine", "Off", "", "unknown"}) {
    control->ClickButton(key);
  }
  EXPECT_EQ(told, "ZoomOut@100 ZoomNo@80 ZoomIn@100 Mine@125 ");
  control->ClickButton("ZoomFull");
  EXPECT_TRUE(control->viewport().visible().contains(control->scene().extent()));
  control->PressButton("Mine");
  control->PressButton("unknown");
  std::string keys;
  std::string pressed;
  for (Object& button : platform::each<Object>(control->Buttons())) {
    keys += button.get("key").text() + ' ';
    if (button.get("pressed").isTrue()) pressed += button.get("key").text();
  }
  EXPECT_EQ(keys.substr(0, 15), "Select  ZoomIn ") << "a separator has an empty key";
  EXPECT_EQ(pressed, "Mine");
}

TEST_F(DiagramControlTest, copiesThePictureWithoutAView) {
  const auto shell = make<component::AutomaticShell>();
  registry.shell(shell);
  family();
  control->AddStandardButtons();
  control->ClickButton("Copy");
  const auto clipboard = platform::as<platform::ValueRecord>(shell->call("Clipboard").object());
  EXPECT_NE(clipboard->get("image/svg+xml").text().find("+x:int"), std::string::npos);
}

TEST_F(DiagramControlTest, zoomAndScrollStayWithinTheirRange) {
  family();
  std::vector<std::string> told;
  std::vector<platform::Connection> listening;
  listening.push_back(control->Zoomed.connect(
      [&](int x, int y) { told.push_back("z" + std::to_string(x) + ',' + std::to_string(y)); }));
  control->zoom(50);
  EXPECT_EQ(control->TransformExtent(10), 300);
  EXPECT_EQ(told, std::vector<std::string>{"z50,50"});
  constexpr double kInfinite = std::numeric_limits<double>::infinity();
  for (const double percent : {0.0, -100.0, 1e300, kInfinite, -kInfinite, std::nan("")}) {
    control->zoom(percent);
    EXPECT_TRUE(control->getZoom() >= 1 && control->getZoom() <= 1000) << percent;
  }
  for (const double wild : {1e300, -1e300, kInfinite}) {
    control->Wheel(wild, wild, wild, "");
    control->Wheel(wild, -wild, 1, "ctrl");
    control->PointerMove(wild, wild);
    EXPECT_EQ(control->HitTest(wild, wild), nullptr);
    EXPECT_TRUE(std::isfinite(control->viewport().scroll().x));
  }
  EXPECT_THROW(control->PointerPress(std::nan(""), 0, "left", ""), Error);
  EXPECT_EQ(control->HitTest(std::nan(""), 0), nullptr);
}

}  // namespace
}  // namespace brisel::canvas
