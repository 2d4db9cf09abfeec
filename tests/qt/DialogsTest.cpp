#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTabBar>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "editors/frmClass.h"
#include "editors/frmClassControl.h"
#include "qt/ListEditorWidget.h"
#include "qt/PropertyWidget.h"

namespace brisel::qt {
namespace {

using platform::Point;
using test::WindowBench;

/// The dialogs of the editor, as the shell runs them, used from the keyboard.
class DialogsTest : public testing::Test {
 protected:
  DialogsTest() {
    bench.drawSample();
    canvas.getNode("order")->bounds({1500, 1500, 3000, 1800});
    canvas.getNode("line")->bounds({9000, 1500, 3000, 1800});
    bench.activate();
  }

  static void tab(int times = 1) {
    for (int i = 0; i < times; ++i) WindowBench::press(Qt::Key_Tab);
  }
  [[nodiscard]] std::string stereotypes() const {
    std::string names;
    const auto type = model->GetRepository()->MetaNodes("Stereotype");
    for (const auto& node : platform::each<platform::Node>(type->extension())) {
      names += (names.empty() ? "" : " ") + node.name();
    }
    return names;
  }

  WindowBench bench;
  canvas::DiagramControl& canvas = bench.document->canvas();
  platform::Ref<repository::CLSRepository> model = bench.document->editor().CLSRepository();
};

TEST_F(DialogsTest, theRelationshipIsEditedAsSoonAsItIsDrawn) {
  bench.shell->inForms.emplace_back([](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Association");
    WindowBench::write("places");
    WindowBench::press(Qt::Key_PageDown, Qt::ControlModifier);
    WindowBench::write("buyer");
    tab();
    WindowBench::write("1");
    WindowBench::press(Qt::Key_PageDown, Qt::ControlModifier);
    tab();
    WindowBench::press(Qt::Key_Down);
    WindowBench::press(Qt::Key_Down);
    tab(2);
    WindowBench::press(Qt::Key_Space);
    WindowBench::press(Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible()) << "Enter is Ok";
  });
  bench.button("Association").trigger();
  const Point from{1500, 2400};
  const Point to{9000, 2400};
  canvas.PointerPress(from.x, from.y, "left", "");
  canvas.PointerMove((from.x + to.x) / 2, to.y);
  canvas.PointerMove(to.x, to.y);
  canvas.PointerRelease(to.x, to.y, "left", "");

  const auto made = model->GetRepository()->MetaNodes("Association")->extension();
  ASSERT_EQ(made->Count(), 1);
  const auto association = platform::as<platform::Node>(made->Item(1));
  EXPECT_EQ(association->name(), "places");
  EXPECT_EQ(association->GetProperty("TargetMultiplicity").text(), "0..1");
  EXPECT_TRUE(association->GetProperty("TargetNavigable").isTrue());
  const auto line = canvas.getLink(association->identifier());
  EXPECT_NE(line->text().find("places"), std::string::npos);
  EXPECT_NE(line->beginText().find("buyer"), std::string::npos);
  EXPECT_NE(line->beginText().find('1'), std::string::npos);
  EXPECT_NE(line->endText().find("0..1"), std::string::npos);
}

TEST_F(DialogsTest, endHoweverTheyAreClosed) {
  const std::function<void(QWidget&)> ends[] = {
      [](QWidget&) { WindowBench::press(Qt::Key_Escape); }, [](QWidget& dialog) { dialog.close(); },
      [](QWidget& dialog) { dialog.findChild<QPushButton*>("Cancel")->click(); },
      [this](QWidget&) { bench.document->editor().DeleteClass("order"); }};
  for (const auto& end : ends) {
    if (!canvas.getLink("lines")) break;
    bench.shell->inForms.emplace_back([&](QWidget& dialog) {
      EXPECT_EQ(dialog.windowTitle(), "Aggregation");
      EXPECT_EQ(dialog.findChild<QTabBar*>()->tabText(0), "Aggregation");
      WindowBench::write("x");
      end(dialog);
    });
    bench.document->editor().EditAssociation("lines");
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  }
  EXPECT_TRUE(bench.shell->asked.empty());
  EXPECT_EQ(bench.document->counts().classes, 1);
}

TEST_F(DialogsTest, theStereotypesAreAddedRenamedAndRemoved) {
  bench.shell->answers = {"No", "Yes"};
  bench.shell->inForms.emplace_back([this](QWidget& dialog) {
    auto& list = dialog.findChild<ListEditorWidget*>()->list();
    EXPECT_TRUE(list.hasFocus());
    WindowBench::press(Qt::Key_Insert);
    WindowBench::write("entity");
    WindowBench::press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stereotypes() == "<NONE> entity"; }));
    EXPECT_EQ(list.model()->rowCount(), 2);
    WindowBench::press(Qt::Key_Insert);
    WindowBench::write("not kept");
    WindowBench::press(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([&] { return list.model()->rowCount() == 2; }));
    WindowBench::press(Qt::Key_Up);
    WindowBench::press(Qt::Key_End);
    WindowBench::press(Qt::Key_F2);
    WindowBench::write("control");
    WindowBench::press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stereotypes() == "<NONE> control"; }));

    const auto order =
        platform::as<platform::Node>(model->GetRepository()->MetaNodes("Class")->find("order"));
    model->SetStereotype(*order, model->SearchObject("Stereotype", "Name", "control").get());
    WindowBench::press(Qt::Key_Delete);
    EXPECT_EQ(stereotypes(), "<NONE> control") << "it is in use, and the answer was no";
    WindowBench::press(Qt::Key_Delete);
    EXPECT_EQ(stereotypes(), "<NONE>");
    EXPECT_EQ(bench.shell->asked.size(), 2U);
    WindowBench::press(Qt::Key_Delete);
    EXPECT_EQ(list.model()->rowCount(), 0);
    EXPECT_FALSE(dialog.findChild<QPushButton*>("Remove")->isEnabled());
  });
  bench.button("Stereotypes").trigger();
  EXPECT_EQ(stereotypes(), "<NONE>") << "one is always there";
}

TEST_F(DialogsTest, aNameOfBlanksIsRefusedWhereItStands) {
  bench.shell->inForms.emplace_back([](QWidget& dialog) {
    auto& editor = *dialog.findChild<ListEditorWidget*>();
    WindowBench::press(Qt::Key_F2);
    WindowBench::write("   ");
    WindowBench::press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !editor.refusal().isEmpty(); }));
    EXPECT_EQ(editor.list().model()->index(0, 0).data().toString(), "<NONE>");
    WindowBench::press(Qt::Key_Insert);
    WindowBench::write("fine");
    WindowBench::press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return editor.refusal().isEmpty(); }));
  });
  bench.document->editor().EditStereotypes();
  EXPECT_EQ(stereotypes(), "<NONE> fine");
}

TEST_F(DialogsTest, aNewClassIsNamedAndItsMembersTicked) {
  const auto form = platform::make<editors::frmClass>(bench.registry);
  form->SetClassnameLabel("Name of superclass:");
  form->Prepare(*bench.document->editor().GetClassFromNode("order"));
  bench.shell->inForms.emplace_back([&](QWidget& dialog) {
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), "Name of superclass");
    WindowBench::press(Qt::Key_Return);
    WindowBench::write("Numbered");
    WindowBench::press(Qt::Key_Return);
    EXPECT_EQ(bench.shell->asked.size(), 2U) << "neither a name nor a member";
    EXPECT_TRUE(dialog.isVisible());
    tab(2);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), "Attributes");
    for (int i = 0; i < 3; ++i) WindowBench::press(Qt::Key_Space);
    EXPECT_EQ(form->Attributes()->tickedRows()->Count(), 1) << "ticked, unticked, ticked";
    WindowBench::press(Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !dialog.isVisible(); }));
  });
  bench.shell->runForm("frmClass", *form);
  EXPECT_TRUE(form->Accepted());
  EXPECT_EQ(form->ClassName()->Text(), "Numbered");
  bench.shell->inForms.emplace_back([](QWidget&) { WindowBench::press(Qt::Key_Escape); });
  bench.shell->runForm("frmClass", *form);
  EXPECT_FALSE(form->Accepted());
}

TEST_F(DialogsTest, aClassIsEditedInADialogOfItsOwn) {
  const auto form = platform::make<editors::frmClassControl>(bench.registry);
  editors::CLSClassControl& control = *form->CLSClassControl1();
  control.Repository(model.get());
  control.Class(bench.document->editor().GetClassFromNode("order").get());
  control.Prepare();
  bench.shell->inForms.emplace_back([&](QWidget& dialog) {
    WindowBench::press(Qt::Key_PageDown, Qt::ControlModifier);
    WindowBench::write("second");
    tab(2);
    WindowBench::write("int");
    WindowBench::press(Qt::Key_Return);
    EXPECT_EQ(control.Attributes()->rowCount(), 2U);
    tab(4);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), "Attributes");
    WindowBench::press(Qt::Key_Down);
    WindowBench::press(Qt::Key_Return);
    EXPECT_TRUE(control.Property()->Visible());
    WindowBench::press(Qt::Key_Escape);
    EXPECT_TRUE(dialog.isVisible()) << "one step back";
    WindowBench::press(Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  bench.shell->runForm("frmClassControl", *form);
}

/// A form that the shell has no dialog for.
class UnknownForm : public editors::Form {
 public:
  UnknownForm() : Form("Unknown") {}
};

TEST_F(DialogsTest, aFormWithoutAViewIsHiddenAtOnce) {
  const auto form = platform::make<UnknownForm>();
  const auto shell = platform::make<QtShell>();
  for (const char* name : {"frmUnknown", "frmStereotype"}) {
    form->Visible(true);
    shell->runForm(name, *form);
    EXPECT_FALSE(form->Visible()) << name;
  }
}

TEST_F(DialogsTest, aPropertyTellsWhatItRefusesAndKeepsWhatWasTyped) {
  const auto store = model->GetRepository();
  const auto area = store->MakeNode("GeomArea", "area", "g1");
  area->SetProperty("top", 10);
  area->SetProperty("left", 20);
  const auto grid = platform::make<controls::Property>();
  grid->owner(area->Parent().get());
  for (const char* key : {"top", "left", "scope", "final"}) grid->addKey(key);
  grid->load();
  grid->node(area.get());
  PropertyWidget widget(grid);
  widget.resize(300, 200);
  widget.show();
  auto& top = *dynamic_cast<QLineEdit*>(widget.field("top"));
  EXPECT_EQ(top.text(), "10");
  const auto retype = [&](const char* text) {
    top.selectAll();
    QTest::keyClicks(&top, text);
  };
  retype("1x");
  EXPECT_NE(widget.refusal("top").indexOf("number"), -1);
  EXPECT_EQ(top.text(), "1x");
  EXPECT_EQ(grid->ValueOf("top"), platform::Value(1)) << "as far as it was one";
  EXPECT_EQ(widget.refusal("left"), "");
  retype("12");
  EXPECT_EQ(widget.refusal("top"), "");
  EXPECT_EQ(grid->ValueOf("top"), platform::Value(12));

  grid->Edit("top", 14);
  EXPECT_EQ(top.text(), "14") << "edited by the program";
  grid->node(nullptr);
  EXPECT_FALSE(top.isEnabled());
  grid->release();
  grid->owner(area->Parent().get());
  grid->addKey("top");
  grid->load();
  EXPECT_EQ(widget.field("left"), nullptr);
}

}  // namespace
}  // namespace brisel::qt
