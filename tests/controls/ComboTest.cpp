#include <gtest/gtest.h>

#include "controls/Combo.h"
#include "platform/Error.h"
#include "support/Model.h"

namespace brisel::controls {
namespace {

using platform::make;
using platform::Ref;
using platform::Value;

class ComboBox : public testing::Test, protected test::Model {
 protected:
  ComboBox() {
    for (const char* name : {"Boolean", "Integer", "BigInteger", "String"}) dataType(name);
    combo->create();
    combo->fill(*store->MetaNodes("DataType")->extension(), "Name");
  }

  [[nodiscard]] std::string entries() const {
    std::string all;
    const auto texts = combo->Entries();
    for (const Value& text : texts->values()) all += text.string() + " ";
    return all;
  }
  [[nodiscard]] std::string selected() const {
    const NodeRef node = combo->selection();
    return node ? node->name() : "-";
  }
  void remove(std::string_view type) {
    store->MetaNodes("DataType")->extension()->Remove(dataType(type)->identifier(), false);
  }

  Ref<Combo> combo = make<Combo>();
  std::string told;
  platform::Connection chosen = combo->Chosen.connect([this] { told += "c(" + selected() + ")"; });
  platform::Connection entered =
      combo->Entered.connect([this](const std::string& text) { told += "e(" + text + ")"; });
};

TEST_F(ComboBox, findsEntriesAsOneTypes) {
  struct Case {
    const char* text;
    std::size_t limit;
    std::vector<std::size_t> found;
  };
  for (const Case& one : {Case{"int", 10, {1, 2}}, Case{"B", 10, {0, 2}}, Case{"IN", 10, {1, 2, 3}},
                          Case{"in", 2, {1, 2}}, Case{"g", 2, {1, 2}}, Case{"x", 10, {}},
                          Case{"", 3, {0, 1, 2}}, Case{"int", 0, {}}}) {
    EXPECT_EQ(combo->matches(one.text, one.limit), one.found) << one.text << " " << one.limit;
  }
  // What begins with the text comes first wherever it stands.
  dataType("gauge");
  combo->refresh();
  EXPECT_EQ(combo->matches("g", 2), (std::vector<std::size_t>{4, 1}));
}

TEST_F(ComboBox, choosesByTextAndTellsOfIt) {
  combo->selection(dataType("String").get());
  EXPECT_EQ(combo->Text(), "String");
  EXPECT_EQ(told, "") << "selected by the program";
  combo->Choose("Integer");
  combo->chooseEntry(0);
  EXPECT_EQ(told, "c(Integer)c(Boolean)");
  try {
    combo->Choose("integer");
    ADD_FAILURE() << "chosen in another case";
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find("'integer'"), std::string::npos);
  }
  combo->Enabled(false);
  combo->Choose("Integer");
  combo->Type("x");
  EXPECT_EQ(selected(), "Boolean");
  EXPECT_EQ(combo->Text(), "Boolean");
}

TEST_F(ComboBox, takesTypedTextForWhatItSays) {
  combo->selection(dataType("String").get());
  combo->Type("Inte");
  EXPECT_EQ(combo->Text(), "Inte");
  EXPECT_EQ(selected(), "String") << "no entry of that text";
  combo->Type("Integer");
  EXPECT_EQ(selected(), "Integer");
  EXPECT_EQ(told, "") << "typing chooses nothing";
  combo->cancelTyping();
  EXPECT_EQ(combo->Text(), "String");

  combo->Type("Boolean");
  combo->Enter("Boolean");
  EXPECT_EQ(combo->Text() + told, "Booleanc(Boolean)");
  combo->Enter(" ");
  EXPECT_EQ(combo->Text() + told, "Booleanc(Boolean)") << "nothing was entered";
  combo->Enter("Vector");
  EXPECT_EQ(combo->Text() + told, "Vectorc(Boolean)e(Vector)");
  EXPECT_EQ(selected(), "Boolean") << "what nobody made is not selected";
  combo->selection(dataType("Vector").get());
  combo->Type("");
  EXPECT_EQ(selected(), "Vector") << "an emptied field is on the way to something";
}

TEST_F(ComboBox, keepsUpWithTheModel) {
  combo->selection(dataType("Integer").get());
  dataType("Integer")->name("Whole");
  EXPECT_EQ(combo->Text(), "Whole");
  EXPECT_THROW(combo->Choose("Integer"), platform::Error) << "its name before";
  dataType("Float");
  remove("Boolean");
  EXPECT_EQ(entries(), "Whole BigInteger String Float ");
  EXPECT_THROW(combo->Choose("Boolean"), platform::Error);
  combo->Choose("Float");
  EXPECT_EQ(selected(), "Float");
  remove("Float");
  EXPECT_EQ(selected() + combo->Text(), "-");
  combo->chooseEntry(3);
  EXPECT_EQ(told, "c(Float)") << "of the list as it was before the removal";
  EXPECT_EQ(combo->entryCount(), 3U);

  combo->destroy();
  EXPECT_EQ(entries() + combo->Text(), "");
  combo->refresh();
  EXPECT_EQ(combo->entryCount(), 0U);
}

TEST_F(ComboBox, answersByName) {
  const auto other = make<Combo>();
  other->call("fill", {Value(store->MetaNodes("DataType")), "Name"});
  other->call("Choose", {"String"});
  EXPECT_EQ(other->get("Text"), Value("String"));
  EXPECT_EQ(other->get("selection"), Value(dataType("String")));
  other->call("SetText", {"Str"});
  EXPECT_EQ(other->get("Text"), Value("Str"));
  EXPECT_EQ(other->get("selection"), Value(dataType("String")));
  other->set("selection", Value());
  EXPECT_EQ(other->get("Text"), Value(""));
  EXPECT_THROW(other->call("fill", {Value(store->linkTypes()), "Name"}), platform::CallError);
}

}  // namespace
}  // namespace brisel::controls
