#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"
#include "support/EditorBench.h"

namespace brisel::editor {
namespace {

using test::EditorBench;

class NamingTest : public testing::Test, protected EditorBench {
 protected:
  NamingTest()
      : canvas(dynamic_cast<canvas::DiagramControl&>(*editor->diagram())),
        name(*editor->ClassName()) {
    editor->Populate();
    listening = editor->ClassChanged.connect([this](const std::string& key) { told += key + ' '; });
  }
  void draw(const char* key) { canvas.createNode(key, "", 900, 1200, 0, 0, 2); }
  std::string nameOf(const char* key) { return find("Class", key)->name(); }

  canvas::DiagramControl& canvas;
  controls::TextBox& name;
  std::string told;
  platform::Connection listening;
};

TEST_F(NamingTest, aDrawnClassIsNamedAtOnce) {
  int asked = 0;
  const auto focus = name.FocusAsked.connect([&] { ++asked; });
  draw("a");
  EXPECT_TRUE(name.Visible());
  EXPECT_EQ(name.Tag(), "a");
  EXPECT_EQ(name.Text(), "newClass");
  EXPECT_EQ(name.SelStart(), 0);
  EXPECT_EQ(name.SelLength(), 8);
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(nameOf("a"), "newClass");
  name.SetText("Größe\r\nin\u2028m²");
  name.KeyPress("Return", "");
  EXPECT_FALSE(name.Visible());
  EXPECT_EQ(nameOf("a"), "Größe in m²");
  EXPECT_EQ(box("a")->text(), "Größe in m²");
  EXPECT_TRUE(model->SearchObject("DataType", "Name", "Größe in m²"));
  EXPECT_EQ(told, "a ");
  EXPECT_TRUE(messages.empty());
}

TEST_F(NamingTest, whateverComesNextEndsIt) {
  const auto b = addClass("B");
  redraw();
  struct Case {
    const char* name;
    std::function<void()> next;
    bool commits;
  };
  int number = 0;
  for (const Case& one : {Case{"Return", [&] { name.KeyPress("Return", ""); }, true},
                          Case{"Escape", [&] { name.KeyPress("Escape", ""); }, false},
                          Case{"focus", [&] { name.LeaveFocus(); }, true},
                          Case{"button", [&] { click("ZoomNo"); }, true},
                          Case{"empty canvas", [&] { canvas.Pressed(); }, true},
                          Case{"another class", [&] { canvas.NodePressed("B"); }, true},
                          Case{"another new class",
                               [&] { editor->CreateClass("made", "Made", "", "", "", ""); }, true},
                          Case{"menu", [&] { editor->ActiveBar21()->Click("miTest"); }, true},
                          Case{"save", [&] { editor->SaveDiagram(); }, true},
                          Case{"clear", [&] { redraw(); }, true}}) {
    const std::string key = "c" + std::to_string(++number);
    draw(key.c_str());
    ASSERT_TRUE(name.Visible()) << one.name;
    name.SetText("Typed" + key);
    one.next();
    EXPECT_FALSE(name.Visible()) << one.name;
    EXPECT_EQ(nameOf(key.c_str()), one.commits ? "Typed" + key : "newClass") << one.name;
  }
  EXPECT_EQ(b->name(), "B");
  EXPECT_TRUE(messages.empty());
}

TEST_F(NamingTest, namesKeepWhatTheyWereWhereNothingIsTyped) {
  addClass("Order", "entity");
  redraw();
  canvas.NodeRenaming("Order");
  EXPECT_EQ(name.Text(), "Order");
  EXPECT_EQ(name.SelLength(), 5);
  for (const char* blank : {"", "   ", "\t"}) {
    canvas.NodeRenaming("Order");
    name.SetText(blank);
    name.KeyPress("Return", "");
    EXPECT_EQ(nameOf("Order"), "Order");
  }
  EXPECT_EQ(box("Order")->text(), "<<entity>>\r\nOrder");
  canvas.NodeRenaming("nowhere");
  EXPECT_FALSE(name.Visible());
  EXPECT_EQ(messages.size(), 1U) << "the key is named in a report";
}

TEST_F(NamingTest, theTextBoxLiesOverTheNameAtEveryZoom) {
  addClass("Order", "entity");
  redraw();
  canvas.NodeRenaming("Order");
  double before = 0;
  for (const double zoom : {50.0, 100.0, 200.0}) {
    canvas.zoom(zoom);
    const platform::Rect title = canvas.toView(box("Order")->titleArea());
    EXPECT_NEAR(name.area().bottom(), title.bottom(), 100 * zoom / 100) << "the last line";
    EXPECT_LE(name.Left(), title.left) << "all of its width";
    EXPECT_GE(name.area().right(), title.right());
    EXPECT_GT(name.FontSize(), before);
    before = name.FontSize();
  }
  const double left = name.Left();
  canvas.viewport().scrollBy({100, 0});
  EXPECT_NEAR(name.Left(), left - 1500, 15);
}

TEST_F(NamingTest, aClassThatGoesTakesTheTextBoxAlong) {
  for (const auto& remove : std::vector<std::function<void()>>{
           [&] { editor->DeleteClass("a"); }, [&] { canvas.deleteNode("a"); },
           [&] { canvas.Clear(); }, [&] { editor->Repository(nullptr); }}) {
    draw("a");
    ASSERT_TRUE(name.Visible());
    remove();
    name.KeyPress("Return", "");
    EXPECT_FALSE(name.Visible());
    editor->Repository(store.get());
    canvas.Clear();
    store->MetaNodes("Class")->extension()->Clear();
  }
}

TEST_F(NamingTest, commandsAndFilesNameNothing) {
  addClass("A");
  redraw();
  editor->CreateClass("b", "", "", "", "", "");
  editor->CreateAssociation("r", "", "", "A", "b");
  EXPECT_FALSE(name.Visible());
  EXPECT_EQ(nameOf("b"), "newClass");
  EXPECT_EQ(count("Class"), 2);
}

TEST_F(NamingTest, dataTypesFollowNamesWhoeverChangesThem) {
  editor->CreateClass("a", "A", "", "", "", "");
  editor->SynchronizeDataTypes();
  EXPECT_EQ(count("DataType"), 1);
  find("Class", "a")->name("B");  // behind the editor's back
  model->MakeClass("C", "c", "", "", "", "");
  model->MakeClass("D", "d", "", "", "", "");
  find("Class", "d")->name("E");
  model->DeleteClass("c");
  editor->SynchronizeDataTypes();
  EXPECT_EQ(count("DataType"), 3) << "A stays, B and E are new";
  model->RemoveObject("DataType", model->SearchObject("DataType", "Name", "B")->identifier());
  editor->SynchronizeDataTypes();
  EXPECT_TRUE(model->SearchObject("DataType", "Name", "B"));
  model->SearchObject("DataType", "Name", "E")->name("F");
  editor->SynchronizeDataTypes();
  EXPECT_TRUE(model->SearchObject("DataType", "Name", "E"));
  const EditorBench other;
  other.model->MakeClass("G", "g", "", "", "", "");
  editor->Repository(other.store.get());
  editor->SynchronizeDataTypes();
  EXPECT_EQ(other.count("DataType"), 1) << "another model, of which nothing was known";
}

}  // namespace
}  // namespace brisel::editor
