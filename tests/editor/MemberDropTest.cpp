#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"
#include "support/EditorBench.h"

namespace brisel::editor {
namespace {

using platform::Point;
using platform::Rect;
using test::EditorBench;

class MemberDropTest : public testing::Test, protected EditorBench {
 protected:
  MemberDropTest() : canvas(dynamic_cast<canvas::DiagramControl&>(*editor->diagram())) {
    int left = 0;
    for (const char* name : {"A", "B", "C"}) addClass(name);
    x = addAttribute("A", "x", "Int")->identifier();
    const auto operation = addOperation("A", "f", "Int");
    addParameter(*operation, "p", "Int");
    f = operation->identifier();
    g = addOperation("A", "g", "Int")->identifier();
    addAttribute("C", "x", "Text");
    editor->Populate();
    for (const char* name : {"A", "B", "C"}) box(name)->bounds({5000.0 * left++, 0, 3000, 2000});
    const auto tell = [this](const std::string& key) { told += key + ' '; };
    listening.push_back(editor->ClassChanged.connect(tell));
    listening.push_back(editor->AssocChanged.connect(tell));
  }
  void drop(const std::string& tag, Point at) { canvas.ItemDropped("A", tag, at.x, at.y); }
  std::string attributes(const char* key) const {
    return owned(*find("Class", key), "Class.Has.Attrib");
  }
  std::string operations(const char* key) const {
    return owned(*find("Class", key), "Class.Has.Operation");
  }

  canvas::DiagramControl& canvas;
  std::string x, f, g, told;
  std::vector<platform::Connection> listening;
};

TEST_F(MemberDropTest, membersMoveToTheClassUnderThePointer) {
  drop(x, {5100, 100});
  EXPECT_EQ(attributes("A"), "");
  EXPECT_EQ(attributes("B"), "x");
  EXPECT_EQ(rows("B", 0), std::vector<std::string>{" x:Int"});
  EXPECT_EQ(rows("A", 0), std::vector<std::string>{"EMPTY ATT"});
  drop(f, {5100, 100});
  EXPECT_EQ(operations("B"), "f");
  EXPECT_EQ(count("Parameter"), 1);
  EXPECT_EQ(told, "B B ");
  drop(f, {5100, 100});  // made anew there: the old one is gone
  EXPECT_EQ(operations("B"), "f");
  EXPECT_TRUE(messages.empty());
}

TEST_F(MemberDropTest, whatMustNotMoveStays) {
  std::string hint;
  const auto listen = canvas.Hint.connect([&](const std::string& text) { hint = text; });
  drop(x, {100, 100});
  drop(x, {100, 9000});
  drop("unknown", {5100, 100});
  EXPECT_EQ(hint, "");
  drop(x, {10100, 100});
  EXPECT_EQ(hint, "C has a member named x already");
  EXPECT_EQ(attributes("A"), "x");
  EXPECT_EQ(count("Attrib"), 2);
  EXPECT_EQ(count("Class"), 3);
  const auto bare = store->MakeNode("Operation", "bare", "bare");
  store->MakeLink("Class.Has.Operation", "", "owns", *find("Class", "A"), *bare);
  drop("bare", {100, 9000});
  EXPECT_EQ(messages.size(), 1U) << "without a data type it cannot be moved";
  EXPECT_EQ(count("Class"), 3) << "and no class was made for it";
  EXPECT_EQ(told, "");

  EXPECT_TRUE(canvas.canDrop(*canvas.scene().node("A"), x, canvas.scene().node("B")));
  EXPECT_FALSE(canvas.canDrop(*canvas.scene().node("A"), x, canvas.scene().node("A")));
  EXPECT_FALSE(canvas.canDrop(*canvas.scene().node("A"), x, nullptr));
  EXPECT_TRUE(canvas.canDrop(*canvas.scene().node("A"), f, nullptr));
}

TEST_F(MemberDropTest, operationsOnEmptyCanvasBecomeClasses) {
  drop(f, {100, 9000});
  drop(g, {5100.4, 9000});
  EXPECT_EQ(operations("A"), "");
  const auto first = model->SearchObject("Class", "Name", "OperationClass 1");
  const auto second = model->SearchObject("Class", "Name", "OperationClass 2");
  ASSERT_TRUE(first && second);
  EXPECT_EQ(owned(*first, "Class.Has.Operation"), "f");
  EXPECT_EQ(owned(*second, "Class.Has.Operation"), "g");
  EXPECT_EQ(second->GetProperty("scope").text(), "public");
  EXPECT_EQ(box(first->identifier())->bounds().topLeft(), (Point{100, 9000}));
  EXPECT_EQ(box(second->identifier())->bounds().topLeft(), (Point{5100, 9000}));
  EXPECT_FALSE(editor->ClassName()->Visible());
  EXPECT_TRUE(messages.empty());
}

TEST_F(MemberDropTest, endsMoveInTheModelAndOnTheCanvas) {
  editor->CreateAggregation("w", "owns", "", "A", "B", true);
  editor->CreateGeneralization("s", "", "", "A", "B");
  model->SetStereotype(*find("Aggregation", "w"), model->MakeStereotype("st", "st", "").get());
  canvas.LinkEndDropped("w", "C", false);
  canvas.LinkEndDropped("s", "C", true);
  EXPECT_EQ(ends(*find("Aggregation", "w")), "A>C");
  EXPECT_EQ(ends(*find("Generalization", "s")), "B>C") << "super and sub class";
  EXPECT_EQ(line("w")->target()->key(), "C");
  EXPECT_EQ(line("s")->source()->key(), "C");
  EXPECT_EQ(line("w")->text(), "<<st>>\r\nowns");
  EXPECT_EQ(line("w")->beginArrow(), 13);
  EXPECT_EQ(editor->GetAssociationFromLink("w")->clsObject(), find("Aggregation", "w"));
  canvas.LinkEndDropped("w", "C", true);
  EXPECT_EQ(ends(*find("Aggregation", "w")), "C>C");
  EXPECT_EQ(told, "w s w ");
  canvas.LinkEndDropped("w", "nowhere", true);
  canvas.LinkEndDropped("nowhere", "A", true);
  EXPECT_EQ(told, "w s w ");
  redraw();
  EXPECT_EQ(line("s")->source()->key(), "C");
  EXPECT_TRUE(messages.empty());
}

TEST_F(MemberDropTest, inheritanceRunsInNoCircle) {
  const auto refusal = [&](const char* link, const char* from, const char* to) {
    return canvas.refusal(link, *canvas.scene().node(from), *canvas.scene().node(to));
  };
  editor->CreateGeneralization("ab", "", "", "A", "B");
  editor->CreateGeneralization("bc", "", "", "B", "C");
  editor->CreateAssociation("r", "", "", "C", "A");
  EXPECT_EQ(refusal("", "C", "A"), "") << "an association may";
  canvas.ToolbarButton("Generalization");
  EXPECT_EQ(refusal("", "C", "C"), "A class cannot be its own super class");
  EXPECT_EQ(refusal("", "C", "A"), "A is already below C");
  EXPECT_EQ(refusal("", "A", "C"), "");
  EXPECT_EQ(refusal("r", "C", "A"), "") << "it is an association that is moved";
  EXPECT_EQ(refusal("bc", "C", "A"), "") << "below C over nothing but itself";
  canvas.ToolbarButton("Association");
  EXPECT_EQ(refusal("ab", "B", "B"), "A class cannot be its own super class");
  editor->CreateGeneralization("ca", "", "", "C", "A");
  EXPECT_EQ(count("Generalization"), 3) << "commands are not asked";
  canvas.ToolbarButton("Generalization");
  EXPECT_NE(refusal("", "A", "B"), "") << "a circle that is there already is no trap";
}

}  // namespace
}  // namespace brisel::editor
