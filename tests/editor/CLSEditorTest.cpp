#include <gtest/gtest.h>

#include "component/HostObject.h"
#include "editor/CLSEditor.h"
#include "support/EditorBench.h"

namespace brisel::editor {
namespace {

using platform::each;
using platform::make;
using platform::Ref;
using platform::Value;
using test::EditorBench;

std::string namesOfCalls(const component::HostObject& host) {
  std::string names;
  for (auto& call : each<component::HostCall>(host.Calls())) names += call.member() + " ";
  return names;
}

TEST(CLSEditor, startsWithItsToolBarAndCategories) {
  const EditorBench bench;
  const auto buttons =
      platform::as<platform::Collection>(bench.editor->diagram()->get("Buttons").object());
  std::string keys;
  for (auto& button : each<platform::Object>(buttons)) {
    const std::string key = button.get("key").string();
    keys += key.empty() ? "| " : key + " ";
    EXPECT_EQ(button.get("caption"), Value(""));
    if (key == "COM::DispInterface") {
      EXPECT_EQ(button.get("icon"), Value("share\\COM-VORTAInterface.ico"));
    }
  }
  EXPECT_EQ(keys,
            "Select | Save | ViewAttributes ViewOperations ViewParameters | COM::Builtin COM::Enum "
            "COM::TypeDef COM::Module COM::Interface COM::CoClass COM::DispInterface | ZoomIn "
            "ZoomOut ZoomNo ZoomFull | Print PrintPreview | Copy | LayoutRandom LayoutMatrix "
            "LayoutSpring LayoutHierarchy | AlignLeft AlignRight AlignTop AlignBottom | Help ");
  EXPECT_FALSE(bench.isPressed("COM::Builtin"));
  EXPECT_FALSE(bench.isPressed("ViewAttributes"));
  for (const char* key : {"COM::Enum", "COM::TypeDef", "COM::Module", "COM::Interface",
                          "COM::CoClass", "COM::DispInterface"}) {
    EXPECT_TRUE(bench.isPressed(key)) << key;
  }
  EXPECT_FALSE(bench.editor->ClassName()->Visible());
  EXPECT_FALSE(bench.editor->CLSClassControl1()->Visible());
  EXPECT_TRUE(bench.messages.empty());
}

TEST(CLSEditor, serves) {
  EditorBench bench;
  bench.editor->Path("/suite");
  EXPECT_EQ(bench.editor->CLSClassControl1()->Path(), "/suite");

  const auto window = make<component::HostObject>();
  bench.editor->ParentWindow(window.get());
  bench.editor->Populate();
  EXPECT_EQ(namesOfCalls(*window), "HourglassOn HourglassOff ");

  const auto session = make<component::HostObject>();
  const auto application = make<component::HostObject>();
  session->set("Application", Value(application));
  bench.editor->Session(session.get());
  bench.editor->diagram()->KeyReleased("F2");
  EXPECT_EQ(namesOfCalls(*application), "");
  bench.editor->diagram()->KeyReleased("F1");
  bench.editor->ActiveBar21()->KeyReleased("F1");
  EXPECT_EQ(namesOfCalls(*application), "ShowHelp ShowHelp ");
}

TEST(CLSEditor, switchesTheBusyCursorOffWhateverFails) {
  EditorBench bench;
  const auto window = make<component::HostObject>();
  bench.editor->ParentWindow(window.get());
  bench.editor->Repository(nullptr);
  bench.editor->Populate();
  EXPECT_EQ(namesOfCalls(*window), "HourglassOn HourglassOff ");
  ASSERT_EQ(bench.messages.size(), 1U);
  EXPECT_EQ(bench.messages[0],
            "Error No: 91  'No repository is set'(Module 'CLSEditor' Function 'Populate()')");
}

TEST(CLSEditor, unregistersFromTheHost) {
  struct Case {
    bool manager;
    bool component;
    bool comObject;
    const char* managerCalls;
    const char* objectCalls;
  };
  for (const Case& one :
       {Case{false, false, false, "", ""},
        Case{true, false, false, "GetComponent RemoveComponent ", ""},
        Case{true, true, false, "GetComponent RemoveComponent ", ""},
        Case{true, true, true, "GetComponent RemoveComponent ", "Deinit Destroy "}}) {
    EditorBench bench;
    const auto session = make<component::HostObject>();
    const auto manager = make<component::HostObject>();
    const auto component = make<component::HostObject>();
    const auto comObject = make<component::HostObject>();
    if (one.manager) session->set("ComponentManager", Value(manager));
    if (one.component) manager->Returns("GetComponent", Value(component));
    if (one.comObject) component->set("ComObject", Value(comObject));
    bench.editor->Session(session.get());
    bench.editor->ComponentName("classes");
    bench.editor->terminate();
    bench.editor->terminate();
    EXPECT_EQ(namesOfCalls(*manager), one.managerCalls);
    EXPECT_EQ(namesOfCalls(*comObject), one.objectCalls);
    EXPECT_TRUE(bench.messages.empty());
    EXPECT_FALSE(bench.editor->diagram()->get("UUIDGenerator").object());
  }
}

TEST(CLSEditor, createsAndDeletesByCommand) {
  EditorBench bench;
  bench.editor->Populate();
  std::string told;
  const auto tell = [&](const char* word) {
    return [&told, word](const std::string& key) { told += word + key + " "; };
  };
  const auto created = bench.editor->ClassCreated.connect(tell("+"));
  const auto deleted = bench.editor->ClassDeleted.connect(tell("-"));
  const auto joined = bench.editor->AssocCreated.connect(tell("~"));

  const auto a = bench.editor->CreateClass("a", "A", "what it is", "cat", "note", "public");
  ASSERT_TRUE(a);
  EXPECT_EQ(a->clsObject()->GetProperty("Description"), Value("what it is"));
  EXPECT_EQ(a->Node()->text(), "A");
  EXPECT_FALSE(bench.editor->CreateClass("a", "Again", "", "", "", ""));
  bench.editor->CreateClass("b", "B", "", "", "", "");
  EXPECT_FALSE(bench.editor->CreateAssociation("x", "", "", "a", "nowhere"));

  bench.editor->CreateAssociation("1", "", "", "a", "b");
  bench.editor->CreateAggregation("2", "owns", "", "a", "b", true);
  bench.editor->CreateAggregation("3", "", "", "a", "b", false);
  bench.editor->CreateGeneralization("4", "", "", "a", "b");
  EXPECT_EQ(bench.find("Association", "1")->name(), "New Association");
  EXPECT_EQ(bench.find("Aggregation", "2")->name(), "owns");
  EXPECT_EQ(bench.find("Aggregation", "2")->GetProperty("isComposite"), Value(true));
  EXPECT_EQ(bench.find("Aggregation", "3")->GetProperty("isComposite"), Value(false));
  EXPECT_EQ(EditorBench::ends(*bench.find("Generalization", "4")), "B>A") << "b is the super class";
  EXPECT_EQ(bench.line("4")->endArrow(), 8);
  EXPECT_EQ(bench.line("2")->beginArrow(), 13);
  EXPECT_EQ(bench.line("3")->beginArrow(), 14);
  bench.editor->diagram()->createLink("5", "", "b", "a");
  EXPECT_TRUE(bench.find("Association", "5")) << "the kind is what it was before the commands";

  bench.editor->AddPositions();
  bench.editor->CreateAssociation("self", "", "", "a", "a");
  bench.addAttribute("a", "x", "Int");
  bench.editor->DeleteClass("a");
  EXPECT_EQ(bench.count("Class"), 1);
  for (const char* type : {"Association", "Aggregation", "Generalization", "Attrib", "GeomPoint"}) {
    EXPECT_EQ(bench.count(type), 0) << type;
  }
  EXPECT_EQ(bench.count("GeomArea"), 1);
  EXPECT_EQ(bench.drawnNodes(), "b");
  EXPECT_EQ(bench.drawnLinks(), "");
  EXPECT_EQ(told, "+a +b ~1 ~2 ~3 ~4 ~5 ~self -a ");
  EXPECT_TRUE(bench.messages.empty());
  bench.editor->DeleteClass("a");
  EXPECT_EQ(bench.messages.size(), 1U);
}

TEST(CLSEditor, findsWrappersByKey) {
  EditorBench bench;
  bench.editor->Populate();
  bench.editor->CreateClass("a", "A", "", "", "", "");
  bench.editor->CreateAssociation("r", "", "", "a", "a");
  EXPECT_TRUE(bench.editor->GetClassFromNode("a"));
  EXPECT_FALSE(bench.editor->GetClassFromNode("r"));
  EXPECT_FALSE(bench.editor->GetClassFromNode(""));
  EXPECT_TRUE(bench.editor->GetAssociationFromLink("r"));
  EXPECT_FALSE(bench.editor->GetAssociationFromLink("a"));
}

TEST(CLSEditor, makesEveryClassADataTypeOnce) {
  EditorBench bench;
  bench.addClass("A");
  bench.addClass("B");
  bench.dataType("B");
  bench.editor->SynchronizeDataTypes();
  bench.editor->SynchronizeDataTypes();
  EXPECT_EQ(bench.count("DataType"), 2);
}

TEST(CLSEditor, savesUnderOneNameAndReopens) {
  EditorBench bench;
  const std::string file = testing::TempDir() + "brisel_editor_test.dim";
  bench.addClass("A");
  bench.addClass("B");
  bench.model->MakeGeneralization("g", "A", "B");
  bench.editor->Populate();
  bench.box("A")->bounds({4500, 900, 2400, 1800});

  bench.editor->SaveDiagram();
  EXPECT_EQ(bench.editor->RepositoryFileName(), "") << "the dialog was cancelled";
  bench.shell->AnswerFile(file);
  bench.editor->SaveDiagram();
  EXPECT_EQ(bench.editor->RepositoryFileName(), file);
  bench.editor->SaveDiagram();

  EditorBench other;
  other.addClass("Gone");
  other.editor->Populate();
  other.editor->OpenDiagram();
  EXPECT_EQ(other.drawnNodes(), "Gone") << "a cancelled dialog changes nothing";
  other.shell->AnswerFile(file + ".missing");
  other.editor->OpenDiagram();
  EXPECT_EQ(other.drawnNodes(), "Gone");
  EXPECT_EQ(other.editor->RepositoryFileName(), "");
  other.shell->AnswerFile(file);
  other.editor->OpenDiagram();
  EXPECT_EQ(other.drawnNodes(), "A B");
  EXPECT_EQ(other.drawnLinks(), "g");
  EXPECT_EQ(other.box("A")->bounds(), (platform::Rect{4500, 900, 2400, 1800}));
  EXPECT_EQ(other.editor->RepositoryFileName(), file);
  EXPECT_TRUE(other.messages.empty());
}

TEST(CLSEditor, viewSettingsFindTheirPlaceInAModelThatWasNeverDrawn) {
  EditorBench bench;
  bench.addClass("A");
  EXPECT_EQ(bench.count("Layout"), 0);
  bench.click("ViewAttributes");
  EXPECT_EQ(bench.count("Layout"), 1);
  bench.store->MetaNodes("Layout")->extension()->Clear();
  bench.editor->RepositoryFileName(testing::TempDir() + "brisel_never_drawn.dim");
  bench.editor->SaveDiagram();
  EXPECT_EQ(bench.count("Layout"), 1);
  EXPECT_TRUE(bench.messages.empty());
}

}  // namespace
}  // namespace brisel::editor
