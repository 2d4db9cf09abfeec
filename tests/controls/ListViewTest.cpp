#include <gtest/gtest.h>

#include "controls/ListView.h"
#include "platform/Error.h"
#include "support/Model.h"

namespace brisel::controls {
namespace {

using platform::each;
using platform::Link;
using platform::make;
using platform::Ref;
using platform::Value;

/// The attributes of a class "A" (a, b, c) beside those of a class "B" (x).
class List : public testing::Test, protected test::Model {
 protected:
  List() {
    owner = addClass("A");
    addClass("B");
    for (const char* name : {"a", "b"}) addAttribute("A", name, "Integer");
    addAttribute("B", "x", "Integer");
    addAttribute("A", "c", "Integer");
    list->addColumn("Name", "Name", 1000);
    list->addColumn("Scope", "Scope", 1000);
  }

  void fill() { list->fill(*store->MetaLinks("Class.Has.Attrib"), *owner); }
  [[nodiscard]] Link& link(std::size_t index) const { return list->link(index); }
  /// The first cells of all rows: "a b c".
  [[nodiscard]] std::string names() const {
    std::string all;
    for (std::size_t row = 0; row < list->rowCount(); ++row) {
      all += (row > 0 ? " " : "") + list->cell(row, 0);
    }
    return all;
  }
  [[nodiscard]] std::string ticked() const {
    std::string all;
    for (const Link& one : each<Link>(list->tickedRows())) all += one.Target()->name();
    return all;
  }

  NodeRef owner;
  Ref<ListView> list = make<ListView>();
};

TEST_F(List, showsTheLinksThatLeaveTheOwner) {
  const auto type = store->MetaLinks("Class.Has.Attrib");
  list->fill(*type->extension(), *owner);
  EXPECT_EQ(names(), "a b c");
  list->fill(*type, *owner);
  EXPECT_EQ(names(), "a b c") << "filled again, not on top";

  // A part of the links, of which the owner has more.
  auto some = make<platform::ObjectList>();
  some->add(&link(2));
  some->add(owner->outgoing("Class.Has.Attrib")->Item(1));
  some->add(find("Class", "B")->outgoing("Class.Has.Attrib")->Item(1));
  list->fill(*some, *owner);
  EXPECT_EQ(names(), "c a");

  some->Clear();
  list->fill(*some, *owner);
  EXPECT_EQ(names(), "");
  EXPECT_THROW(list->call("fill", {Value(owner), Value(owner)}), platform::CallError);
}

TEST_F(List, readsItsCellsWhenAskedAndOutlivesWhatItShows) {
  fill();
  const Ref<platform::Collection> rows = list->Rows();
  const NodeRef b = link(1).Target();
  b->name("renamed");
  b->SetProperty("scope", "private");
  EXPECT_EQ(list->cell(1, 0) + list->cell(1, 1), "renamedprivate");
  EXPECT_EQ(as<platform::ValueArray>(rows->Item(2)->get("cells").object())->values(),
            (std::vector<Value>{"renamed", "private"}));
  EXPECT_EQ(rows->Item(2)->get("tag"), Value(b->identifier()));

  list->tickBoxes(true);
  list->tickAll();
  list->select(&link(0));
  const Ref<Link> first = &link(0);
  const std::string tag = b->identifier();
  store->RemoveAssoc(*first);                                   // the link alone
  store->MetaNodes("Attrib")->extension()->Remove(tag, false);  // the target alone
  EXPECT_EQ(names(), "  c");
  EXPECT_EQ(ticked(), "c");
  EXPECT_FALSE(list->selectedRow());
  EXPECT_EQ(rows->Item(2)->get("tag"), Value(""));
  int told = 0;
  const auto selecting = list->RowSelected.connect([&](Link&) { ++told; });
  const auto opening = list->RowOpened.connect([&](Link&) { ++told; });
  list->Select(1);
  list->Open(2);
  EXPECT_EQ(told, 0);
  list->removeRow(*first);
  EXPECT_EQ(names(), " c");
}

TEST_F(List, keepsItsSelectionAsRowsComeAndGo) {
  fill();
  list->select(&link(1));
  const Ref<Link> a = &link(0);
  const Ref<Link> b = &link(1);
  std::string told;
  const auto inserted =
      list->RowInserted.connect([&](std::size_t row) { told += "+" + std::to_string(row); });
  const auto removed = list->RowRemoved.connect([&](std::size_t row) {
    told += "-" + std::to_string(row);
    // What a view sees while it is told holds already.
    EXPECT_LT(list->currentRow().value_or(0), list->rowCount());
  });
  const auto current = list->CurrentChanged.connect([&] { told += "!"; });
  const auto reset = list->RowsReset.connect([&] {
    told += "0";
    EXPECT_FALSE(list->currentRow());
  });
  list->removeRow(*a);
  EXPECT_EQ(list->selectedRow(), b);
  list->addRow(*a);
  list->removeRow(*b);
  EXPECT_FALSE(list->selectedRow());
  list->removeRow(*b);
  EXPECT_EQ(told, "-0+2-0!") << "a row that is not there is not removed";
  EXPECT_EQ(names(), "c a");
  list->select(a.get());
  list->clearRows();
  EXPECT_EQ(told, "-0+2-0!!0!");
}

TEST_F(List, doesWhatAPersonDoes) {
  fill();
  std::string told;
  const auto selecting =
      list->RowSelected.connect([&](Link& one) { told += "s" + one.Target()->name(); });
  const auto opening =
      list->RowOpened.connect([&](Link& one) { told += "o" + one.Target()->name(); });
  list->select(&link(2));
  EXPECT_EQ(told, "") << "the program selects without being told of it";
  list->Select(2);
  list->Select(2);
  list->Open(1);
  EXPECT_EQ(told, "sbsboa");
  EXPECT_EQ(list->selectedRow()->Target()->name(), "a");
  for (const std::int64_t row : {0, 4, -1}) {
    EXPECT_THROW(list->Select(row), platform::Error) << row;
    EXPECT_THROW(list->Open(row), platform::Error) << row;
  }

  EXPECT_THROW(list->Tick(1), platform::Error) << "no tick boxes yet";
  list->tickBoxes(true);
  list->Tick(3);
  list->Tick(1);
  EXPECT_EQ(ticked(), "ac") << "in the order of the rows";
  list->tickAll();
  list->Untick(2);
  EXPECT_EQ(ticked(), "ac");
  list->Enabled(false);
  list->Untick(1);
  list->Select(2);
  EXPECT_EQ(ticked(), "ac");
  EXPECT_EQ(told, "sbsboa");
}

TEST_F(List, letsAListenerRemoveTheVeryRow) {
  fill();
  const auto selecting = list->RowSelected.connect([&](Link& one) {
    const NodeRef node = one.Target();
    model->DeleteAttribute(node->identifier());
    list->removeRow(one);
  });
  list->Select(2);
  EXPECT_EQ(names(), "a c");
}

}  // namespace
}  // namespace brisel::controls
