#include <cmath>
#include <new>

#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "support/EditorBench.h"

namespace brisel::editor {
namespace {

using platform::Point;
using platform::Rect;
using platform::Value;
using test::EditorBench;

void addBend(platform::DiagramLink& line, double x, double y) { line.ExtraPoints()->Add(x, y); }

std::string pointsOf(const platform::DiagramLink& line) {
  std::string text;
  const auto points = line.ExtraPoints();
  for (std::int64_t i = 1; i + 1 < points->Count(); ++i) {
    const Point point = points->at(static_cast<std::size_t>(i));
    text += std::to_string(std::lround(point.x)) + "," + std::to_string(std::lround(point.y)) + " ";
  }
  return text;
}

TEST(Populate, givesAnEmptyModelItsConventions) {
  EditorBench bench;
  bench.editor->Populate();
  EXPECT_EQ(bench.count("Stereotype"), 1);
  EXPECT_TRUE(bench.model->SearchObject("Stereotype", "Name", "<NONE>"));
  const auto layout = bench.editor->GetLayoutNode();
  ASSERT_TRUE(layout);
  EXPECT_EQ(layout->GetProperty("COM::Builtin"), Value("%FALSE%"));
  EXPECT_EQ(layout->GetProperty("COM::Enum"), Value("%TRUE%"));
  EXPECT_EQ(layout->GetProperty("ViewParameters"), Value("%FALSE%"))
      << "showing parameters the first time stores nothing";
  EXPECT_TRUE(bench.isPressed("ViewParameters"));
  bench.redraw();
  EXPECT_EQ(bench.count("Layout") + bench.count("Stereotype"), 2);
  EXPECT_TRUE(bench.messages.empty());
}

TEST(Populate, drawsWhatIsShownAndComplete) {
  EditorBench bench;
  bench.addClass("Plain");
  bench.addClass("Int", "COM::Builtin");
  bench.addClass("Color", "COM::Enum");
  bench.addClass("None", "<NONE>");
  bench.model->MakeAssociation("", "shown", "Plain", "Color");
  bench.model->MakeAssociation("", "hidden", "Plain", "Int");
  const auto torn = bench.model->MakeAggregation("", "torn", "Plain", "Color");
  const auto end = torn->outgoing("Aggregation.Target.Class")->Item(1);
  bench.store->RemoveAssoc(static_cast<platform::Link&>(*end));
  bench.model->MakeGeneralization("up", "Color", "Plain");
  bench.editor->Populate();
  EXPECT_EQ(bench.drawnNodes(), "Plain Color None");
  EXPECT_EQ(bench.drawnLinks(), "shown up");
  EXPECT_EQ(bench.line("up")->source()->key(), "Plain") << "from the sub class to the super class";
  EXPECT_EQ(bench.box("Color")->text(), "<<COM::Enum>>\r\nColor");
  EXPECT_EQ(bench.box("None")->text(), "None");
  EXPECT_EQ(bench.count("Class"), 4) << "nothing is made while drawing";
  EXPECT_TRUE(bench.messages.empty());
}

TEST(Populate, fillsRows) {
  EditorBench bench;
  bench.addClass("A");
  bench.addAttribute("A", "id", "Int")->SetProperty("scope", "PUBLIC");
  bench.addAttribute("A", "price", "Money")->SetProperty("scope", "private");
  bench.addAttribute("A", "x", "Int");
  const auto pay = bench.addOperation("A", "pay", "void");
  pay->SetProperty("scope", "Protected");
  bench.addParameter(*pay, "amount", "Money");
  bench.addParameter(*pay, "when", "Date");
  bench.addClass("E", "COM::Enum");
  bench.addAttribute("E", "red", "Int")->SetProperty("value", "1");
  bench.editor->Populate();
  using Rows = std::vector<std::string>;
  EXPECT_EQ(bench.rows("A", 0), (Rows{"+id:Int", "-price:Money", " x:Int"}));
  EXPECT_EQ(bench.rows("A", 1), (Rows{"#pay(amount:Money,when:Date) : void"}));
  EXPECT_EQ(bench.rows("E", 0), (Rows{" red=1"}));
  EXPECT_EQ(bench.rows("E", 1), (Rows{"EMPTY OP"}));
  bench.click("ViewParameters");
  EXPECT_EQ(bench.rows("A", 1), (Rows{"#pay() : void"}));
}

TEST(Populate, tellsOfAMemberWithoutItsType) {
  EditorBench bench;
  bench.addClass("Good");
  bench.addClass("Bad");
  const auto x = bench.addAttribute("Bad", "x", "Int");
  const auto link = x->outgoing("Attrib.Has.DataType")->Item(1);
  bench.store->RemoveAssoc(static_cast<platform::Link&>(*link));
  bench.editor->Populate();
  EXPECT_FALSE(bench.messages.empty());
  EXPECT_TRUE(bench.box("Good"));
}

TEST(Populate, reopensADiagramAsItWasLeft) {
  EditorBench bench;
  for (const char* name : {"A", "B", "C"}) bench.addClass(name);
  bench.model->MakeAssociation("", "r", "A", "B");
  bench.model->MakeGeneralization("g", "C", "A");
  bench.editor->Populate();
  bench.click("ViewAttributes");
  bench.box("A")->bounds({100, 200, 3000, 1500});
  bench.box("B")->bounds({9000, 200, 3000, 1500});
  bench.box("C")->bounds({100, 9000, 4500, 2500});
  bench.line("r")->ExtraPoints()->Clear();
  addBend(*bench.line("r"), 5000, 4000);
  addBend(*bench.line("r"), 6000.5, 300);
  bench.line("g")->ExtraPoints()->Clear();
  bench.editor->AddPositions();
  EXPECT_EQ(bench.count("GeomArea"), 3);
  EXPECT_EQ(bench.count("GeomPoint"), 6);

  bench.redraw();
  EXPECT_TRUE(bench.isPressed("ViewAttributes"));
  EXPECT_EQ(bench.box("A")->bounds(), (Rect{100, 200, 3000, 1500}));
  EXPECT_EQ(bench.box("C")->bounds(), (Rect{100, 9000, 4500, 2500}));
  EXPECT_EQ(pointsOf(*bench.line("r")), "5000,4000 6000,300 ") << "ties round to even";
  EXPECT_EQ(pointsOf(*bench.line("g")), "");
}

TEST(Populate, placesNewClassesBesideWhatTheyAreJoinedTo) {
  EditorBench bench;
  for (int i = 0; i < 20; ++i) bench.addClass("C" + std::to_string(i));
  for (int i = 1; i < 20; ++i) {
    bench.model->MakeGeneralization("g" + std::to_string(i), "C" + std::to_string((i - 1) / 3),
                                    "C" + std::to_string(i));
  }
  bench.editor->Populate();
  bench.editor->AddPositions();
  const Rect parent = bench.box("C19")->bounds();
  bench.addClass("New");
  bench.addClass("Alone");
  bench.model->MakeGeneralization("g", "C19", "New");
  std::vector<Rect> before;
  for (int i = 0; i < 20; ++i) before.push_back(bench.box("C" + std::to_string(i))->bounds());

  bench.redraw();
  const Rect placed = bench.box("New")->bounds();
  EXPECT_GE(placed.top, parent.bottom());
  EXPECT_LT(placed.top, parent.bottom() + 3000);
  EXPECT_LT(std::abs(placed.center().x - parent.center().x), 6000);
  for (int i = 0; i < 20; ++i) {
    const Rect box = bench.box("C" + std::to_string(i))->bounds();
    EXPECT_EQ(box, before[static_cast<std::size_t>(i)]);
    EXPECT_FALSE(box.intersects(placed));
    EXPECT_FALSE(box.intersects(bench.box("Alone")->bounds()));
  }
}

TEST(Populate, aLayoutIsReopenedAsItWasDrawn) {
  EditorBench bench;
  for (const char* name : {"A", "B", "C", "D", "E"}) bench.addClass(name);
  for (const char* sub : {"B", "C", "D"}) {
    bench.model->MakeGeneralization("g" + std::string(sub), "A", sub);
  }
  bench.model->MakeAssociation("owns", "r", "B", "E");
  bench.model->MakeAssociation("", "s", "A", "E");
  bench.editor->Populate();
  const auto picture = [&] {
    std::string all;
    for (const char* key : {"gB", "gC", "gD", "r", "s"}) {
      const auto points = bench.line(key)->ExtraPoints();
      for (std::size_t i = 0; i < static_cast<std::size_t>(points->Count()); ++i) {
        all += std::to_string(points->at(i).x) + "," + std::to_string(points->at(i).y) + " ";
      }
      const auto& link = dynamic_cast<canvas::Link&>(*bench.line(key));
      all += std::to_string(link.labelArea().left) + "," + std::to_string(link.labelArea().top);
    }
    return all;
  };
  const std::string before = picture();
  bench.editor->AddPositions();
  bench.redraw();
  EXPECT_EQ(picture(), before);
}

TEST(Populate, restoresBendsByRankWithinEachLine) {
  EditorBench bench;
  const auto a = bench.addClass("A");
  bench.addClass("B");
  const auto r = bench.model->MakeAssociation("", "r", "A", "B");
  const auto s = bench.model->MakeAssociation("", "s", "A", "B");
  bench.model->MakeGeomArea(*a, 0, 0, 3000, 1500);
  bench.model->MakeGeomPoint(*r, 900, 900, "MIDDLE", 4);
  bench.model->MakeGeomPoint(*s, 7000, 7000, "MIDDLE", 2);
  bench.model->MakeGeomPoint(*r, 500, 500, "MIDDLE", 2);
  bench.model->MakeGeomPoint(*r, 1, 1, "START", 1);
  bench.model->MakeGeomPoint(*r, 700, 700, "MIDDLE", 3);
  bench.editor->Populate();
  EXPECT_EQ(pointsOf(*bench.line("r")), "500,500 700,700 900,900 ");
  EXPECT_EQ(pointsOf(*bench.line("s")), "7000,7000 ");
}

TEST(Populate, aLoopThatNobodyBentGoesOnFollowingItsBox) {
  EditorBench bench;
  bench.addClass("A");
  bench.editor->Populate();
  bench.editor->CreateAssociation("own", "", "", "A", "A");
  bench.editor->CreateAssociation("bent", "", "", "A", "A");
  bench.line("bent")->ExtraPoints()->Clear();
  bench.line("bent")->ExtraPoints()->Add(9000, 9000);
  const auto farRight = [&](const char* key) { return bench.line(key)->ExtraPoints()->at(1).x; };
  bench.editor->AddPositions();
  bench.redraw();
  const double before = farRight("own");
  bench.box("A")->bounds({0, 0, 9000, 3000});
  EXPECT_GT(farRight("own"), before);
  EXPECT_EQ(farRight("bent"), 9000);
}

TEST(Populate, keepsWhatHiddenClassesHadStored) {
  EditorBench bench;
  bench.addClass("A");
  bench.addClass("E", "COM::Enum");
  bench.model->MakeAssociation("", "r", "A", "E");
  bench.editor->Populate();
  bench.box("E")->bounds({20000, 30000, 3000, 1500});
  bench.line("r")->ExtraPoints()->Clear();
  addBend(*bench.line("r"), 12000, 15000);

  bench.click("COM::Enum");
  EXPECT_EQ(bench.drawnNodes(), "A");
  EXPECT_EQ(bench.editor->GetLayoutNode()->GetProperty("COM::Enum"), Value("%FALSE%"));
  bench.editor->AddPositions();
  bench.editor->AddPositions();
  EXPECT_EQ(bench.count("GeomArea"), 2);
  EXPECT_EQ(bench.count("GeomPoint"), 3);
  bench.click("COM::Enum");
  EXPECT_EQ(bench.drawnNodes(), "A E");
  EXPECT_EQ(bench.box("E")->bounds(), (Rect{20000, 30000, 3000, 1500}));
  EXPECT_EQ(pointsOf(*bench.line("r")), "12000,15000 ");
  EXPECT_TRUE(bench.isPressed("COM::Enum"));
}

TEST(Populate, placesNewBoxesBesideThoseWithAPlace) {
  EditorBench bench;
  const auto a = bench.addClass("A");
  bench.model->MakeGeomArea(*a, 0, 0, 9000, 3000);
  for (const char* name : {"B", "C", "D"}) bench.addClass(name, "COM::Builtin");
  bench.editor->Populate();
  bench.click("COM::Builtin");
  ASSERT_EQ(bench.drawnNodes(), "A B C D");
  for (const char* one : {"A", "B", "C", "D"}) {
    for (const char* other : {"A", "B", "C", "D"}) {
      if (std::string(one) < other) {
        EXPECT_FALSE(bench.box(one)->bounds().intersects(bench.box(other)->bounds()))
            << one << " " << other;
      }
    }
  }
}

TEST(Populate, laysOutWhatNeverWas) {
  EditorBench bench;
  bench.addClass("Sub");
  bench.addClass("Super");
  bench.model->MakeGeneralization("g", "Super", "Sub");
  bench.editor->Populate();
  EXPECT_LE(bench.box("Super")->bounds().bottom(), bench.box("Sub")->bounds().top);
}

TEST(Compartments, applyToEveryDrawnClass) {
  EditorBench bench;
  bench.addClass("A");
  bench.addAttribute("A", "x", "Int");
  bench.editor->Populate();
  const auto visible = [&](int section) { return bench.box("A")->Section(section)->visible(); };
  EXPECT_FALSE(visible(0));
  bench.click("ViewAttributes");
  EXPECT_TRUE(visible(0));
  EXPECT_FALSE(visible(1));
  const double withAttributes = bench.box("A")->bounds().height;
  bench.click("ViewOperations");
  EXPECT_GT(bench.box("A")->bounds().height, withAttributes);
  EXPECT_EQ(bench.editor->GetLayoutNode()->GetProperty("ViewOperations"), Value("%TRUE%"));
  bench.editor->Compartments("ViewNothing");
  EXPECT_TRUE(visible(0) && visible(1));
}

/// Fails where a real canvas fails on request only: in the hierarchical layout.
class FailingCanvas : public canvas::DiagramControl {
 public:
  using canvas::DiagramControl::DiagramControl;
  void Layout(std::string_view code) override {
    if (code == "%HIERARCHY%") throw std::bad_alloc();
    canvas::DiagramControl::Layout(code);
  }
};

TEST(Layout, offersTheMatrixWhenItFails) {
  for (const bool accept : {false, true}) {
    EditorBench bench([](platform::ComponentRegistry& registry) {
      registry.add("BriselDiagram.diagramControl", [](platform::ComponentRegistry& made) {
        return platform::make<FailingCanvas>(made);
      });
    });
    const auto a = bench.addClass("A");
    bench.addClass("B");
    bench.model->MakeGeomArea(*a, 0, 0, 3000, 1500);
    bench.editor->Populate();
    const Rect before = bench.box("B")->bounds();
    bench.box("A")->bounds(before);
    bench.shell->AnswerMessage(accept ? "OK" : "Cancel");
    bench.editor->Layout("%HIERARCHY%");
    ASSERT_EQ(bench.messages.size(), 1U);
    EXPECT_EQ(bench.messages[0].find("There were some problems layouting this diagram"), 0U);
    EXPECT_EQ(bench.box("A")->bounds().intersects(bench.box("B")->bounds()), !accept);
  }
}

}  // namespace
}  // namespace brisel::editor
