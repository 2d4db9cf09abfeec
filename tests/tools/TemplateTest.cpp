// The template editor as its callers drive it, by name.
#include "component/AutomaticShell.h"
#include "component/Suite.h"
#include "platform/ComponentRegistry.h"
#include "platform/Error.h"
#include "tools/GeneratedCode.h"
#include "tools/Template.h"

namespace brisel::tools {
namespace {

using platform::Ref;
using platform::Value;

class TemplateTest : public ::testing::Test {
 protected:
  TemplateTest() {
    component::registerSuite(registry);
    for (const char* name : {"Order", "Item"}) model.addClass(name);
    writeTextFile(folder.path("Template/Names.tml"), "{{#classes}}\n{{name}}\n{{/classes}}\n");
    writeTextFile(folder.path("Template/Model.tml"), "{{modelName}}");
    tool = registry.create("BriselTemplateEditor.Template");
    tool->call("Create");
    tool->call("SetRepository", {Ref<platform::Object>(model.store)});
    tool->set("WorkDirectory", folder.path() + "\\Template");
    tool->set("UserDirectory", folder.path("own"));
    tool->set("MainTemplate", "Names.tml");
    tool->set("Output", "");
    tool->set("DimFile", "");
    tool->set("template", "");
    tool->call("PopUp");
  }

  [[nodiscard]] std::string preview() {
    std::string shown;
    const Value files = tool->call("Preview");
    for (const Value& file : platform::as<platform::ValueArray>(files.object())->values()) {
      shown +=
          file.object()->get("name").string() + "=" + file.object()->get("text").string() + ";";
    }
    return shown;
  }
  void select(std::vector<Value> keys) {
    tool->call("Select", {platform::make<platform::ValueArray>(std::move(keys))});
  }

  Ref<component::AutomaticShell> shell = platform::make<component::AutomaticShell>();
  platform::ComponentRegistry registry{shell};
  TemporaryFolder folder;
  test::Model model;
  Ref<platform::Object> tool;
};

TEST_F(TemplateTest, FollowsTextSelectionAndModel) {
  EXPECT_EQ(tool->get("template"), Value("Names.tml"));
  EXPECT_EQ(preview(), "Names.txt=Order\nItem\n;");
  select({"Item", "gone"});
  EXPECT_EQ(preview(), "Names.txt=Item\n;");
  model.find("Class", "Item")->name("Row");
  EXPECT_EQ(preview(), "Names.txt=Row\n;");
  select({});
  tool->set("Text", "{{modelName}}\n{{#classes}}{{name}");
  EXPECT_EQ(preview(), "");
  EXPECT_EQ(tool->get("FaultLine"), Value(2));
  EXPECT_NE(tool->get("Fault").string(), "");
  tool->set("DimFile", "C:\\models\\shop.dim");
  tool->set("template", "Model.tml");
  EXPECT_EQ(preview(), "Model.txt=shop;");
  EXPECT_THROW(tool->set("template", "None.tml"), platform::Error);
  EXPECT_EQ(tool->get("template"), Value("Model.tml"));
}

TEST_F(TemplateTest, TellsOfAChangedModelOnceUntilSomebodyLooks) {
  std::string heard;
  const auto connection = tool->listen(
      "Changed", [&](const std::vector<Value>& told) { heard += told[0].string() + " "; });
  static_cast<void>(preview());
  model.addClass("New");
  model.addClass("Newer");
  EXPECT_EQ(heard, "model ");
  EXPECT_EQ(preview(), "Names.txt=Order\nItem\nNew\nNewer\n;");
  model.model->DeleteClass("New");
  EXPECT_EQ(heard, "model model ");
}

TEST_F(TemplateTest, IsMadeInStepsThatAChangeTakesBack) {
  for (int i = 0; i < 50; ++i) model.addClass("C" + std::to_string(i));
  EXPECT_TRUE(tool->call("StepPreview", {0.0}).boolean()) << "a step is not all";
  model.model->DeleteClass("Order");
  int steps = 1;
  while (tool->call("StepPreview", {0.0}).boolean()) ++steps;
  EXPECT_GE(steps, 50);
  EXPECT_EQ(preview().find("Order"), std::string::npos);
}

TEST_F(TemplateTest, SavesWhereItMay) {
  tool->set("Text", "changed");
  EXPECT_TRUE(tool->get("Modified").boolean());
  EXPECT_EQ(tool->call("SaveAs", {"Mine"}), Value(folder.path("own/Mine.tml")));
  EXPECT_EQ(tool->get("template"), Value("Mine.tml"));
  EXPECT_FALSE(tool->get("Modified").boolean());
  EXPECT_THROW(tool->call("SaveAs", {" "}), platform::Error);
  tool->set("Text", "again");
  shell->AnswerMessage("Cancel");
  EXPECT_EQ(tool->call("Open", {"Names.tml"}), Value(false));
  shell->AnswerMessage("Save");
  EXPECT_EQ(tool->call("Open", {"Names.tml"}), Value(true));
  EXPECT_EQ(readTextFile(folder.path("own/Mine.tml")), "again");
}

TEST_F(TemplateTest, WritesNothingThatIsNotWanted) {
  EXPECT_THROW(tool->call("Write"), platform::Error) << "there is no folder";
  tool->set("Output", folder.path("out"));
  tool->set("Text", "{{nmae}}");
  EXPECT_THROW(tool->call("Write"), platform::Error);
  EXPECT_FALSE(std::filesystem::exists(folder.path("out")));
  tool->set("Text", "{{#classes}}{{name}} {{/classes}}");
  EXPECT_EQ(tool->call("Write").object()->get("written"), Value(1));
  writeTextFile(folder.path("out/Names.txt"), "mine");
  EXPECT_TRUE(tool->call("Write").isEmpty()) << "the question's default is not to";
  shell->AnswerMessage("Overwrite");
  EXPECT_EQ(tool->call("Write").object()->get("written"), Value(1));
  EXPECT_EQ(readTextFile(folder.path("out/Names.txt")), "Order Item ");
}

}  // namespace
}  // namespace brisel::tools
