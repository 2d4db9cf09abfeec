#include <functional>

#include <gtest/gtest.h>

#include "controls/Button.h"
#include "controls/CheckBox.h"
#include "controls/ControlArray.h"
#include "controls/Label.h"
#include "controls/OptionGroup.h"
#include "controls/Panel.h"
#include "controls/TabStrip.h"
#include "controls/TextBox.h"
#include "platform/Error.h"

namespace brisel::controls {
namespace {

using platform::make;
using platform::Ref;
using platform::Value;

TEST(Controls, tellOfWhatIsSeenAndOfNothingElse) {
  const auto button = make<Button>("&Ok");
  const auto tick = make<CheckBox>("tick");
  const auto options = make<OptionGroup>(std::vector<std::string>{"a", "b"});
  const auto label = make<Label>("Name:");
  const auto panel = make<Panel>("Class");
  const auto text = make<TextBox>();
  const auto tabs = make<TabStrip>();
  tabs->add("one", "One");
  tabs->add("two", "Two");
  struct Case {
    const char* what;
    Control& control;
    std::function<void()> change;
  };
  const Case cases[] = {
      {"caption of a button", *button, [&] { button->Caption("Close"); }},
      {"caption of a label", *label, [&] { label->Caption("Type:"); }},
      {"tick", *tick, [&] { tick->value(1); }},
      {"option", *options, [&] { options->value(1); }},
      {"panel shown", *panel, [&] { panel->Visible(false); }},
      {"text box disabled", *text, [&] { text->Enabled(false); }},
      {"tab's caption", *tabs, [&] { tabs->caption("two", "Zwei"); }},
      {"tab selected", *tabs, [&] { tabs->select("two"); }},
      {"tab hidden", *tabs, [&] { tabs->visible("one", false); }},
  };
  for (const Case& one : cases) {
    int told = 0;
    const auto listening = one.control.Changed.connect([&] { ++told; });
    one.change();
    EXPECT_EQ(told, 1) << one.what;
    one.change();
    EXPECT_EQ(told, 1) << one.what << ", set to what it is";
  }
}

TEST(Controls, hearAPersonOnlyWhileEnabled) {
  const auto button = make<Button>("Ok");
  const auto tick = make<CheckBox>();
  const auto options = make<OptionGroup>(std::vector<std::string>{"a", "b"});
  const auto text = make<TextBox>();
  std::string heard;
  const auto clicked = button->Clicked.connect([&] { heard += "button "; });
  const auto ticked = tick->Clicked.connect([&] { heard += "tick "; });
  const auto chosen = options->Chosen.connect([&] { heard += "option "; });
  const auto act = [&] {
    button->Click();
    tick->SetValue(2);
    options->Choose(1);
    text->SetText("typed");
  };
  for (Control* control :
       {static_cast<Control*>(button.get()), static_cast<Control*>(tick.get()),
        static_cast<Control*>(options.get()), static_cast<Control*>(text.get())}) {
    control->Enabled(false);
  }
  act();
  EXPECT_EQ(heard, "");
  EXPECT_EQ(tick->value(), 0);
  EXPECT_EQ(options->value(), -1);
  EXPECT_EQ(text->Text(), "");

  button->Enabled(true);
  tick->Enabled(true);
  options->Enabled(true);
  text->Enabled(true);
  act();
  EXPECT_EQ(heard, "button tick option ");
  EXPECT_EQ(tick->value(), 2);
  EXPECT_EQ(options->value(), 1);
  EXPECT_EQ(text->Text(), "typed");

  button->Visible(false);
  tick->value(1);
  options->value(-1);
  button->Click();
  EXPECT_EQ(heard, "button tick option ") << "a hidden button, or what the program does";
  EXPECT_THROW(tick->SetValue(3), platform::Error);
  EXPECT_THROW(options->Choose(-1), platform::Error);
  EXPECT_THROW(options->value(2), platform::Error);
}

TEST(TabStrip, selectsWhatIsLeftWhenTheSelectedTabGoes) {
  const auto tabs = make<TabStrip>();
  int changes = 0;
  const auto listening = tabs->SelectionChanged.connect([&] { ++changes; });
  for (const char* key : {"a", "b", "c", "d"}) tabs->add(key, key);
  EXPECT_EQ(tabs->selected(), "a");
  EXPECT_THROW(tabs->add("a", "again"), platform::Error);

  tabs->Choose("c");
  tabs->Choose("c");
  EXPECT_EQ(changes, 1) << "told once of one change";
  tabs->visible("a", false);
  EXPECT_EQ(tabs->selected(), "c");
  EXPECT_THROW(tabs->Choose("a"), platform::Error) << "hidden";
  tabs->remove("c");
  EXPECT_EQ(tabs->selected(), "b") << "the first that is seen";
  tabs->remove("d");
  EXPECT_EQ(changes, 2) << "another tab than the selected one went";
  tabs->remove("b");
  EXPECT_EQ(tabs->selected(), "");
  EXPECT_THROW(tabs->select("b"), platform::Error);
  EXPECT_THROW(tabs->remove("b"), platform::Error);
}

TEST(Controls, answerByName) {
  const auto tabs = make<TabStrip>();
  tabs->add("key", "Caption");
  const Ref<platform::Object> tab = tabs->get("Tabs").object()->call("Item", {1}).object();
  EXPECT_EQ(tab->get("key"), Value("key"));
  EXPECT_EQ(tab->get("caption"), Value("Caption"));

  const auto tick = make<CheckBox>();
  tick->call("SetValue", {2});
  EXPECT_EQ(tick->get("value"), Value(2));
  const auto options = make<OptionGroup>(std::vector<std::string>{"Public", "Private"});
  options->call("Choose", {1});
  EXPECT_EQ(options->get("value"), Value(1));

  const auto first = make<Label>("first");
  const auto last = make<Panel>("last");
  const auto array = make<ControlArray>(std::vector<Ref<platform::Object>>{first, last});
  EXPECT_EQ(array->get("Count"), Value(2));
  EXPECT_EQ(array->call("Item", {0}).object()->get("Caption"), Value("first"));
  EXPECT_EQ(array->at<Panel>(1).Tag(), "last");
  EXPECT_THROW(array->call("Item", {2}), platform::Error);
  EXPECT_THROW(array->call("Item", {-1}), platform::Error);
}

}  // namespace
}  // namespace brisel::controls
