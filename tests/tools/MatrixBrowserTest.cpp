#include <functional>

#include <gtest/gtest.h>

#include "component/AutomaticShell.h"
#include "component/Suite.h"
#include "platform/Error.h"
#include "platform/ValueArray.h"
#include "platform/ValueRecord.h"
#include "repository/NewModel.h"
#include "support/Model.h"
#include "support/RepositoryInvariants.h"
#include "tools/MatrixBrowser.h"

namespace brisel::tools {
namespace {

using platform::Ref;
using platform::Value;
using Kind = repository::RelationshipKind;

/// A small shop: Order has Line, uses Customer; Special is an Order; Part is in Part; Note is
/// alone.
class MatrixBrowserTest : public testing::Test, protected test::Model {
 protected:
  MatrixBrowserTest() : registry(shell) {
    component::registerSuite(registry);
    for (const char* name : {"Special", "Order", "Line", "Customer", "Part", "Note"}) {
      addClass(name, name == std::string("Part") ? "entity" : "");
    }
    join(Kind::composite, "lines", "Order", "Line");
    join(Kind::association, "by", "Order", "Customer");
    join(Kind::association, "of", "Customer", "Order");
    join(Kind::generalization, "is", "Special", "Order");
    join(Kind::shared, "in", "Part", "Part");
    browser = registry.create<MatrixBrowser>("BriselUtility.MatrixBrowser");
    browser->SetRepository(store.get());
    browser->Sort("name");
  }

  NodeRef join(Kind kind, std::string_view id, std::string_view from, std::string_view to) {
    return repository::makeRelationship(*model, kind, id, from, to);
  }
  /// "Customer Line Note": the names in their order.
  std::string rows() {
    std::string names;
    for (auto& node : platform::each<platform::Node>(browser->Rows())) {
      names += (names.empty() ? "" : " ") + node.name();
    }
    return names;
  }
  MatrixBrowser::Index at(std::string_view name) { return browser->numberOf(*find("Class", name)); }
  /// "by:association> of:association<": what a cell shows, with the direction.
  std::string cell(std::string_view row, std::string_view column) {
    std::string text;
    const auto shown = browser->Cell(at(row), at(column));
    for (const Value& value : shown->values()) {
      const auto record = value.object();
      text += (text.empty() ? "" : " ") + record->get("identifier").string() + ':' +
              record->get("kind").string() + (record->get("forward").boolean() ? '>' : '<');
    }
    return text;
  }
  /// The error that a call raises, or "".
  static std::string errorOf(const std::function<void()>& call) {
    try {
      call();
    } catch (const platform::Error& error) {
      return error.what();
    }
    return {};
  }

  Ref<component::AutomaticShell> shell = platform::make<component::AutomaticShell>();
  platform::ComponentRegistry registry;
  Ref<MatrixBrowser> browser;
};

TEST_F(MatrixBrowserTest, showsKindsAndDirections) {
  EXPECT_EQ(rows(), "Customer Line Note Order Part Special");
  EXPECT_EQ(cell("Order", "Line"), "lines:composite>");
  EXPECT_EQ(cell("Line", "Order"), "lines:composite<");
  EXPECT_EQ(cell("Order", "Customer"), "by:association> of:association<");
  EXPECT_EQ(cell("Special", "Order"), "is:generalization>");
  EXPECT_EQ(cell("Part", "Part"), "in:shared>") << "a loop is met once";
  EXPECT_EQ(cell("Note", "Order"), "");
  find("Aggregation", "lines")->SetProperty("TargetMultiplicity", "1..*");
  find("Aggregation", "lines")->SetProperty("TargetRolename", "lines");
  EXPECT_EQ(browser->Words(at("Line"), at("Order")),
            "Order is composed of Line (\"New Aggregation\", ? to 1..* lines)");
  EXPECT_EQ(browser->Words(at("Special"), at("Order")), "Special is a sub class of Order");
  EXPECT_EQ(browser->Words(at("Note"), at("Line")), "Nothing joins Note and Line");
  EXPECT_EQ(browser->Words(at("Part"), 0), "Part <<entity>>: 1 relationship");
}

TEST_F(MatrixBrowserTest, filters) {
  browser->Filter("ORD  note", "", "");
  EXPECT_EQ(rows(), "Note Order");
  browser->Neighbours(true);
  EXPECT_EQ(rows(), "Customer Line Note Order Special");
  browser->KindFilter("composite generalization");
  EXPECT_EQ(rows(), "Line Note Order Special") << "only what is shown makes a neighbour";
  EXPECT_EQ(cell("Special", "Order"), "is:generalization>");
  browser->RelatedOnly(true);
  EXPECT_EQ(rows(), "Line Order Special");
  browser->Filter("", "entity", "");
  EXPECT_EQ(rows(), "Part");
  browser->Filter("", "<NONE>", "");
  browser->RelatedOnly(false);
  EXPECT_EQ(rows(), "Customer Line Note Order Special");
  EXPECT_EQ(errorOf([&] { browser->KindFilter("friendship"); }),
            "Not a kind of relationship: friendship");
  EXPECT_EQ(browser->KindFilter(), "association composite shared generalization");
}

TEST_F(MatrixBrowserTest, ordersByGroups) {
  browser->Sort("clusters");
  const std::string before = rows();
  EXPECT_TRUE(before.ends_with("Note Part")) << before;
  // Under the hand nothing moves; what is new stands at the end until it is sorted anew.
  addClass("Added");
  join(Kind::association, "new", "Added", "Note");
  EXPECT_EQ(rows(), before + " Added");
  browser->Select(at("Note"), at("Added"));
  browser->Sort("clusters");
  EXPECT_NE(rows(), before + " Added");
  EXPECT_EQ(browser->CurrentRow(), at("Note"));
  EXPECT_EQ(browser->CurrentColumn(), at("Added"));
  const std::vector<Value> groups = browser->Groups()->values();
  EXPECT_EQ(groups[static_cast<std::size_t>(at("Note")) - 1],
            groups[static_cast<std::size_t>(at("Added")) - 1]);
  EXPECT_NE(errorOf([&] { browser->Sort("size"); }), "");
}

TEST_F(MatrixBrowserTest, editsThroughTheConventions) {
  std::string told;
  const auto edited = browser->Edited.connect(
      [&](const std::string& type, const std::string& key) { told += type + ' ' + key + ';'; });
  const auto made = browser->Make("composite", at("Line"), at("Part"));
  EXPECT_EQ(ends(*made), "Line>Part");
  EXPECT_TRUE(made->GetProperty("isComposite").isTrue());
  EXPECT_EQ(cell("Line", "Part"), made->identifier() + ":composite>");
  const auto below = browser->Make("generalization", at("Line"), at("Note"));
  EXPECT_EQ(ends(*below), "Note>Line") << "the row is the sub class";
  EXPECT_EQ(told,
            "Aggregation " + made->identifier() + ";Generalization " + below->identifier() + ';');

  told.clear();
  browser->Delete(at("Line"), at("Part"), "");
  browser->Delete(at("Customer"), at("Order"), "by");
  EXPECT_EQ(cell("Customer", "Order"), "of:association>");
  EXPECT_EQ(told, "Aggregation " + made->identifier() + ";Association by;");
  EXPECT_EQ(errorOf([&] { browser->Delete(at("Customer"), at("Order"), "by"); }),
            "The cell in row 1 and column 4 shows no relationship by");
  test::checkInvariants(*store);
}

TEST_F(MatrixBrowserTest, refusesWhatTheEditorWouldRefuse) {
  const auto refusal = [&](const char* sub, const char* super) {
    return errorOf([&] { browser->Make("generalization", at(sub), at(super)); });
  };
  EXPECT_EQ(refusal("Note", "Note"), "A class cannot be its own super class");
  EXPECT_EQ(refusal("Order", "Special"), "Special is already below Order");
  EXPECT_EQ(refusal("Special", "Order"), "Special is a sub class of Order already");
  EXPECT_NE(errorOf([&] { browser->Make("kinship", 1, 1); }), "");
  EXPECT_NE(errorOf([&] { browser->Make("shared", 0, 1); }), "");
  EXPECT_NE(errorOf([&] { browser->Delete(1, 7, ""); }), "");
  EXPECT_EQ(count("Generalization"), 1);
  browser->makeChosen("generalization", at("Note"), at("Note"));  // a person is told in a message
}

TEST_F(MatrixBrowserTest, followsTheModel) {
  int changes = 0;
  rows();
  const auto changed = browser->Changed.connect([&] { ++changes; });
  join(Kind::association, "a1", "Note", "Line");
  join(Kind::association, "a2", "Note", "Part");
  EXPECT_EQ(changes, 1) << "told once, until someone looks";
  EXPECT_EQ(cell("Line", "Note"), "a1:association<");
  find("Class", "Note")->name("Aside");
  EXPECT_EQ(changes, 2);
  EXPECT_TRUE(rows().starts_with("Aside Customer"));
  find("Aggregation", "lines")->SetProperty("ISCOMPOSITE", false);
  EXPECT_EQ(cell("Order", "Line"), "lines:shared>");
  model->SetStereotype(*find("Class", "Part"), nullptr);
  EXPECT_EQ(browser->Stereotypes()->values().size(), 0U);
  // A relationship that is moved, and a class that leaves while relationships end at it.
  model->MoveAssoc(*find("Association", "a1"), *find("Class", "Line"), *find("Class", "Order"));
  EXPECT_EQ(cell("Line", "Order"), "a1:association> lines:shared<");
  browser->Select(at("Order"), at("Special"));
  model->DeleteClass("Order");
  EXPECT_EQ(rows(), "Aside Customer Line Part Special");
  EXPECT_EQ(browser->Incomplete(), 5);
  EXPECT_EQ(browser->CurrentRow(), 4) << "stays where it was";
  EXPECT_EQ(browser->CurrentColumn(), at("Special"));
  store->Init();
  EXPECT_EQ(rows(), "");
  EXPECT_EQ(browser->Incomplete(), 0);
  EXPECT_EQ(browser->CurrentRow(), 0);
}

TEST_F(MatrixBrowserTest, takesModelsOfAnyKind) {
  const auto other = repository::newModel(registry, "other");
  other->MakeClass("", "nameless", "", "", "", "");
  const auto half = other->GetRepository()->MakeNode("Association", "", "half");
  other->GetRepository()->MakeLink(
      "Association.Source.Class", "", "end", *half,
      *platform::as<platform::Node>(other->GetRepository()->MetaNodes("Class")->find("nameless")));
  browser->SetRepository(other->GetRepository().get());
  EXPECT_EQ(browser->Rows()->Count(), 1);
  EXPECT_EQ(browser->Words(1, 1), "(unnamed) has no relationship with itself");
  EXPECT_EQ(browser->Incomplete(), 1);
  // The model before is not followed any more.
  int changes = 0;
  const auto changed = browser->Changed.connect([&] { ++changes; });
  addClass("Unseen");
  EXPECT_EQ(changes, 0);
  EXPECT_EQ(browser->Rows()->Count(), 1);
  // One that was never made ready, and none at all.
  browser->SetRepository(registry.create<platform::MetaRepository>("BriselCLS.Meta").get());
  EXPECT_EQ(browser->Rows()->Count(), 0);
  browser->SetRepository(nullptr);
  EXPECT_FALSE(browser->KeyPress("q", ""));
  for (const char* key : {"Right", "Down", "End", "PageDown", "Enter", "Delete", "Space"}) {
    EXPECT_TRUE(browser->KeyPress(key, "ctrl")) << key;
  }
  EXPECT_EQ(browser->CurrentRow(), 0);
  EXPECT_NE(errorOf([&] { browser->Make("shared", 1, 1); }), "");
}

TEST_F(MatrixBrowserTest, goesByKeys) {
  struct Step {
    const char* key;
    const char* modifiers;
    MatrixBrowser::Index row, column;
  };
  browser->pageSize(2, 3);
  browser->Select(1, 1);
  for (const Step& step :
       {Step{"Right", "", 1, 2}, Step{"Right", "ctrl", 1, 4}, Step{"Right", "ctrl", 1, 6},
        Step{"Left", "ctrl", 1, 4}, Step{"Down", "ctrl", 2, 4}, Step{"PageDown", "", 4, 4},
        Step{"PageDown", "shift", 4, 6}, Step{"PageUp", "shift", 4, 3}, Step{"End", "", 4, 6},
        Step{"Home", "", 4, 1}, Step{"Left", "", 4, 0}, Step{"Left", "", 4, 0},
        Step{"End", "ctrl", 6, 6}, Step{"Home", "ctrl", 1, 1}, Step{"Up", "", 0, 1}}) {
    EXPECT_TRUE(browser->KeyPress(step.key, step.modifiers));
    EXPECT_EQ(browser->CurrentRow(), step.row) << step.key << step.modifiers;
    EXPECT_EQ(browser->CurrentColumn(), step.column) << step.key << step.modifiers;
  }
  std::string heard;
  const auto menu = browser->MenuAsked.connect(
      [&](int row, int column) { heard += std::to_string(row) + ',' + std::to_string(column); });
  const auto selected = browser->Selected.connect([&](const Ref<platform::ValueArray>& chosen) {
    for (const Value& key : chosen->values()) heard += key.string() + ' ';
  });
  browser->KeyPress("Enter", "");  // on a name: its class
  EXPECT_EQ(heard, "Customer ");
  heard.clear();
  browser->Choose(at("Customer"), at("Order"));
  EXPECT_EQ(heard, "of by ");
  heard.clear();
  browser->KeyPress("Delete", "");  // of two the person says which
  EXPECT_EQ(heard, "1,4");
  EXPECT_EQ(count("Association"), 2);
  browser->Select(at("Special"), at("Order"));
  browser->KeyPress("Delete", "");
  EXPECT_EQ(count("Generalization"), 0);
}

TEST_F(MatrixBrowserTest, endsOnce) {
  int closed = 0, front = 0;
  const auto counting = browser->Closed.connect([&] { ++closed; });
  const auto raised = browser->FrontAsked.connect([&] { ++front; });
  browser->PopUp();
  browser->PopUp();
  EXPECT_EQ(front, 1);
  browser->KeyPress("Escape", "");
  browser->Close();
  browser->terminate();
  EXPECT_EQ(closed, 1);
  EXPECT_EQ(browser->Rows()->Count(), 0);
  browser->SetRepository(store.get());
  browser->PopUp();
  EXPECT_EQ(front, 1);
  EXPECT_EQ(browser->Rows()->Count(), 6);
}

}  // namespace
}  // namespace brisel::tools
