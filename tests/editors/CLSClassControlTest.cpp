#include <gtest/gtest.h>

#include "editor/CLSEditor.h"
#include "platform/ValueArray.h"
#include "support/EditorBench.h"

namespace brisel::editors {
namespace {

using platform::each;
using test::EditorBench;

/// The texts of a list's first column: "a b".
std::string namesIn(const controls::ListView& list) {
  std::string names;
  for (std::size_t i = 0; i < list.rowCount(); ++i) {
    names += (names.empty() ? "" : " ") + list.cell(i, 0);
  }
  return names;
}

class CLSClassControlTest : public testing::Test, protected EditorBench {
 protected:
  CLSClassControlTest() {
    order = addClass("Order", "entity");
    addClass("Other");
    addAttribute("Order", "number", "Int");
    addAttribute("Other", "strange", "Int");
    dataType("Text");
    editor->Populate();
    editor->Compartments("ViewAttributes");
    editor->Compartments("ViewOperations");
    listening = editor->ClassChanged.connect([this](const std::string& key) { told += key + ' '; });
    editor->EditClass("Order");
  }
  std::string attributes() const { return owned(*order, "Class.Has.Attrib"); }
  std::string typeOf(const platform::Ref<platform::Node>& member) const {
    return member ? model->GetDataType(*member)->name() : "nothing";
  }
  NodeRef attribute(const char* name) const {
    const auto link = model->SearchLinkedObject(*order, "Class.Has.Attrib", true, "Name", name);
    return link ? link->Target() : NodeRef();
  }
  NodeRef operation(const char* name) const {
    const auto link = model->SearchLinkedObject(*order, "Class.Has.Operation", true, "Name", name);
    return link ? link->Target() : NodeRef();
  }

  CLSClassControl& pane = *editor->CLSClassControl1();
  NodeRef order;
  std::string told;
  platform::Connection listening;
};

TEST_F(CLSClassControlTest, showsTheClass) {
  EXPECT_TRUE(pane.Visible());
  EXPECT_EQ(namesIn(*pane.Attributes()), "number");
  EXPECT_EQ(pane.TabStrip1()->selected(), "Class");
  EXPECT_EQ(pane.AttributeScope()->value(), 0);
  EXPECT_EQ(pane.AttributeName()->Text(), "");
  EXPECT_EQ(pane.CLSSelectStereotype1()->Selection()->name(), "entity");
  EXPECT_EQ(pane.PropertyClass()->node(), order);
  pane.TabStrip1()->Choose("Operations");
  EXPECT_FALSE(pane.Picture1()->at<controls::Panel>(0).Visible());
  EXPECT_TRUE(pane.Picture1()->at<controls::Panel>(2).Visible());
  EXPECT_EQ(editor->ActiveBar21()->get("PopupBand"), platform::Value(""));
}

TEST_F(CLSClassControlTest, severalNamesMakeSeveralMembers) {
  pane.AttributeName()->SetText(" a; b ;; c");
  pane.ToolAttr()->Click("miAttrAdd");
  EXPECT_EQ(attributes(), "number") << "no type is chosen";
  pane.AttributeScope()->Choose(2);
  pane.AttributeType()->Choose("Text");
  EXPECT_EQ(attributes(), "number a b c");
  EXPECT_EQ(namesIn(*pane.Attributes()), "number a b c");
  EXPECT_EQ(typeOf(attribute("b")), "Text");
  EXPECT_EQ(attribute("b")->GetProperty("scope").text(), "private");
  EXPECT_EQ(rows("Order", 0)[1], "-a:Text");
  EXPECT_EQ(told, "Order ") << "once for all of them";

  pane.AttributeName()->SetText("a");
  pane.AttributeScope()->Choose(1);
  pane.AttributeType()->Choose("Int");
  EXPECT_EQ(attributes(), "number a b c") << "updated, not added";
  EXPECT_EQ(typeOf(attribute("a")), "Int");
  EXPECT_EQ(attribute("a")->outgoing("Attrib.Has.DataType")->Count(), 1);
  EXPECT_EQ(attribute("a")->GetProperty("scope").text(), "protected");
  pane.AttributeName()->SetText("");
  pane.ToolAttr()->Click("miAttrAdd");
  EXPECT_EQ(attributes(), "number a b c ") << "a single empty name is taken as it stands";
  EXPECT_TRUE(messages.empty());
}

TEST_F(CLSClassControlTest, aSelectedMemberFillsTheFields) {
  attribute("number")->SetProperty("scope", "PROTECTED");
  pane.Attributes()->Select(1);
  EXPECT_EQ(pane.AttributeName()->Text(), "number");
  EXPECT_EQ(pane.AttributeType()->Text(), "Int");
  EXPECT_EQ(pane.AttributeScope()->value(), 1);
  EXPECT_EQ(told, "") << "selecting changes nothing";
  pane.ToolOperation()->Click("miOperationNew");
  EXPECT_EQ(pane.AttributeName()->Text(), "") << "of attributes, as it has always been";
  EXPECT_EQ(pane.AttributeScope()->value(), 0);
  pane.AttributeName()->SetText("unknown");
  pane.ToolAttr()->Click("miAttrDelete");
  EXPECT_EQ(attributes(), "number");
  pane.AttributeName()->SetText("number");
  pane.ToolAttr()->Click("miAttrDelete");
  EXPECT_EQ(attributes(), "");
  EXPECT_EQ(pane.Attributes()->rowCount(), 0U);
  EXPECT_EQ(rows("Order", 0), std::vector<std::string>{"EMPTY ATT"});
}

TEST_F(CLSClassControlTest, operationsHaveParameters) {
  pane.ToolOperation()->Click("miOperationParameters");
  EXPECT_FALSE(pane.ParameterPicture()->Visible()) << "no operation is selected";
  pane.OperationName()->SetText("add");
  pane.OperationType()->Choose("Int");
  pane.Operations()->Select(1);
  pane.ToolOperation()->Click("miOperationParameters");
  EXPECT_TRUE(pane.ParameterPicture()->Visible());
  EXPECT_EQ(pane.TabStrip1()->tabs()[2]->caption(), "Parameters");
  pane.ParameterName()->SetText("x;y");
  pane.ParameterType()->Choose("Text");
  EXPECT_EQ(owned(*operation("add"), "Operation.Has.Parameter"), "x y");
  EXPECT_EQ(namesIn(*pane.Parameters()), "x y");
  pane.ParameterName()->SetText("x");
  pane.ToolParameter()->Click("miParameterDelete");
  EXPECT_EQ(owned(*operation("add"), "Operation.Has.Parameter"), "y");
  pane.ToolParameter()->Click("miParameterOk");
  EXPECT_FALSE(pane.ParameterPicture()->Visible());
  EXPECT_EQ(pane.TabStrip1()->tabs()[2]->caption(), "Operations");
  pane.AddParameter("z");
  EXPECT_EQ(owned(*operation("add"), "Operation.Has.Parameter"), "y z");
  pane.OperationName()->SetText("add");
  pane.ToolOperation()->Click("miOperationDelete");
  EXPECT_EQ(count("Operation") + count("Parameter"), 0);
  EXPECT_TRUE(messages.empty());
}

TEST_F(CLSClassControlTest, aTypeThatIsTypedIsMadeOnce) {
  pane.AttributeName()->SetText("when");
  pane.AttributeType()->Enter("Date");
  EXPECT_EQ(typeOf(attribute("when")), "Date");
  pane.AttributeName()->SetText("until");
  pane.AttributeType()->Enter(" Date ");
  EXPECT_EQ(count("DataType"), 3) << "Int, Text, Date";
  const auto date = model->SearchObject("DataType", "Name", "Date");
  pane.AttributeName()->SetText("never");
  store->MetaNodes("DataType")->extension()->Remove(date->identifier(), false);
  pane.ToolAttr()->Click("miAttrAdd");
  EXPECT_FALSE(attribute("never")) << "the type is gone";
  EXPECT_TRUE(messages.empty());
}

TEST_F(CLSClassControlTest, followsTheModel) {
  addAttribute("Order", "behind", "Int");
  addAttribute("Other", "elsewhere", "Int");
  EXPECT_EQ(namesIn(*pane.Attributes()), "number behind");
  attribute("behind")->name("before");
  EXPECT_EQ(namesIn(*pane.Attributes()), "number before");
  model->DeleteAttribute(attribute("number")->identifier());
  EXPECT_EQ(namesIn(*pane.Attributes()), "before");
}

TEST_F(CLSClassControlTest, propertiesAreWrittenWhenTheyAreClosed) {
  pane.Attributes()->Open(1);
  EXPECT_TRUE(pane.Property()->Visible());
  pane.Property1()->Edit("Name", "count");
  EXPECT_TRUE(attribute("number"));
  pane.PropertyOk()->Click();
  EXPECT_TRUE(attribute("count"));
  EXPECT_FALSE(pane.Property()->Visible());
  EXPECT_EQ(rows("Order", 0)[0], " count:Int");
  pane.PropertyClass()->Edit("Description", "What was ordered");
  pane.CLSSelectStereotype1()->Selection(model->MakeStereotype("root", "root", "").get());
  EXPECT_EQ(order->GetProperty("Description").text(), "");
  told.clear();
  editor->EditClass("Other");
  EXPECT_EQ(order->GetProperty("Description").text(), "What was ordered");
  EXPECT_EQ(box("Order")->text(), "<<root>>\r\nOrder");
  EXPECT_EQ(told, "Order ") << "finished when another class is shown";
  EXPECT_EQ(namesIn(*pane.Attributes()), "strange");
}

TEST_F(CLSClassControlTest, aSaveTakesWhatIsPendingAlong) {
  pane.PropertyClass()->Edit("Description", "What was ordered");
  pane.AttributeName()->SetText("half typ");
  pane.TabStrip1()->Choose("Attributes");
  editor->RepositoryFileName(testing::TempDir() + "brisel_pending.dim");
  editor->SaveDiagram();
  EXPECT_EQ(order->GetProperty("Description").text(), "What was ordered");
  EXPECT_EQ(told, "Order ");
  EXPECT_TRUE(pane.Visible());
  EXPECT_EQ(pane.AttributeName()->Text(), "half typ") << "editing goes on";
  EXPECT_EQ(pane.TabStrip1()->selected(), "Attributes");
  editor->SaveDiagram();
  EXPECT_EQ(told, "Order ") << "nothing was pending any more";
}

TEST_F(CLSClassControlTest, theMembersPropertiesGoWithTheMember) {
  pane.Attributes()->Open(1);
  pane.Property1()->Edit("Name", "late");
  model->DeleteAttribute(attribute("number")->identifier());
  EXPECT_FALSE(pane.Property()->Visible());
  pane.PropertyOk()->Click();
  EXPECT_EQ(attributes(), "");
  EXPECT_TRUE(messages.empty());
}

TEST_F(CLSClassControlTest, aClassThatGoesIsLetGoOf) {
  for (const auto& remove : std::vector<std::function<void()>>{
           [&] { editor->DeleteClass("Order"); }, [&] { model->DeleteClass("Order"); },
           [&] { editor->Clear(); }, [&] { editor->Repository(nullptr); }}) {
    pane.PropertyClass()->Edit("Description", "pending");
    pane.Attributes()->Select(1);
    remove();
    EXPECT_FALSE(pane.Visible());
    EXPECT_FALSE(pane.Class());
    pane.AddAttribute("late");
    pane.ToolAttr()->Click("miAttrAdd");
    pane.ToolAttr()->Click("miAttrDelete");
    pane.ToolOperation()->Click("miOperationParameters");
    pane.PropertyOk()->Click();
    EXPECT_EQ(pane.Attributes()->rowCount(), 0U);
    editor->Repository(store.get());
    redraw();
    if (!find("Class", "Order")) order = addClass("Order");
    if (!attribute("number")) addAttribute("Order", "number", "Int");
    redraw();
    editor->EditClass("Order");
  }
  EXPECT_TRUE(messages.empty());
}

}  // namespace
}  // namespace brisel::editors
