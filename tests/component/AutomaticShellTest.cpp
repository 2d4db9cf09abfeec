#include <filesystem>

#include <gtest/gtest.h>

#include "component/AutomaticShell.h"
#include "component/HostObject.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::component {
namespace {

using platform::CallError;
using platform::make;
using platform::Object;
using platform::Ref;
using platform::Value;
using platform::ValueArray;
using platform::ValueRecord;

/// A form with an in-place text, a pane inside, a control array and two buttons that close it.
class Dialog : public Object {
 public:
  class Button : public Object {
   public:
    explicit Button(Dialog* dialog) : m_dialog(dialog) {}
    void Click() { m_dialog->m_visible = false; }
    void SetText(std::string_view text) { m_dialog->m_text = text; }
    void Fail() { throw platform::Error(platform::ErrorNumber::notFound, "No such row"); }
    Ref<Button> Item(std::int64_t index) { return index == 2 ? Ref<Button>(this) : nullptr; }
    const platform::MemberTable& memberTable() const override {
      static const auto kTable = platform::MemberTableOf<Button>()
                                     .method("Click", &Button::Click)
                                     .method("SetText", &Button::SetText)
                                     .method("Fail", &Button::Fail)
                                     .method("Item", &Button::Item)
                                     .build();
      return kTable;
    }

   private:
    Dialog* m_dialog;
  };

  bool Visible() const { return m_visible; }
  void Visible(bool visible) { m_visible = visible; }
  Ref<Button> button() const { return m_button; }
  Ref<Dialog> Pane() const { return const_cast<Dialog*>(this); }
  std::string text() const { return m_text; }

  const platform::MemberTable& memberTable() const override {
    static const auto kTable = platform::MemberTableOf<Dialog>()
                                   .property("Visible", &Dialog::Visible, &Dialog::Visible)
                                   .property("Ok", &Dialog::button)
                                   .property("Texts", &Dialog::button)
                                   .property("Pane", &Dialog::Pane)
                                   .build();
    return kTable;
  }

 private:
  bool m_visible = false;
  std::string m_text;
  Ref<Button> m_button = make<Button>(this);
};

Value array(std::vector<Value> values) { return Value(make<ValueArray>(std::move(values))); }

class AutomaticShellTest : public testing::Test {
 protected:
  AutomaticShellTest() {
    connection = shell->Answered.connect([this](const std::string& kind, const auto& record) {
      told = kind;
      for (const auto& [name, value] : record->fields()) told += " " + name + "=" + value.text();
    });
  }

  Ref<AutomaticShell> shell = make<AutomaticShell>();
  std::string told;
  platform::Connection connection;
};

TEST_F(AutomaticShellTest, answersMessagesInTheOrderQueued) {
  const platform::Message message{"Title", "Text", {"Yes", "No"}, {}};
  shell->call("AnswerMessage", {"no"});
  shell->call("AnswerMessage", {"Maybe"});
  EXPECT_EQ(shell->showMessage(message), "No");
  EXPECT_EQ(told, "message title=Title text=Text buttons= answer=No");
  EXPECT_EQ(shell->showMessage(message), "Yes") << "a button that is not there";
  EXPECT_EQ(shell->showMessage(message), "Yes") << "nothing queued";
}

TEST_F(AutomaticShellTest, answersFileDialogsOnceEach) {
  const platform::FileDialog dialog{"Save", "DIM Format (*.dim)|*.dim", ".DIM", ""};
  for (const Value& path : {Value("/no/a"), Value("/no/b.dim"), Value(), Value("/no/c")}) {
    shell->call("AnswerFile", {path});
  }
  EXPECT_EQ(shell->askSaveFile(dialog), "/no/a.DIM");
  EXPECT_EQ(told, "dialog kind=save name=Save object= answer=/no/a.DIM");
  EXPECT_EQ(shell->askOpenFile(dialog), "/no/b.dim");
  EXPECT_EQ(shell->askOpenFile(dialog), std::nullopt) << "cancelled";
  EXPECT_EQ(shell->askOpenFile(dialog), "/no/c.DIM");
  EXPECT_EQ(shell->askOpenFile(dialog), std::nullopt) << "nothing queued";

  shell->call("AnswerFile", {std::filesystem::temp_directory_path().string()});
  EXPECT_EQ(shell->askOpenFile(dialog), std::filesystem::temp_directory_path().string())
      << "what is there without an ending is opened as it is";
  EXPECT_THROW(shell->call("AnswerFile", {1}), CallError);
}

TEST_F(AutomaticShellTest, takesTheStepsOfAForm) {
  struct Case {
    std::vector<Value> steps;
    std::string text, told;
  };
  const std::string start = "dialog kind=form name=frmDialog object= answer=";
  const std::vector<Case> cases = {
      {{array({"Ok", "SetText", "A"}), array({"Ok", "Click"}), array({"Ok", "SetText", "B"})},
       "A",
       start + "Ok"},
      {{array({"Pane.Pane.Texts(2)", "SetText", "C"})}, "C", start + "Cancel"},
      {{array({"Texts(1)", "Click"})}, "", start + "Cancel error=No control Texts(1)"},
      {{array({"Texts(2", "Click"})}, "", start + "Cancel error=No control Texts(2"},
      {{array({"Oops.Ok", "Click"})}, "", start + "Cancel error=Unknown member: Oops"},
      {{array({"Ok", "Fail"}), array({"Ok", "Click"})}, "", start + "Cancel error=No such row"},
      {{}, "", start + "Cancel"},
  };
  for (const Case& c : cases) {
    const auto dialog = make<Dialog>();
    shell->call("AnswerForm", {array(c.steps)});
    shell->runForm("frmDialog", *dialog);
    EXPECT_EQ(told, c.told);
    EXPECT_EQ(dialog->text(), c.text);
    EXPECT_FALSE(dialog->Visible());
  }
  for (const Value& wrong : {Value("Ok"), array({array({"Ok"})}), array({array({"Ok", 1})})}) {
    EXPECT_THROW(shell->call("AnswerForm", {wrong}), CallError);
  }
}

TEST_F(AutomaticShellTest, keepsWhatWasCopiedLast) {
  shell->copy({{"text/plain", "old"}});
  shell->copy({{"image/svg+xml", "<svg/>"}, {"text/plain", "new"}});
  const auto clipboard = platform::as<ValueRecord>(shell->call("Clipboard").object());
  EXPECT_EQ(clipboard->fields().size(), 2U);
  EXPECT_EQ(clipboard->get("image/svg+xml"), Value("<svg/>"));
}

TEST(HostObject, recordsCallsAndAnswersAsTold) {
  const auto host = make<HostObject>();
  host->call("Returns", {"GetComponent", Value(host)});
  EXPECT_EQ(host->call("GetComponent", {"Editor", 1}), Value(host));
  EXPECT_EQ(host->call("ShowHelp", {"a.html"}), Value());
  EXPECT_EQ(host->get("GetComponent"), Value(host)) << "also read as a property";
  host->set("Application", "app");
  EXPECT_EQ(host->get("Application"), Value("app"));
  EXPECT_EQ(host->call("Application"), Value("app"));
  EXPECT_EQ(host->get("Nothing"), Value());

  const Ref<platform::Collection> calls = host->Calls();
  ASSERT_EQ(calls->Count(), 3);
  EXPECT_EQ(calls->Item(1)->get("member"), Value("GetComponent"));
  const auto arguments = platform::as<ValueArray>(calls->Item(1)->get("arguments").object());
  EXPECT_EQ(arguments->values(), (std::vector<Value>{"Editor", 1}));

  host->terminate();
  EXPECT_EQ(calls->Count(), 0);
  EXPECT_EQ(host->get("GetComponent"), Value());
}

}  // namespace
}  // namespace brisel::component
