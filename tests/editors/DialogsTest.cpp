#include <gtest/gtest.h>

#include "editor/CLSEditor.h"
#include "editors/frmClass.h"
#include "editors/frmStereotype.h"
#include "platform/ValueRecord.h"
#include "support/EditorBench.h"

namespace brisel::editors {
namespace {

using platform::make;
using platform::Ref;
using platform::Value;
using platform::ValueArray;
using test::EditorBench;

class DialogsTest : public testing::Test, protected EditorBench {
 protected:
  DialogsTest() {
    addClass("A");
    addClass("B");
    editor->Populate();
    listening.push_back(shell->Answered.connect(
        [this](const std::string& kind, const Ref<platform::ValueRecord>& told) {
          if (kind != "dialog") return;
          answered += told->get("name").text() + ':' + told->get("answer").text() + ' ';
          for (const auto& [name, value] : told->fields()) {
            if (name == "error") answered += '(' + value.text() + ") ";
          }
          caption = told->get("object").object()->get("Caption").text();
        }));
    listening.push_back(
        editor->AssocChanged.connect([this](const std::string& key) { changed += key + ' '; }));
  }
  void answer(const Steps& steps) { answerForm(steps); }

  std::string answered, caption, changed;
  std::vector<platform::Connection> listening;
};

TEST_F(DialogsTest, aDrawnRelationshipIsEditedAtOnce) {
  answer(
      {{"CLSAssociationControl1.PropertyAssociation(0)", "Edit", "Name", "owns"},
       {"CLSAssociationControl1.PropertyAssociation(1)", "Edit", "SourceRolename", "owner"},
       {"CLSAssociationControl1.PropertyAssociation(2)", "Edit", "TargetMultiplicity", "1..*"},
       {"CLSAssociationControl1.PropertyAssociation(2)", "Edit", "TargetNavigable", true},
       {"Ok", "Click"}});
  editor->diagram()->createLink("r", "", "A", "B");
  EXPECT_EQ(answered, "frmAssociation:Ok ");
  EXPECT_EQ(caption, "Association");
  EXPECT_EQ(line("r")->text(), "owns");
  EXPECT_EQ(line("r")->beginText(), "owner");
  EXPECT_EQ(line("r")->endText(), "1..*");
  EXPECT_EQ(line("r")->endArrow(), 3);
  EXPECT_EQ(changed, "r ");
  EXPECT_TRUE(messages.empty());
}

TEST_F(DialogsTest, captionsAndTabsFollowTheKind) {
  editor->CreateAssociation("a", "", "", "A", "B");
  editor->CreateAggregation("w", "", "", "A", "B", true);
  editor->CreateGeneralization("g", "", "", "A", "B");
  EXPECT_EQ(answered, "") << "commands open nothing";
  struct Case {
    const char* key;
    const char* caption;
    const char* keys;
    std::size_t tabs;
  };
  Ref<platform::Object> form;
  const auto keep =
      shell->Answered.connect([&](const std::string& kind, const Ref<platform::ValueRecord>& told) {
        if (kind == "dialog") form = told->get("object").object();
      });
  for (const Case& one :
       {Case{"a", "Association", "Name Intention ReverseName PreferredDirection IsDerived ", 3},
        Case{"g", "Generalization", "Name Intention Discriminator IsVirtual ", 1},
        Case{"w", "Aggregation",
             "Name Intention ReverseName PreferredDirection IsDerived IsComposite ", 3}}) {
    editor->EditAssociation(one.key);
    EXPECT_EQ(caption, one.caption);
    const auto control =
        platform::as<CLSAssociationControl>(form->get("CLSAssociationControl1").object());
    EXPECT_EQ(control->TabStrip1()->tabs().size(), one.tabs);
    control->Prepare();
    std::string keys;
    for (const std::string& key :
         control->PropertyAssociation()->at<controls::Property>(0).keys()) {
      keys += key + ' ';
    }
    EXPECT_EQ(keys, one.keys);
  }
  EXPECT_EQ(changed, "a g w ");
  editor->EditAssociation("nowhere");
  EXPECT_EQ(messages.size(), 1U);
}

TEST_F(DialogsTest, aStereotypeTypedInPartIsNotTaken) {
  editor->CreateAssociation("a", "", "", "A", "B");
  const auto entity = model->MakeStereotype("entity", "entity", "");
  model->SetStereotype(*find("Association", "a"), entity.get());
  const auto stereotype = [&] {
    Ref<platform::Link> link;
    return model->GetStereotype(*find("Association", "a"), link);
  };
  for (const char* typed : {"ent", "nothing like it", ""}) {
    answer({{"CLSAssociationControl1.CLSSelectStereotype1.Combo1", "SetText", typed},
            {"Ok", "Click"}});
    editor->EditAssociation("a");
    EXPECT_EQ(stereotype(), entity) << typed;
  }
  answer({{"CLSAssociationControl1.CLSSelectStereotype1.Combo1", "SetText", "<NONE>"},
          {"Ok", "Click"}});
  editor->EditAssociation("a");
  EXPECT_EQ(stereotype()->name(), "<NONE>");
  EXPECT_EQ(answered, "frmAssociation:Ok frmAssociation:Ok frmAssociation:Ok frmAssociation:Ok ");
}

TEST_F(DialogsTest, cancelDiscardsNothing) {
  editor->CreateGeneralization("g", "", "", "A", "B");
  answer({{"CLSAssociationControl1.PropertyAssociation(0)", "Edit", "Intention", "why"},
          {"CLSAssociationControl1.PropertyAssociation(0)", "Edit", "IsVirtual", true},
          {"Cancel", "Click"}});
  editor->EditAssociation("g");
  EXPECT_EQ(answered, "frmAssociation:Cancel ");
  EXPECT_EQ(find("Generalization", "g")->GetProperty("Description").text(), "why");
  EXPECT_TRUE(find("Generalization", "g")->GetProperty("IsVirtual").isTrue());
}

TEST_F(DialogsTest, aRelationshipThatGoesIsNotWrittenTo) {
  editor->CreateAssociation("a", "old", "", "A", "B");
  const auto node = find("Association", "a");
  const auto removing = shell->Answered.connect(
      [&](const std::string&, const Ref<platform::ValueRecord>&) { editor->DeleteClass("A"); });
  answer({{"CLSAssociationControl1.PropertyAssociation(0)", "Edit", "Name", "new"}});
  editor->EditAssociation("a");
  EXPECT_EQ(node->name(), "old");
  EXPECT_TRUE(messages.empty());
}

TEST_F(DialogsTest, aModelHasAStereotypeAtLeast) {
  const auto names = [&] {
    std::string all;
    for (auto& one : platform::each<platform::Node>(store->MetaNodes("Stereotype")->extension())) {
      all += one.name() + ' ';
    }
    return all;
  };
  EXPECT_EQ(names(), "<NONE> ");
  answer({{"ListEditor1", "Add", "entity"}, {"ListEditor1", "Rename", 1, "root"},
          {"Ok", "Click"}});
  editor->EditStereotypes();
  EXPECT_EQ(answered, "frmStereotype:Ok ");
  EXPECT_EQ(names(), "root entity ");
  const auto entity = model->SearchObject("Stereotype", "Name", "entity");
  model->SetStereotype(*find("Class", "A"), entity.get());
  answer({{"ListEditor1", "Rename", 2, "value"}});
  editor->EditStereotypes();
  EXPECT_EQ(box("A")->text(), "<<value>>\r\nA");
  shell->AnswerMessage("Yes");
  answer({{"ListEditor1", "Remove", 2}, {"ListEditor1", "Remove", 1}});
  editor->EditStereotypes();
  EXPECT_EQ(messages.size(), 1U) << "the one in use is asked about";
  EXPECT_EQ(names(), "<NONE> ");
  EXPECT_EQ(box("A")->text(), "A");
}

TEST_F(DialogsTest, aSplitNeedsANameAndAMember) {
  addAttribute("A", "x", "Int");
  addOperation("A", "f", "Int");
  addOperation("A", "g", "Int");
  const auto form = make<frmClass>(registry);
  form->Prepare(*editor->GetClassFromNode("A"));
  form->Visible(true);
  form->ClassName()->SetText("  ");
  form->AllOperations()->Click();
  form->Ok()->Click();
  EXPECT_TRUE(form->Visible());
  form->ClassName()->SetText("Base");
  form->Operations()->Untick(1);
  form->Operations()->Untick(2);
  form->Ok()->Click();
  EXPECT_TRUE(form->Visible());
  EXPECT_EQ(messages, (std::vector<std::string>{
                          "Please insert a name for the splitted class",
                          "Select at least one operation/attribute for the new splitted class."}));
  form->Cancel()->Click();
  EXPECT_FALSE(form->Accepted());
  form->Visible(true);
  form->Attributes()->Tick(1);
  form->Ok()->Click();
  EXPECT_TRUE(form->Accepted());
  EXPECT_FALSE(form->Visible());
  EXPECT_EQ(form->Attributes()->tickedRows()->Count(), 1);
  form->Prepare(*editor->GetClassFromNode("B"));
  EXPECT_EQ(form->Operations()->rowCount(), 0U) << "those of another class";
  EXPECT_FALSE(form->Accepted());
}

}  // namespace
}  // namespace brisel::editors
