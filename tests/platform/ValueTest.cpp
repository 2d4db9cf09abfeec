#include <limits>

#include <gtest/gtest.h>

#include "platform/Collection.h"
#include "platform/Error.h"
#include "platform/ErrorTrap.h"
#include "platform/Shell.h"
#include "platform/Text.h"
#include "platform/Value.h"

namespace brisel::platform {
namespace {

TEST(Value, equalsInKindAndContent) {
  EXPECT_EQ(Value(), Value());
  EXPECT_NE(Value(), Value(""));
  EXPECT_NE(Value(1), Value(1.0));
  EXPECT_NE(Value(1), Value(true));
  EXPECT_EQ(Value("a"), Value(std::string("a")));
  const auto list = make<ObjectList>();
  EXPECT_EQ(Value(list), Value(Ref<Object>(list)));
  EXPECT_EQ(Value(Ref<Object>()), Value()) << "no object is empty";
}

TEST(Value, givesWhatItHoldsOrFails) {
  EXPECT_EQ(Value(3.0).integer(), 3);
  EXPECT_EQ(Value(3).number(), 3.0);
  EXPECT_FALSE(Value().object());
  for (const Value& value : {Value(3.5), Value("3"), Value(), Value(true),
                             Value(std::numeric_limits<double>::infinity()),
                             Value(std::numeric_limits<double>::quiet_NaN()), Value(1e300)}) {
    EXPECT_THROW(static_cast<void>(value.integer()), Error) << value.text();
  }
  EXPECT_THROW(static_cast<void>(Value(1).string()), Error);
  EXPECT_THROW(static_cast<void>(Value("x").object()), Error);
}

TEST(Value, readsStoredFlagsLeniently) {
  for (const Value& yes : {Value(true), Value(1), Value("True"), Value("%TRUE%")}) {
    EXPECT_TRUE(yes.isTrue()) << yes.text();
  }
  for (const Value& no : {Value(), Value(false), Value(0), Value("yes"), Value("%FALSE%")}) {
    EXPECT_FALSE(no.isTrue()) << no.text();
  }
}

TEST(Text, countsColumnsOfFixedPitch) {
  for (const auto& [text, columns] :
       {std::pair{"abc", 3}, {"", 0}, {"é", 1}, {"e\u0301", 1}, {"漢字", 4}, {"😀", 2}}) {
    EXPECT_EQ(columnsOf(text), columns) << text;
  }
  EXPECT_EQ(columnsOf("\xC3"), 1) << "a broken end";
  EXPECT_EQ(columnsOf("\xFF\xFF"), 2);
}

TEST(ObjectList, isWalkedFromOneAndCopied) {
  const auto list = make<ObjectList>();
  const auto first = make<ObjectList>();
  list->add(first);
  list->add(make<ObjectList>());
  EXPECT_EQ(list->Item(1), Ref<Object>(first));
  EXPECT_THROW(static_cast<void>(list->Item(0)), Error);
  EXPECT_THROW(static_cast<void>(list->Item(3)), Error);
  const auto copy = list->copy();
  list->Clear();
  EXPECT_EQ(copy->Count(), 2);
  int walked = 0;
  for (Object& one : each<Object>(copy)) walked += &one == first.get() ? 1 : 10;
  EXPECT_EQ(walked, 11);
}

class RecordingShell : public Shell {
 public:
  std::string showMessage(const Message& message) override {
    shown = message;
    return message.buttons.front();
  }
  std::optional<std::string> askOpenFile(const FileDialog&) override { return {}; }
  std::optional<std::string> askSaveFile(const FileDialog&) override { return {}; }
  void showPopup(ToolBarControl&, std::string_view) override {}
  void runForm(std::string_view, Object&) override {}
  void copy(const std::vector<std::pair<std::string, std::string>>&) override {}

  Message shown;
};

TEST(ErrorTrap, reportsWhateverIsThrownAndGivesAnEmptyResult) {
  const auto shell = make<RecordingShell>();
  const auto report = [&](const std::function<int()>& body) {
    EXPECT_EQ(trapped(*shell, "Module", "Work", body), 0);
    return shell->shown.text;
  };
  EXPECT_EQ(report([]() -> int { throw Error(ErrorNumber::subscript, "No item 3"); }),
            "Error No: 9  'No item 3'(Module 'Module' Function 'Work()')");
  EXPECT_EQ(report([]() -> int { throw std::runtime_error("disk"); }),
            "Error No: 5  'disk'(Module 'Module' Function 'Work()')");
  EXPECT_EQ(report([]() -> int { throw 7; }),
            "Error No: 5  'Unknown failure'(Module 'Module' Function 'Work()')");
  EXPECT_EQ(shell->shown.title, "Brisel");
  EXPECT_EQ(shell->shown.icon, MessageIcon::critical);
  EXPECT_EQ(errorReport(5, "x", "", ""), "Error No: 5  'x'");
}

}  // namespace
}  // namespace brisel::platform
