#include <gtest/gtest.h>

#include "component/AutomaticShell.h"
#include "controls/ListEditor.h"
#include "controls/components.h"
#include "platform/Error.h"
#include "store/UUIDGenerator.h"
#include "support/Model.h"

namespace brisel::controls {
namespace {

using platform::make;
using platform::Ref;
using platform::Value;

class Editor : public testing::Test, protected test::Model {
 protected:
  Editor() {
    registerComponents(registry);
    list = registry.create<ListEditor>("BriselControls.ListEditor");
    generator->Init("list");
    list->create();
    list->repository(store.get());
    list->generator(generator.get());
    list->open("Stereotype");
    list->init();
  }

  [[nodiscard]] std::string names() const {
    std::string all;
    for (std::size_t row = 0; row < list->rowCount(); ++row) {
      all += (row > 0 ? " " : "") + list->name(row);
    }
    return all;
  }

  Ref<component::AutomaticShell> shell = make<component::AutomaticShell>();
  platform::ComponentRegistry registry{shell};
  Ref<store::UUIDGenerator> generator = make<store::UUIDGenerator>();
  Ref<ListEditor> list;
};

TEST_F(Editor, addsRenamesAndRemoves) {
  EXPECT_EQ(list->Add("entity"), 1);
  EXPECT_EQ(list->Add("  control\n"), 2);
  list->Rename(1, "boundary");
  EXPECT_EQ(names(), "boundary control");
  EXPECT_EQ(model->SearchObject("Stereotype", "Name", "control"), &list->node(1));
  EXPECT_NE(list->node(0).identifier(), list->node(1).identifier());
  list->Remove(1);
  EXPECT_EQ(names(), "control");
  EXPECT_EQ(count("Stereotype"), 1);

  EXPECT_THROW(list->Add(" \t"), platform::Error);
  EXPECT_THROW(list->Rename(1, ""), platform::Error);
  EXPECT_THROW(list->Rename(2, "x"), platform::Error);
  EXPECT_THROW(list->Remove(0), platform::Error);
  list->generator(nullptr);
  EXPECT_THROW(list->Add("x"), platform::Error);
  list->Enabled(false);
  list->Remove(1);
  EXPECT_EQ(names(), "control");
}

TEST_F(Editor, asksBeforeItRemovesWhatIsUsed) {
  addClass("A", "entity");
  addClass("B", "entity");
  addClass("C", "other");
  std::string asked;
  const auto hearing =
      shell->Answered.connect([&](const std::string&, const Ref<platform::ValueRecord>& told) {
        asked += told->get("text").text() + "\n";
      });
  shell->AnswerMessage("No");
  list->Remove(1);
  EXPECT_EQ(names(), "entity other");
  shell->AnswerMessage("Yes");
  list->Remove(1);
  EXPECT_EQ(asked,
            "\"entity\" is used 2 times. Remove it all the same?\n"
            "\"entity\" is used 2 times. Remove it all the same?\n");
  EXPECT_EQ(names(), "other");
  EXPECT_EQ(linkCount("Class.As.Stereotype"), 1) << "the links to it went along";
  EXPECT_EQ(owned(*find("Class", "A"), "Class.As.Stereotype"), "");
}

TEST_F(Editor, outlivesWhatHappensWhileItAsks) {
  addClass("A", "entity");
  const auto deleting = shell->Answered.connect(
      [&](const std::string&, const Ref<platform::ValueRecord>&) { store->Init(); });
  list->Remove(1);
  EXPECT_EQ(names(), "");
  list->Add("afterwards");
  EXPECT_EQ(names(), "afterwards") << "the emptied repository is followed";
}

TEST_F(Editor, followsTheRepositoryWhileItIsOpen) {
  std::string told;
  const auto inserted =
      list->RowInserted.connect([&](std::size_t row) { told += "+" + std::to_string(row); });
  const auto removed =
      list->RowRemoved.connect([&](std::size_t row) { told += "-" + std::to_string(row); });
  const auto changed =
      list->RowChanged.connect([&](std::size_t row) { told += "~" + std::to_string(row); });
  const NodeRef a = model->MakeStereotype("a", "A", "");
  const NodeRef b = model->MakeStereotype("b", "B", "");
  addClass("A");
  b->name("c");
  EXPECT_EQ(names(), "a c");
  store->MetaNodes("Stereotype")->extension()->Remove("A", false);
  EXPECT_EQ(names(), "c");
  EXPECT_EQ(told, "+0+1~1-0");
  const Ref<platform::Object> row = list->Rows()->Item(1);
  EXPECT_EQ(row->get("tag"), Value("B"));
  EXPECT_EQ(as<platform::ValueArray>(row->get("cells").object())->values(),
            std::vector<Value>{"c"});

  list->deinit();
  EXPECT_EQ(names(), "");
  model->MakeStereotype("d", "D", "");
  EXPECT_EQ(names(), "");
  EXPECT_THROW(list->Add("e"), platform::Error) << "no list is open";
  list->open("Stereotype");
  EXPECT_EQ(names(), "c d");
  list->destroy();
  EXPECT_THROW(list->open("Stereotype"), platform::Error);
}

TEST_F(Editor, opensATypeThatIsNotKnownYet) {
  list->open("Requirement");
  EXPECT_EQ(list->Add("fast"), 1);
  EXPECT_EQ(store->MetaNodes("Requirement")->extension()->Count(), 1);
}

}  // namespace
}  // namespace brisel::controls
