#include <QAbstractItemView>
#include <QLineEdit>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "qt/ClassPane.h"
#include "qt/ComboWidget.h"
#include "qt/NameBox.h"

namespace brisel::qt {
namespace {

using platform::each;
using platform::Link;
using test::WindowBench;

/// A class that a person edits from the keyboard alone, in the application's window.
class ClassEditingTest : public testing::Test {
 protected:
  ClassEditingTest() {
    bench.drawSample();
    order = platform::as<platform::Node>(model->GetRepository()->MetaNodes("Class")->find("order"));
    model->MakeDataType("Text", "", "");
    model->MakeDataType("Time", "", "");
    bench.activate();
    bench.window->editor().view().setFocus();
    bench.document->canvas().selNode(platform::Value("order"));
  }

  void open() {
    WindowBench::press(Qt::Key_Return);
    ASSERT_TRUE(shown.isVisible());
  }
  void openAttributes() {
    open();
    WindowBench::press(Qt::Key_PageDown, Qt::ControlModifier);
  }
  /// "a:Text b:int": members of an owner with their types, in order.
  [[nodiscard]] static std::string members(const platform::Node& owner, const char* ownership,
                                           const char* dataType) {
    std::string all;
    for (const Link& link : each<Link>(owner.outgoing(ownership))) {
      const auto types = link.Target()->outgoing(dataType);
      all += (all.empty() ? "" : " ") + link.Target()->name() + ':';
      for (const Link& type : each<Link>(types)) all += type.Target()->name();
    }
    return all;
  }
  [[nodiscard]] std::string attributes() const {
    return members(*order, "Class.Has.Attrib", "Attrib.Has.DataType");
  }
  /// The names that the list shows, as its view reads them.
  [[nodiscard]] static std::string namesIn(const QAbstractItemView& list) {
    std::string names;
    for (int row = 0; row < list.model()->rowCount(); ++row) {
      names += (row == 0 ? "" : " ") + list.model()->index(row, 0).data().toString().toStdString();
    }
    return names;
  }
  [[nodiscard]] std::string rowsInBox(int section) const {
    std::string rows;
    const auto box = bench.document->canvas().getNode("order");
    for (auto& row : each<platform::Object>(box->Section(section)->Rows())) {
      rows += row.get("text").text() + '|';
    }
    return rows;
  }
  [[nodiscard]] std::string keyboard() const {
    const QWidget* widget = QApplication::focusWidget();
    return widget ? widget->accessibleName().toStdString() : "nobody";
  }

  WindowBench bench;
  platform::Ref<repository::CLSRepository> model = bench.document->editor().CLSRepository();
  editors::CLSClassControl& pane = *bench.document->editor().CLSClassControl1();
  ClassPane& shown = bench.window->editor().classPane();
  platform::Ref<platform::Node> order;
};

TEST_F(ClassEditingTest, opensAndClosesWithTheKeyboardWhereItBelongs) {
  open();
  EXPECT_EQ(shown.heading(), "Class Order");
  EXPECT_EQ(keyboard(), "Stereotype");
  WindowBench::press(Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(keyboard(), "Name");
  WindowBench::press(Qt::Key_Delete);
  WindowBench::press(Qt::Key_F2);
  EXPECT_EQ(bench.document->counts().classes, 2) << "keys in the pane are not the canvas's";
  EXPECT_FALSE(bench.window->editor().nameBox().isVisible());
  WindowBench::press(Qt::Key_PageUp, Qt::ControlModifier);
  WindowBench::press(Qt::Key_PageUp, Qt::ControlModifier);
  EXPECT_EQ(pane.TabStrip1()->selected(), "Operations") << "around the end";
  WindowBench::press(Qt::Key_Escape);
  EXPECT_FALSE(shown.isVisible());
  EXPECT_FALSE(pane.Class());
  EXPECT_TRUE(bench.window->editor().view().hasFocus());

  const auto middle = bench.document->canvas().getNode("order")->bounds().center();
  const QPointF at = bench.window->editor().view().fromTwips(middle);
  QWidget& viewport = *bench.window->editor().view().viewport();
  QTest::mouseDClick(&viewport, Qt::LeftButton, {}, at.toPoint());
  EXPECT_TRUE(shown.isVisible());
  QTest::mouseClick(&shown, Qt::LeftButton, {}, QPoint(5, shown.height() - 3));
  EXPECT_TRUE(pane.Class()) << "a click on the pane is none on the canvas below";
}

TEST_F(ClassEditingTest, addsSeveralAttributesOfOneType) {
  openAttributes();
  WindowBench::write("a; b ;; c");
  WindowBench::press(Qt::Key_Tab);
  WindowBench::press(Qt::Key_Right);
  EXPECT_EQ(pane.AttributeScope()->value(), 1);
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(keyboard(), "Type");
  WindowBench::write("te");
  WindowBench::press(Qt::Key_Return);
  EXPECT_EQ(attributes(), "number:int a:Text b:Text c:Text");
  EXPECT_EQ(order->outgoing("Class.Has.Attrib")->Count(), 4);
  EXPECT_EQ(namesIn(*shown.findChild<QAbstractItemView*>("Attributes")), "number a b c");
  EXPECT_EQ(rowsInBox(0), " number:int|#a:Text|#b:Text|#c:Text|");
  EXPECT_EQ(keyboard(), "Type") << "the next type may follow";
}

TEST_F(ClassEditingTest, changesAndDeletesTheAttributeOfTheSelectedRow) {
  openAttributes();
  QWidget* list = shown.findChild<QWidget*>("Attributes");
  list->setFocus(Qt::TabFocusReason);
  EXPECT_EQ(pane.AttributeName()->Text(), "") << "coming by selects nothing";
  WindowBench::press(Qt::Key_Down);
  EXPECT_EQ(pane.AttributeName()->Text(), "number");
  EXPECT_EQ(pane.AttributeType()->Text(), "int");
  WindowBench::press(Qt::Key_T, Qt::AltModifier);
  EXPECT_EQ(keyboard(), "Type");
  WindowBench::press(Qt::Key_Down);
  WindowBench::press(Qt::Key_Down);
  WindowBench::press(Qt::Key_Return);
  EXPECT_EQ(attributes(), "number:Text") << "the entry behind the one that was selected";
  // Where the desktop takes its time to close the list, it would have the next key.
  const auto& types = shown.findChild<ComboWidget*>("AttributeType")->list();
  ASSERT_TRUE(WindowBench::waitFor([&] {
    return !types.isVisible() && keyboard() == "Type" && shown.window()->isActiveWindow();
  }));
  WindowBench::press(Qt::Key_N, Qt::AltModifier);
  ASSERT_EQ(keyboard(), "Name");
  WindowBench::press(Qt::Key_A, Qt::ControlModifier);
  WindowBench::write("other");
  WindowBench::press(Qt::Key_Return);
  EXPECT_EQ(attributes(), "number:Text other:Text") << "Enter in the name field adds";
  list->setFocus();
  WindowBench::press(Qt::Key_Home);
  pane.AttributeName()->Text("other");
  WindowBench::press(Qt::Key_Delete);
  EXPECT_EQ(attributes(), "other:Text") << "what is selected, whatever was typed since";
  EXPECT_EQ(rowsInBox(0), "+other:Text|");
}

TEST_F(ClassEditingTest, makesATypeThatIsTyped) {
  openAttributes();
  WindowBench::write("when");
  WindowBench::press(Qt::Key_T, Qt::AltModifier);
  WindowBench::write("Ti");
  ComboWidget& type = *shown.findChild<ComboWidget*>("AttributeType");
  EXPECT_EQ(type.currentText(), "Time");
  EXPECT_EQ(namesIn(type.list()), "Time");
  EXPECT_TRUE(type.list().isVisible());
  WindowBench::press(Qt::Key_Delete);
  EXPECT_EQ(type.currentText(), "Ti") << "what was completed is dropped";
  WindowBench::press(Qt::Key_Return);
  EXPECT_EQ(attributes(), "number:int when:Ti");
  EXPECT_FALSE(type.list().isVisible());

  WindowBench::write("i");
  EXPECT_EQ(namesIn(type.list()), "int Time Ti") << "those that begin with it first";
  WindowBench::press(Qt::Key_Escape);
  EXPECT_EQ(type.currentText(), "Ti") << "the selection stands there again";
  EXPECT_TRUE(shown.isVisible());
  WindowBench::write("Tex");
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(pane.AttributeType()->selection()->name(), "Text") << "what is seen is what counts";
  EXPECT_EQ(attributes(), "number:int when:Ti") << "leaving the field changes no member";
  WindowBench::press(Qt::Key_T, Qt::AltModifier);
  WindowBench::write("Money");
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(type.currentText(), "Money") << "nothing typed is lost";
  WindowBench::press(Qt::Key_A, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return attributes() == "number:int when:Money"; }));
}

TEST_F(ClassEditingTest, editsParametersOverTheOperations) {
  open();
  WindowBench::press(Qt::Key_PageUp, Qt::ControlModifier);
  WindowBench::write("run");
  WindowBench::press(Qt::Key_T, Qt::AltModifier);
  WindowBench::write("int");
  WindowBench::press(Qt::Key_Return);
  QWidget* list = shown.findChild<QWidget*>("Operations");
  list->setFocus();
  WindowBench::press(Qt::Key_Home);
  EXPECT_TRUE(pane.Operations()->selectedRow());
  WindowBench::press(Qt::Key_P, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return pane.ParameterPicture()->Visible(); }));
  EXPECT_EQ(keyboard(), "Name");
  WindowBench::write("from; to");
  WindowBench::press(Qt::Key_T, Qt::AltModifier);
  WindowBench::write("time");
  WindowBench::press(Qt::Key_Return);
  const auto run = order->outgoing("Class.Has.Operation")->Item(1);
  EXPECT_EQ(members(*platform::as<Link>(run)->Target(), "Operation.Has.Parameter",
                    "Parameter.Has.DataType"),
            "from:Time to:Time");
  EXPECT_EQ(rowsInBox(1), "+run(from:Time,to:Time) : int|");
  WindowBench::press(Qt::Key_Escape);
  EXPECT_FALSE(pane.ParameterPicture()->Visible());
  EXPECT_TRUE(shown.isVisible()) << "one step back";
  EXPECT_TRUE(list->hasFocus());
}

TEST_F(ClassEditingTest, editsTheOtherPropertiesOfAMember) {
  openAttributes();
  QWidget* list = shown.findChild<QWidget*>("Attributes");
  const auto number = platform::as<Link>(order->outgoing("Class.Has.Attrib")->Item(1))->Target();
  const auto openProperties = [&] {
    list->setFocus();
    WindowBench::press(Qt::Key_Home);
    WindowBench::press(Qt::Key_Return);
    EXPECT_TRUE(pane.Property()->Visible());
  };
  openProperties();
  EXPECT_EQ(keyboard(), "Name");
  WindowBench::write("count");
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(keyboard(), "final");
  WindowBench::press(Qt::Key_Space);
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(keyboard(), "scope");
  WindowBench::press(Qt::Key_End);
  WindowBench::press(Qt::Key_O, Qt::AltModifier);
  EXPECT_TRUE(QTest::qWaitFor([&] { return !pane.Property()->Visible(); }));
  EXPECT_EQ(number->name(), "count");
  EXPECT_TRUE(number->GetProperty("final").isTrue());
  EXPECT_EQ(number->GetProperty("scope").text(), "private");
  EXPECT_EQ(rowsInBox(0), "-count:int|");
  EXPECT_TRUE(list->hasFocus());

  openProperties();
  WindowBench::write("dropped");
  WindowBench::press(Qt::Key_Escape);
  EXPECT_FALSE(pane.Property()->Visible());
  EXPECT_EQ(number->name(), "count");
  openProperties();
  WindowBench::write("total");
  WindowBench::press(Qt::Key_Return);
  EXPECT_EQ(number->name(), "total");
}

TEST_F(ClassEditingTest, editsTheClassItself) {
  model->GetRepository()->MakeNode("Stereotype", "entity", "s1");
  open();
  WindowBench::write("enti");
  WindowBench::press(Qt::Key_Return);
  WindowBench::press(Qt::Key_Tab);
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(keyboard(), "Description");
  WindowBench::write("One");
  WindowBench::press(Qt::Key_Return);
  WindowBench::write("two");
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(keyboard(), "category") << "Tab leaves a text of several lines";
  WindowBench::press(Qt::Key_Escape);
  EXPECT_EQ(order->GetProperty("Description").text(), "One\ntwo");
  platform::Ref<Link> link;
  EXPECT_EQ(model->GetStereotype(*order, link)->name(), "entity");
}

TEST_F(ClassEditingTest, aStereotypeThatIsNotThereIsNotTaken) {
  const auto entity = model->GetRepository()->MakeNode("Stereotype", "entity", "s1");
  model->SetStereotype(*order, entity.get());
  open();
  ComboWidget& stereotype = *shown.findChild<ComboWidget*>("Stereotype");
  WindowBench::write("nonsense");
  WindowBench::press(Qt::Key_Return);
  EXPECT_EQ(stereotype.currentText(), "nonsense") << "it can still be mended";
  WindowBench::press(Qt::Key_Tab);
  EXPECT_EQ(stereotype.currentText(), "entity");
  WindowBench::press(Qt::Key_Escape);
  platform::Ref<Link> link;
  EXPECT_EQ(model->GetStereotype(*order, link), entity);
}

TEST_F(ClassEditingTest, endsWithTheClass) {
  openAttributes();
  WindowBench::write("late");
  const auto text = platform::as<platform::Node>(model->SearchObject("DataType", "Name", "Text"));
  pane.AttributeType()->selection(text.get());
  model->GetRepository()->MetaNodes("DataType")->extension()->Remove(text->identifier(), false);
  WindowBench::press(Qt::Key_Return);
  EXPECT_EQ(attributes(), "number:int") << "of a type that is gone";
  bench.document->editor().DeleteClass("order");
  EXPECT_FALSE(shown.isVisible());
  EXPECT_TRUE(bench.window->editor().view().hasFocus());
  EXPECT_TRUE(bench.shell->asked.empty());
  WindowBench::press(Qt::Key_Return);
  EXPECT_FALSE(shown.isVisible());
}

TEST_F(ClassEditingTest, showsTheClassThatIsClickedNext) {
  openAttributes();
  WindowBench::write("half typed");
  const auto line = bench.document->canvas().getNode("line");
  line->bounds({300, 6000, 3000, 1800});
  bench.click(bench.window->editor().view().fromTwips(line->bounds().center()));
  EXPECT_EQ(shown.heading(), "Class OrderLine");
  EXPECT_TRUE(shown.isVisible());
  EXPECT_EQ(shown.findChild<QLineEdit*>("AttributeName")->text(), "");
  EXPECT_TRUE(bench.window->editor().view().hasFocus()) << "the hand is on the canvas";
}

}  // namespace
}  // namespace brisel::qt
