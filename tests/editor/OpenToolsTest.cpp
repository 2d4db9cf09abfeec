#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "platform/MemberTableOf.h"
#include "platform/ValueArray.h"
#include "repository/NewModel.h"
#include "support/EditorBench.h"
#include "support/EditorChecks.h"
#include "tools/MatrixBrowser.h"
#include "tools/Template.h"

namespace brisel::editor {
namespace {

using platform::Ref;
using platform::Value;

/// The editor while a matrix browser is open on its model.
class OpenToolsTest : public testing::Test, protected test::EditorBench {
 protected:
  OpenToolsTest() {
    editor->Populate();
    for (const char* name : {"A", "B", "C"}) editor->CreateClass(name, name, "", "", "", "");
    editor->CreateAssociation("ab", "ab", "", "A", "B");
    box("A")->bounds({300, 300, 3000, 2000});
    box("B")->bounds({9000, 600, 3000, 2000});
    box("C")->bounds({60000, 70000, 3000, 2000});
    line("ab")->ExtraPoints()->Add(5000, 9000);
    editor->AddPositions();
    editor->MatrixBrowser();
    browser = platform::as<tools::MatrixBrowser>(editor->MatrixBrowser1());
    browser->Sort("name");
  }

  [[nodiscard]] std::string selected() const {
    std::string keys;
    for (const auto& items :
         {editor->diagram()->getSelectedNodes(), editor->diagram()->getSelectedLinks()}) {
      for (auto& item : platform::each<platform::DiagramItem>(items)) keys += item.key() + ' ';
    }
    return keys;
  }

  Ref<tools::MatrixBrowser> browser;
};

TEST_F(OpenToolsTest, drawsWhatIsEditedThereAndLeavesTheRest) {
  const platform::Rect before = box("B")->bounds();
  const auto made = browser->Make("composite", 2, 3);
  const auto drawn = line(made->identifier());
  ASSERT_TRUE(drawn);
  EXPECT_EQ(drawn->source()->key() + drawn->target()->key(), "BC");
  EXPECT_EQ(drawn->beginArrow(), static_cast<int>(platform::Arrow::filledDiamond));
  EXPECT_EQ(box("B")->bounds(), before);
  EXPECT_EQ(line("ab")->ExtraPoints()->Count(), 3) << "its bend is kept";
  const auto below = browser->Make("generalization", 3, 1);
  EXPECT_EQ(line(below->identifier())->target()->key(), "A");
  EXPECT_EQ(test::checkAgreement(*editor), "");

  EXPECT_EQ(count("GeomPoint"), 3);
  browser->Delete(1, 2, "");
  EXPECT_FALSE(line("ab"));
  EXPECT_EQ(count("GeomPoint"), 0) << "the stored bend goes along";
  EXPECT_EQ(drawnNodes(), "A B C");
  EXPECT_EQ(test::checkAgreement(*editor), "");
  EXPECT_TRUE(messages.empty()) << messages.front();
}

TEST_F(OpenToolsTest, templatesAreTriedOnTheSelectedClasses) {
  Ref<tools::Template> made;
  registry.add("BriselTemplateEditor.Template", [&](platform::ComponentRegistry& suite) {
    return made = platform::make<tools::Template>(suite);
  });
  editor->diagram()->call("selNode", {"B"});
  editor->ShowTemplateEditor();
  ASSERT_TRUE(made);
  ASSERT_EQ(made->Selected()->values().size(), 1U);
  EXPECT_EQ(made->Selected()->values().front(), Value("B"));
}

TEST_F(OpenToolsTest, selectsWhatIsChosenThere) {
  auto& canvas = dynamic_cast<canvas::DiagramControl&>(*editor->diagram());
  browser->Choose(3, 0);
  EXPECT_EQ(selected(), "C ");
  EXPECT_TRUE(canvas.viewport().visible().contains(box("C")->bounds()));
  browser->Choose(1, 2);
  EXPECT_EQ(selected(), "ab ");
  EXPECT_TRUE(canvas.viewport().visible().contains(platform::Point{5000, 9000}));
  const platform::Point seen = canvas.viewport().scroll();
  browser->Choose(0, 1);
  EXPECT_EQ(selected(), "A ");
  browser->Choose(3, 3);  // an empty cell
  EXPECT_EQ(selected(), "A ");
  editor->diagram()->deleteNode(Value("C"));
  browser->Choose(3, 0);
  EXPECT_EQ(selected(), "") << "a class that is not drawn";
  EXPECT_LT(std::abs(canvas.viewport().scroll().y - seen.y), 9000);
  EXPECT_TRUE(messages.empty());
}

TEST_F(OpenToolsTest, goOnWithAnotherModelAndEndWithTheEditor) {
  const auto other = repository::newModel(registry, "other");
  other->MakeClass("Elsewhere", "e", "", "", "", "");
  editor->showRepository(*other->GetRepository());
  EXPECT_EQ(browser->Rows()->Count(), 1);
  editor->Repository(store.get());
  EXPECT_EQ(browser->Rows()->Count(), 3);
  browser->Close();
  EXPECT_FALSE(editor->MatrixBrowser1());
  editor->MatrixBrowser();
  const auto second = platform::as<tools::MatrixBrowser>(editor->MatrixBrowser1());
  int closed = 0;
  const auto closing = second->Closed.connect([&] { ++closed; });
  editor->terminate();
  EXPECT_EQ(closed, 1);
  EXPECT_FALSE(editor->MatrixBrowser1());
}

/// A browser of a host's own, which knows the members that it must have and no events.
class PlainBrowser : public platform::Object {
 public:
  void Create() {}
  [[nodiscard]] std::string Path() const { return {}; }
  void Path(std::string_view) {}
  void SetRepository(platform::Object*) {}
  void PopUp() { ++shown; }
  [[nodiscard]] const platform::MemberTable& memberTable() const override {
    using P = PlainBrowser;
    static const platform::MemberTable kTable =
        platform::MemberTableOf<P>()
            .method("Create", &P::Create)
            .property<std::string, std::string_view>("Path", &P::Path, &P::Path)
            .method("SetRepository", &P::SetRepository)
            .method("PopUp", &P::PopUp)
            .build();
    return kTable;
  }
  int shown = 0;
};

TEST(OpenTools, mayBeTheHostsOwn) {
  const auto plain = platform::make<PlainBrowser>();
  const test::EditorBench bench([&](platform::ComponentRegistry& registry) {
    registry.add("BriselUtility.MatrixBrowser", [plain](auto&) { return plain; });
  });
  bench.editor->MatrixBrowser();
  EXPECT_EQ(plain->shown, 1);
  EXPECT_FALSE(bench.editor->MatrixBrowser1());
  EXPECT_TRUE(bench.messages.empty());
}

}  // namespace
}  // namespace brisel::editor
