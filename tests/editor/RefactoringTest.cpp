#include <gtest/gtest.h>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"
#include "interchange/DimWriter.h"
#include "platform/Shell.h"
#include "platform/ValueRecord.h"
#include "support/EditorBench.h"
#include "support/EditorChecks.h"

namespace brisel::editor {
namespace {

using platform::each;
using platform::Node;
using platform::Point;
using platform::Rect;
using platform::Ref;
using platform::ValueRecord;
using test::EditorBench;

/// Order (whole) and Line (part), joined by the relationship "r", whose line is bent.
class RefactoringTest : public testing::Test, protected EditorBench {
 protected:
  RefactoringTest() : canvas(dynamic_cast<canvas::DiagramControl&>(*editor->diagram())) {
    for (const char* name : {"Order", "Line"}) addClass(name);
    addAttribute("Order", "number", "Int");
    addAttribute("Order", "date", "Date");
    addParameter(*addOperation("Order", "total", "Money"), "currency", "Text");
    editor->Populate();
    editor->Compartments("ViewAttributes");
    editor->Compartments("ViewOperations");
    box("Order")->bounds({0, 0, 3000, 2000});
    box("Line")->bounds({9000, 0, 3000, 2000});
    listening.push_back(shell->Answered.connect(
        [this](const std::string& kind, const Ref<ValueRecord>& told) {
          if (kind == "dialog") form = told->get("object").object();
        }));
    listening.push_back(canvas.Hint.connect([this](const std::string& text) { hint = text; }));
  }
  enum Kind { association, shared, composite, generalization };
  void join(Kind kind) {
    if (kind == association) editor->CreateAssociation("r", "has", "", "Order", "Line");
    if (kind == shared) editor->CreateAggregation("r", "has", "", "Order", "Line", false);
    if (kind == composite) editor->CreateAggregation("r", "has", "", "Order", "Line", true);
    if (kind == generalization) editor->CreateGeneralization("r", "has", "", "Order", "Line");
    const auto node = relationship();
    node->SetProperty("Description", "why");
    if (kind != generalization) {
      node->SetProperty("SourceRoleName", "order");
      node->SetProperty("TargetMultiplicity", "1..*");
      node->SetProperty("TargetNavigable", true);
    }
    Ref<Node> stereotype = model->SearchObject("Stereotype", "Name", "owns");
    if (!stereotype) stereotype = model->MakeStereotype("owns", "owns", "");
    model->SetStereotype(*node, stereotype.get());
    line("r")->ExtraPoints()->Add(6000, 4000);
    editor->AddPositions();
  }
  Ref<Node> relationship() { return editor->GetAssociationFromLink("r")->clsObject(); }
  /// "Aggregation composite Order>Line": what the model has under the key.
  std::string found() const {
    std::string all;
    for (const char* kind : {"Association", "Aggregation", "Generalization"}) {
      const auto node = find(kind, "r");
      if (!node) continue;
      const bool owns = node->GetProperty("isComposite").isTrue();
      all += kind + std::string(owns ? " composite " : " ") + ends(*node);
    }
    return all;
  }
  std::string formText(const char* label) const {
    return form->get(label).object()->get("Caption").string();
  }
  std::string attributes(const char* key) const {
    return owned(*find("Class", key), "Class.Has.Attrib");
  }
  std::string operations(const char* key) const {
    return owned(*find("Class", key), "Class.Has.Operation");
  }
  Ref<Node> named(const char* name) const { return model->SearchObject("Class", "Name", name); }
  bool anyBoxesOverlap() const {
    for (auto& one : each<platform::DiagramNode>(canvas.getAllNodes())) {
      for (auto& other : each<platform::DiagramNode>(canvas.getAllNodes())) {
        if (&one != &other && one.bounds().intersects(other.bounds())) return true;
      }
    }
    return false;
  }

  canvas::DiagramControl& canvas;
  Ref<platform::Object> form;  ///< that was run last
  std::string hint;
  std::vector<platform::Connection> listening;
};

TEST_F(RefactoringTest, everyKindMorphsAsTheTableSays) {
  struct Case {
    Kind kind;
    const char* word;
    const char* expected;
  };
  // The ends of a generalization are named super class first; the whole becomes the sub class.
  for (const Case& one : {
           Case{association, "ToAssociation", "Association Order>Line"},
           Case{association, "ToSharedAggregation", "Aggregation Order>Line"},
           Case{association, "ToCompositeAggregation", "Aggregation composite Order>Line"},
           Case{association, "ToGeneralization", "Association Order>Line"},
           Case{association, "ToAttribute", "Association Order>Line"},
           Case{shared, "ToAssociation", "Association Order>Line"},
           Case{shared, "ToSharedAggregation", "Aggregation Order>Line"},
           Case{shared, "ToCompositeAggregation", "Aggregation composite Order>Line"},
           Case{shared, "ToGeneralization", "Aggregation Order>Line"},
           Case{shared, "ToAttribute", "Aggregation Order>Line"},
           Case{composite, "ToAssociation", "Association Order>Line"},
           Case{composite, "ToSharedAggregation", "Aggregation Order>Line"},
           Case{composite, "ToCompositeAggregation", "Aggregation composite Order>Line"},
           Case{composite, "ToGeneralization", "Generalization Line>Order"},
           Case{composite, "ToAttribute", ""},
           Case{generalization, "ToAssociation", "Association Order>Line"},
           Case{generalization, "ToSharedAggregation", "Aggregation Order>Line"},
           Case{generalization, "ToCompositeAggregation", "Aggregation Order>Line"},
           Case{generalization, "ToGeneralization", "Generalization Line>Order"},
           Case{generalization, "ToAttribute", "Generalization Line>Order"},
           Case{composite, "toassociation", "Aggregation composite Order>Line"},
           Case{composite, "", "Aggregation composite Order>Line"},
       }) {
    const std::string what = std::to_string(one.kind) + " " + one.word;
    join(one.kind);
    const auto drawn = line("r");
    const bool leaves = one.expected[0] == '\0';
    editor->MorphingAssoc("r", one.word);
    EXPECT_EQ(found(), one.expected) << what;
    EXPECT_EQ(test::checkAgreement(*editor), "") << what;
    if (!leaves) {
      EXPECT_EQ(line("r"), drawn) << what << ": the line is the same";
      EXPECT_EQ(drawn->ExtraPoints()->at(1), (Point{6000, 4000})) << what;
      EXPECT_EQ(relationship()->name(), "has") << what;
      EXPECT_EQ(relationship()->GetProperty("Description").text(), "why") << what;
      Ref<platform::Link> link;
      EXPECT_EQ(model->GetStereotype(*relationship(), link)->name(), "owns") << what;
      std::int64_t uses = 0;
      for (const char* kind : {"Association", "Aggregation", "Generalization"}) {
        const auto owns = find("Stereotype", "owns");
        uses += owns->Incoming(std::string(kind) + ".As.Stereotype")->Count();
      }
      EXPECT_EQ(uses, 1) << what << ": and none is left of the old one";
    }
    redraw();
    EXPECT_EQ(test::checkAgreement(*editor), "") << what << ", drawn anew";
    if (!leaves) {
      EXPECT_EQ(line("r")->ExtraPoints()->at(1), (Point{6000, 4000})) << what;
    }
    if (const auto rest = editor->GetAssociationFromLink("r")) {
      const std::string kind = rest->clsObject()->Parent()->name();
      model->RemoveObject(kind, "r");
      canvas.deleteLink("r");
    }
  }
  EXPECT_TRUE(messages.empty());
}

TEST_F(RefactoringTest, ofAnAggregationsEndsAGeneralizationKeepsNothing) {
  join(composite);
  editor->MorphingAssoc("r", "ToGeneralization");
  for (const char* key : {"SourceRoleName", "TargetMultiplicity", "TargetNavigable"}) {
    EXPECT_TRUE(relationship()->GetProperty(key).isEmpty()) << key;
  }
  EXPECT_EQ(line("r")->text() + line("r")->beginText() + line("r")->endText(), "");
  editor->CreateAggregation("back", "", "", "Line", "Order", true);
  editor->MorphingAssoc("back", "ToGeneralization");
  EXPECT_EQ(hint, "Line now inherits from itself") << "a circle is made, and told";
}

TEST_F(RefactoringTest, aPartBecomesAnAttributeOfItsTypesName) {
  join(composite);
  const auto wrapper = editor->GetAssociationFromLink("r");
  editor->MorphingAssoc("r", "ToAttribute");
  EXPECT_EQ(attributes("Order"), "number date order");
  EXPECT_EQ(rows("Order", 0), (std::vector<std::string>{" number:Int", " date:Date", "-order:Line"}));
  EXPECT_EQ(drawnLinks(), "");
  EXPECT_EQ(count("GeomPoint"), 0);
  EXPECT_EQ(wrapper->name(), "has") << "who holds the wrapper may still ask it";
  editor->CreateAggregation("r", "", "", "Order", "Line", true);
  editor->ActiveBar21()->Tag("r");
  editor->ActiveBar21()->Click("miMorphToAttr");
  EXPECT_EQ(attributes("Order"), "number date order Orderaggregate");
  EXPECT_EQ(count("DataType"), 5) << "Line is a type once: with Int, Date, Money, Text";
  editor->MorphingAssoc("r", "ToAssociation");
  EXPECT_EQ(messages, std::vector<std::string>{"Error No: 1000  'No relationship is drawn under the "
                                               "key r'(Module 'CLSEditor' Function "
                                               "'MorphingAssoc()')"});
}

TEST_F(RefactoringTest, tickedMembersMoveToTheOtherClass) {
  join(association);
  box("Line")->bounds({box("Order")->bounds().right() + 300, 0, 3000, 2000});
  answerForm({{"ClassName", "SetText", "  Header "},
              {"Attributes", "Tick", 2},
              {"Operations", "Tick", 1},
              {"Ok", "Click"}});
  editor->MorphingClass("Order", "Split");
  const auto header = named("Header");
  ASSERT_TRUE(header);
  EXPECT_EQ(header->GetProperty("Description").text(), "superclass of Order");
  EXPECT_EQ(header->GetProperty("scope").text(), "public");
  EXPECT_EQ(attributes("Order"), "number");
  EXPECT_EQ(operations("Order"), "");
  EXPECT_EQ(owned(*header, "Class.Has.Attrib") + owned(*header, "Class.Has.Operation"),
            "datetotal");
  EXPECT_EQ(count("Parameter"), 1);
  EXPECT_EQ(count("Generalization"), 0);
  EXPECT_TRUE(model->SearchObject("DataType", "Name", "Header"));
  const auto made = box(header->identifier());
  EXPECT_EQ(made->bounds().left, box("Line")->bounds().right() + 300) << "Line is in the way";
  EXPECT_EQ(made->bounds().top, 0);
  EXPECT_FALSE(anyBoxesOverlap());
  EXPECT_EQ(rows(header->identifier(), 0), std::vector<std::string>{" date:Date"});
  EXPECT_EQ(formText("ClassNameLabel"), "Name of splitted class:");
  EXPECT_EQ(formText("Information"),
            "Check attributes/operation which are moved into the other class.");
  EXPECT_EQ(form->get("Caption").string(), "Split class Order");
  EXPECT_EQ(test::checkAgreement(*editor), "");
  EXPECT_TRUE(messages.empty());
}

TEST_F(RefactoringTest, aSemanticSplitMakesASuperClass) {
  answerForm({{"ClassName", "SetText", "Document"}, {"AllAttributes", "Click"}, {"Ok", "Click"}});
  editor->ActiveBar21()->Tag("Order");
  editor->ActiveBar21()->Click("miMorphClassSplitSemantic");
  const auto super = named("Document");
  ASSERT_TRUE(super);
  EXPECT_EQ(formText("ClassNameLabel"), "Name of superclass:");
  EXPECT_EQ(formText("Information"),
            "Check attributes/operation which are moved into superclass.");
  const auto made = store->MetaNodes("Generalization")->extension()->Item(1);
  EXPECT_EQ(ends(*platform::as<Node>(made)), "Document>Order");
  EXPECT_EQ(editor->relationshipsExtracted(), 1);
  const Rect old = box("Order")->bounds();
  EXPECT_EQ(box(super->identifier())->bounds().topLeft(), (Point{old.right() + 300, old.top}));
  EXPECT_EQ(test::checkAgreement(*editor), "");
}

TEST_F(RefactoringTest, whatIsRefusedOrCancelledChangesNothing) {
  join(composite);
  const std::string before = interchange::DimWriter::text(*store);
  answerForm({{"ClassName", "SetText", "  "}, {"Ok", "Click"},
              {"ClassName", "SetText", "New"}, {"Ok", "Click"}});
  editor->SplitClass("Order", true);
  EXPECT_EQ(messages, (std::vector<std::string>{
                          "Please insert a name for the splitted class",
                          "Select at least one operation/attribute for the new splitted class."}));
  editor->SplitClass("Order", false);
  editor->MorphingClass("Order", "split");
  editor->ExtractAttribute("Order");
  answerForm({{"Ok", "Click"}});
  editor->ExtractAttribute("Order");
  EXPECT_FALSE(form->get("Attributes").object()->get("selectedRow").object()) << "no row is chosen";
  editor->MorphingAssoc("r", "ToCompositeAggregation");
  EXPECT_EQ(interchange::DimWriter::text(*store), before);
  EXPECT_EQ(messages.size(), 2U);
  for (const auto& call : {+[](CLSEditor& e) { e.SplitClass("nowhere", true); },
                           +[](CLSEditor& e) { e.ExtractAttribute("r"); },
                           +[](CLSEditor& e) { e.MorphingAssoc("Order", "ToAttribute"); }}) {
    call(*editor);
  }
  EXPECT_EQ(messages.size(), 5U) << "each unknown key is reported once";
  EXPECT_EQ(interchange::DimWriter::text(*store), before);
}

TEST_F(RefactoringTest, anAttributeIsDrawnOutIntoAClass) {
  for (const bool ticked : {true, false}) {
    const char* attribute = ticked ? "date" : "number";
    std::vector<std::vector<platform::Value>> steps = {{"Attributes", "Select", ticked ? 2 : 1}};
    if (!ticked) steps.push_back({"asComposite", "SetValue", 2});  // grey is not ticked
    steps.push_back({"Ok", "Click"});
    answerForm(steps);
    editor->ExtractAttribute("Order");
    const auto made = named(attribute);
    ASSERT_TRUE(made) << attribute;
    EXPECT_EQ(made->GetProperty("Description").text(), "extracted attribute from class Order");
    EXPECT_TRUE(model->SearchObject("DataType", "Name", attribute));
    const auto part = platform::as<Node>(
        store->MetaNodes("Aggregation")->extension()->Item(ticked ? 1 : 2));
    EXPECT_EQ(ends(*part), std::string("Order>") + attribute);
    EXPECT_EQ(part->GetProperty("isComposite").isTrue(), ticked);
    EXPECT_EQ(part->GetProperty("SourceRoleName").text(), attribute);
    EXPECT_EQ(part->name(), "");
    EXPECT_EQ(line(part->identifier())->beginText(), attribute);
    EXPECT_EQ(line(part->identifier())->text(), "");
    if (ticked) {
      EXPECT_EQ(box(made->identifier())->bounds().left, box("Order")->bounds().right() + 500);
    }
  }
  EXPECT_EQ(attributes("Order"), "");
  EXPECT_EQ(rows("Order", 0), std::vector<std::string>{"EMPTY ATT"});
  EXPECT_EQ(editor->relationshipsExtracted(), 2);
  EXPECT_FALSE(anyBoxesOverlap());
  EXPECT_EQ(test::checkAgreement(*editor), "");
}

TEST_F(RefactoringTest, linesOfExtractedClassesRunAroundWhatIsBetween) {
  addClass("Above");
  redraw();
  const Rect order = box("Order")->bounds();
  box("Line")->bounds({order.right() + 500, -400, 3000, order.height + 900});
  box("Above")->bounds({order.right(), -2000, 3000, 1500});
  answerForm({{"Attributes", "Select", 1}, {"Ok", "Click"}});
  editor->ExtractAttribute("Order");
  const auto made = line(platform::as<Node>(store->MetaNodes("Aggregation")->extension()->Item(1))
                             ->identifier());
  ASSERT_EQ(made->ExtraPoints()->Count(), 4) << "two bends";
  for (std::size_t i = 1; i < 4; ++i) {
    const Point a = made->ExtraPoints()->at(i - 1);
    const Point b = made->ExtraPoints()->at(i);
    const Rect way{std::min(a.x, b.x), std::min(a.y, b.y), std::abs(a.x - b.x) + 1,
                   std::abs(a.y - b.y) + 1};
    EXPECT_TRUE(a.x == b.x || a.y == b.y) << i;
    EXPECT_FALSE(way.intersects(box("Line")->bounds())) << i;
    EXPECT_FALSE(way.intersects(box("Above")->bounds())) << i;
  }
}

TEST_F(RefactoringTest, selectedClassesAreMergedIntoANewOne) {
  addClass("Base");
  addClass("Hidden", "COM::Builtin");
  addAttribute("Line", "number", "Text");
  addAttribute("Line", "amount", "Int");
  redraw();
  editor->CreateGeneralization("sub", "", "", "Line", "Base");
  editor->CreateGeneralization("inner", "", "", "Order", "Line");
  join(composite);
  model->MakeAssociation("unseen", "unseen", "Hidden", "Order");
  canvas.selNode(platform::Value("Order"));
  canvas.selNode(platform::Value("Line"));
  editor->ActiveBar21()->Click("miMorphMerge");
  const auto made = named("OrderLine");
  ASSERT_TRUE(made);
  EXPECT_EQ(made->GetProperty("Description").text(), "Merged class from Order, Line");
  EXPECT_EQ(owned(*made, "Class.Has.Attrib"), "number date amount");
  EXPECT_EQ(owned(*made, "Class.Has.Operation"), "total");
  EXPECT_EQ(attributes("Order"), "");
  EXPECT_EQ(attributes("Line"), "number") << "the name was taken already";
  EXPECT_EQ(rows("Line", 0), std::vector<std::string>{" number:Text"});
  EXPECT_EQ(ends(*find("Generalization", "sub")), "Base>OrderLine");
  EXPECT_EQ(ends(*find("Generalization", "inner")), "OrderLine>OrderLine");
  EXPECT_EQ(hint,
            "1 member stayed behind: the new class has one of that name; OrderLine now inherits "
            "from itself");
  canvas.PointerMove(-5000, -5000);
  EXPECT_NE(hint, "") << "a notice outlives the pointer's next move";
  EXPECT_EQ(canvas.selection().nodes().size(), 1U);
  EXPECT_EQ(canvas.selection().nodes().front()->text(), "OrderLine") << "the result is selected";
  EXPECT_EQ(ends(*find("Aggregation", "r")), "OrderLine>OrderLine");
  EXPECT_EQ(ends(*find("Association", "unseen")), "Hidden>OrderLine") << "moved, though not drawn";
  EXPECT_EQ(line("sub")->source()->text(), "OrderLine");
  EXPECT_EQ(line("sub")->target()->text(), "Base");
  EXPECT_TRUE(model->SearchObject("DataType", "Name", "OrderLine"));
  EXPECT_TRUE(messages.empty());
  EXPECT_FALSE(anyBoxesOverlap());
  store->MetaNodes("Class")->extension()->Remove("Hidden", false);
  model->DeleteAssociation("unseen");
  EXPECT_EQ(test::checkAgreement(*editor), "");
  redraw();
  EXPECT_EQ(test::checkAgreement(*editor), "");
}

TEST_F(RefactoringTest, whatIsBeingEditedIsWrittenFirst) {
  editor->EditClass("Order");
  const auto pane = editor->CLSClassControl1();
  pane->AttributeName()->SetText("pending");
  canvas.NodeRenaming("Order");
  editor->ClassName()->SetText("Purchase");
  answerForm({{"ClassName", "SetText", "Other"}, {"AllAttributes", "Click"}, {"Ok", "Click"}});
  editor->SplitClass("Order", false);
  EXPECT_EQ(form->get("Caption").string(), "Split class Purchase");
  ASSERT_TRUE(named("Other"));
  EXPECT_EQ(named("Other")->GetProperty("Description").text(), "superclass of Purchase");
  EXPECT_FALSE(editor->ClassName()->Visible());
  EXPECT_EQ(pane->Class()->name(), "Other") << "the pane goes on to the result";
}

TEST_F(RefactoringTest, aClassThatLeftTheModelIsNotRefactored) {
  const auto deletes = editor->ClassCreated.connect([this](const std::string&) {
    if (count("Class") > 2) editor->DeleteClass("Order");
  });
  answerForm({{"ClassName", "SetText", "Other"}, {"AllAttributes", "Click"}, {"Ok", "Click"}});
  editor->SplitClass("Order", true);
  EXPECT_EQ(messages, std::vector<std::string>{"Error No: 1000  'The class Order has left the "
                                               "model'(Module 'CLSEditor' Function "
                                               "'SplitClass()')"});
  EXPECT_FALSE(anyBoxesOverlap());
  EXPECT_EQ(test::checkAgreement(*editor), "");
  model->DeleteClass("Line");
  form = nullptr;
  editor->ExtractAttribute("Line");
  editor->SplitClass("Line", true);
  EXPECT_FALSE(form) << "no dialog is run for it";
  EXPECT_EQ(messages.size(), 3U);
}

TEST_F(RefactoringTest, aMergeOfNothingMakesAClass) {
  editor->ActiveBar21()->Click("miMorphMerge");
  EXPECT_EQ(count("Class"), 3);
  const auto made = platform::as<Node>(store->MetaNodes("Class")->extension()->Item(3));
  EXPECT_EQ(made->GetProperty("Description").text(), "Merged class from ");
  EXPECT_EQ(made->name(), "newClass");
  EXPECT_FALSE(anyBoxesOverlap());
}

TEST_F(RefactoringTest, menusSayWhatDoesNotApply) {
  join(association);
  const auto bar = editor->ActiveBar21();
  const auto objections = [&](const char* element) {
    std::string all;
    for (const char* tool :
         {"miMorpToAss", "miMorphToAggShared", "miMorphToAggComposite", "miMorphToGen",
          "miMorphToAttr", "miMorphClassSplit", "miMorphExtractAttribute", "miMorphMerge"}) {
      all += editor->objection(tool, element).empty() ? '.' : 'x';
    }
    return all;
  };
  EXPECT_EQ(objections("r"), "x..xxxxx");
  EXPECT_EQ(objections("Order"), "xxxxx..x");
  EXPECT_EQ(objections("Line"), "xxxxxxxx") << "it has no members";
  canvas.selection().selectAll();
  EXPECT_EQ(objections(""), "xxxxxxx.");
  editor->MorphingAssoc("r", "ToSharedAggregation");
  EXPECT_EQ(objections("r"), ".x.xxxx.");
  editor->MorphingAssoc("r", "ToCompositeAggregation");
  EXPECT_EQ(objections("r"), "..x..xx.");
  EXPECT_EQ(editor->objection("miMorphToAggComposite", "r"), "It is a composite aggregation already");
  EXPECT_EQ(editor->objection("miPopupEdit", "r"), "");
  EXPECT_TRUE(messages.empty());
}

}  // namespace
}  // namespace brisel::editor
