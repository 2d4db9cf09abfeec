#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"
#include "support/EditorBench.h"

namespace brisel::editor {
namespace {

using platform::each;
using platform::Rect;
using test::EditorBench;

class DispatchTest : public testing::Test, protected EditorBench {
 protected:
  DispatchTest()
      : canvas(dynamic_cast<canvas::DiagramControl&>(*editor->diagram())),
        bar(*editor->ActiveBar21()),
        pane(*editor->CLSClassControl1()) {
    addClass("A");
    addClass("B");
    addAttribute("A", "x", "Int");
    addOperation("A", "f", "Int");
    editor->Populate();
    editor->CreateAssociation("r", "", "", "A", "B");
    editor->Compartments("");
  }
  bool shows(const char* key, int section) const { return box(key)->Section(section)->visible(); }
  std::string popup() const { return bar.get("PopupBand").text(); }

  canvas::DiagramControl& canvas;
  platform::ToolBarControl& bar;
  editors::CLSClassControl& pane;
};

TEST_F(DispatchTest, menusActOnWhatWasClickedLast) {
  std::string told;
  const auto tell = [&](const char* word) {
    return [&told, word](const std::string& key) { told += word + key + ' '; };
  };
  const auto classes = editor->ClassRClicked.connect(tell("class:"));
  const auto lines = editor->AssocRClicked.connect(tell("line:"));
  const auto tools = editor->PopupButton.connect(tell("tool:"));
  canvas.NodeRClicked("A");
  EXPECT_EQ(popup(), "tbPopupMenu");
  canvas.LinkRClicked("r");
  EXPECT_EQ(popup(), "tbPopupAssoc");
  EXPECT_EQ(bar.Tag(), "r");
  editor->ShowPopupMenu("Nothing");
  EXPECT_EQ(popup(), "tbPopupAssoc");

  canvas.NodeRClicked("B");
  canvas.NodeRClicked("A");
  bar.Click("miCompartmentsAttributes");
  EXPECT_TRUE(shows("A", 0));
  EXPECT_FALSE(shows("A", 1));
  EXPECT_FALSE(shows("B", 0));
  canvas.NodeRClicked("B");
  EXPECT_FALSE(bar.checked("miCompartmentsAttributes"));
  canvas.NodeRClicked("A");
  EXPECT_TRUE(bar.checked("miCompartmentsAttributes"));
  bar.Click("miCompartmentsOperations");
  bar.Click("miCompartmentsAttributes");
  EXPECT_FALSE(shows("A", 0));
  EXPECT_TRUE(shows("A", 1));
  bar.Click("miPopupMorph");
  bar.Click("miTest");
  EXPECT_EQ(told,
            "class:A line:r class:B class:A tool:miCompartmentsAttributes class:B class:A "
            "tool:miCompartmentsOperations tool:miCompartmentsAttributes tool:miPopupMorph "
            "tool:miTest ");
  EXPECT_TRUE(messages.empty());
}

TEST_F(DispatchTest, aCommandOnWhatIsGoneIsReported) {
  for (const char* tool : {"miPopupEdit", "miPopupProperties", "miPopupSizeToFit",
                           "miCompartmentsAttributes", "Divide"}) {
    messages.clear();
    if (std::string_view(tool) == "Divide") bar.addLooseTool(tool, tool);
    bar.Tag("gone");
    bar.Click(tool);
    ASSERT_EQ(messages.size(), 1U) << tool;
    EXPECT_NE(messages[0].find("gone"), std::string::npos) << messages[0];
  }
  EXPECT_FALSE(pane.Visible());
}

TEST_F(DispatchTest, aBoxIsDividedAndAssembled) {
  bar.addLooseTool("Divide", "Divide");
  bar.addLooseTool("Assemble", "Assemble");
  bar.Tag("A");
  const double folded = box("A")->bounds().height;
  bar.Click("Divide");
  EXPECT_TRUE(shows("A", 0) && shows("A", 1));
  EXPECT_GT(box("A")->bounds().height, folded);
  editor->PropertyNode(3);
  EXPECT_TRUE(shows("A", 0));
  bar.Click("Assemble");
  EXPECT_FALSE(shows("A", 0) || shows("A", 1));
  EXPECT_EQ(box("A")->bounds().height, folded);
  editor->ShowCompartments("A", "Operations", true);
  editor->ShowCompartments("B", "anything", true);
  EXPECT_TRUE(shows("A", 1) && shows("B", 0));
  editor->Compartments("ViewParameters");
  EXPECT_FALSE(shows("A", 1) || shows("B", 0)) << "the common flags hold again";
}

TEST_F(DispatchTest, buttonsLookAsTheModeIs) {
  const auto pressed = [&] {
    std::string keys;
    for (const char* key :
         {"Select", "Association", "CompositeAggregation", "SharedAggregation", "Generalization"}) {
      if (isPressed(key)) keys += std::string(key) + ' ';
    }
    return keys;
  };
  for (const char* key :
       {"Association", "CompositeAggregation", "SharedAggregation", "Generalization"}) {
    canvas.AddButton(key, "", "", "", true);
  }
  EXPECT_EQ(pressed(), "Select ");
  click("SharedAggregation");
  EXPECT_EQ(pressed(), "SharedAggregation ");
  EXPECT_EQ(canvas.linkBeginArrow(), 14);
  click("Generalization");
  EXPECT_EQ(pressed(), "Generalization ");
  EXPECT_EQ(canvas.linkBeginArrow(), 0);
  EXPECT_EQ(canvas.linkEndArrow(), 8);
  editor->CreateMode();
  EXPECT_EQ(pressed(), "");
  click("Select");
  EXPECT_EQ(pressed(), "Select ");
  canvas.createLink("g", "", "A", "B");
  EXPECT_TRUE(find("Generalization", "g")) << "the kind outlives the mode";
  std::string told;
  const auto listening =
      editor->ToolbarButton.connect([&](const std::string& key) { told += key + ' '; });
  click("COM::Enum");
  click("COM::Unknown");
  click("COM::Enum");
  EXPECT_EQ(told, "COM::Enum COM::Enum ");
  EXPECT_EQ(drawnNodes(), "A B");
}

TEST_F(DispatchTest, thePaneFollowsItsClass) {
  std::string told;
  const auto changed =
      editor->ClassChanged.connect([&](const std::string& key) { told += key + ' '; });
  canvas.NodePressed("A");
  EXPECT_EQ(told, "") << "only while the pane is open";
  canvas.viewport().resize({1000, 800});
  box("A")->bounds({600, 600, 3000, 2000});
  editor->EditClass("A");
  EXPECT_TRUE(pane.Visible());
  EXPECT_EQ(pane.Class(), editor->GetClassFromNode("A"));
  EXPECT_GT(pane.Left(), 3600);
  EXPECT_EQ(pane.Top(), 600);
  for (const auto& [scroll, zoom] : {std::pair{4000.0, 100.0}, {-14000.0, 100.0}, {0.0, 300.0}}) {
    canvas.viewport().scrollTo({scroll, 0});
    canvas.zoom(zoom);
    EXPECT_TRUE((Rect{0, 0, 15000, 12000}.contains(pane.area()))) << scroll << ' ' << zoom;
  }
  canvas.NodePressed("B");
  EXPECT_EQ(pane.Class(), editor->GetClassFromNode("B"));
  EXPECT_EQ(told, "B ");
  editor->DeleteClass("B");
  EXPECT_FALSE(pane.Visible());
  EXPECT_FALSE(pane.Class());

  bar.Tag("A");
  bar.Click("miPopupProperties");
  EXPECT_TRUE(bar.isBandShown("tbProperty"));
  EXPECT_TRUE(pane.Visible());
  bar.showBand("tbProperty", false);
  EXPECT_FALSE(pane.Visible());
  EXPECT_FALSE(pane.Node());
  canvas.selNode("A");
  bar.showBand("tbProperty", true);
  EXPECT_EQ(pane.Class(), editor->GetClassFromNode("A")) << "the class that is selected";
  canvas.ToolbarButton("COM::Enum");
  EXPECT_FALSE(pane.Visible()) << "its box was drawn anew";
  EXPECT_TRUE(messages.empty());
}

TEST_F(DispatchTest, theDeleteKeyTakesClassesAndRelationships) {
  addClass("C");
  redraw();
  editor->CreateGeneralization("g", "", "", "B", "C");
  editor->CreateAssociation("r", "", "", "A", "B");
  editor->AddPositions();
  canvas.selLink("r");
  canvas.DeleteAsked();
  EXPECT_EQ(drawnLinks(), "g");
  EXPECT_EQ(count("Association"), 0);
  EXPECT_EQ(count("GeomPoint"), 2) << "those of the generalization";
  canvas.selNode("B");
  canvas.selLink("g");
  canvas.selNode("A");
  canvas.DeleteAsked();
  EXPECT_EQ(drawnNodes(), "C");
  for (const char* type : {"Attrib", "Operation", "Generalization", "GeomPoint"}) {
    EXPECT_EQ(count(type), 0) << type;
  }
  EXPECT_EQ(count("GeomArea"), 1);
  canvas.unselectAll();
  canvas.DeleteAsked();
  EXPECT_EQ(count("Class"), 1);
  EXPECT_TRUE(messages.empty());
}

TEST_F(DispatchTest, whatWentBehindTheEditorsBackCanStillBeTakenAway) {
  std::string left;
  const auto listening =
      editor->ClassLeave.connect([&](const std::string& key) { left += key + ' '; });
  box("A")->bounds({0, 0, 3000, 1500});
  box("B")->bounds({9000, 0, 3000, 1500});
  canvas.PointerMove(1500, 300);
  model->DeleteAssociation("r");
  model->DeleteClass("A");
  canvas.NodeRenaming("A");
  editor->ClassName()->SetText("Ghost");
  editor->ClassName()->KeyPress("Return", "");
  EXPECT_FALSE(model->SearchObject("DataType", "Name", "Ghost"));
  for (const char* key : {"A", "B"}) canvas.selNode(key);
  canvas.selLink("r");
  canvas.DeleteAsked();
  EXPECT_EQ(drawnNodes() + drawnLinks(), "");
  EXPECT_EQ(count("Class"), 0);
  EXPECT_EQ(left, "A ") << "nothing is under the pointer any more";
  EXPECT_TRUE(messages.empty());
}

TEST_F(DispatchTest, aClearedCanvasHasNothingToNameOrEdit) {
  editor->EditClass("A");
  canvas.NodeRenaming("B");
  canvas.Clear();
  EXPECT_FALSE(editor->ClassName()->Visible());
  EXPECT_FALSE(pane.Visible());
  EXPECT_EQ(find("Class", "B")->name(), "B");
  EXPECT_TRUE(messages.empty());
}

}  // namespace
}  // namespace brisel::editor
