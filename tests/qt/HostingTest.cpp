#include <QApplication>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <memory>

#include <gtest/gtest.h>

#include "component/HostObject.h"
#include "platform/ValueArray.h"
#include "qt/CanvasToolBar.h"
#include "qt/Widgets.h"

namespace brisel::qt {
namespace {

using component::DiagramWindow;
using platform::Ref;

void deleteWhatIsToGo() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

/// A host that makes diagram windows by their programmatic identifier.
class Hosting : public testing::Test {
 protected:
  Hosting() {
    window->Create("Classes", nullptr);
    window->Repository(suite.newModel().get());
    window->Populate();
  }
  ~Hosting() override {
    window = {};
    deleteWhatIsToGo();
  }

  [[nodiscard]] FormWindow* shown() const {
    return dynamic_cast<ShownDiagramWindow&>(*window).window();
  }

  Suite suite;
  Ref<DiagramWindow> window = suite.create<DiagramWindow>("BriselCLS.DiagramWindow");
};

TEST_F(Hosting, aModalPopUpWaitsUntilTheFormIsHidden) {
  const std::vector<std::function<void()>> endings = {
      [this] { window->Conceal(); },
      [this] { shown()->close(); },
      [this] { window->Destroy(); },
  };
  for (const auto& ending : endings) {
    bool ended = false;
    QTimer::singleShot(0, [&] {
      EXPECT_TRUE(shown()->isVisible());
      EXPECT_EQ(QApplication::activeModalWidget(), shown());
      ended = true;
      ending();
    });
    window->PopUp(true);
    EXPECT_TRUE(ended);
    EXPECT_FALSE(shown()->isVisible());
  }
  EXPECT_THROW(window->PopUp(true), platform::Error) << "it was destroyed";
  window->Create("Classes", nullptr);
  window->PopUp(false);
  EXPECT_TRUE(shown()->isVisible());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(Hosting, theLastReferenceMayGoWhileTheWindowIsWaitedFor) {
  const QPointer<FormWindow> form = shown();
  QTimer::singleShot(0, [this] { window->call("Destroy"); });
  QTimer::singleShot(0, [this] { window = {}; });
  DiagramWindow& waiting = *window;
  waiting.PopUp(true);
  EXPECT_FALSE(window);
  deleteWhatIsToGo();
  EXPECT_FALSE(form);
}

TEST_F(Hosting, theLastReferenceMayGoInAClickInTheWindow) {
  window->PopUp(false);
  const QPointer<FormWindow> form = shown();
  const auto dropping =
      window->form()->Editor()->ToolbarButton.connect([this](const auto&) { window = {}; });
  form->findChild<EditorWidget*>()->action("ZoomIn")->trigger();
  EXPECT_FALSE(window);
  EXPECT_FALSE(form && form->isVisible());
  deleteWhatIsToGo();
  EXPECT_FALSE(form);
}

TEST_F(Hosting, theWindowShowsCaptionAndBusyPointer) {
  EXPECT_EQ(shown()->windowTitle(), "UML Class Diagram");
  window->PopUp(false);
  window->form()->HourglassOn();
  ASSERT_TRUE(QApplication::overrideCursor());
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  window->form()->HourglassOn();
  window->form()->HourglassOff();
  EXPECT_FALSE(QApplication::overrideCursor());
  window->form()->HourglassOn();
  window->Destroy();
  EXPECT_FALSE(QApplication::overrideCursor()) << "a window that is gone is busy no more";
}

TEST_F(Hosting, aControlOnAFormTellsOfWhatAPersonDoes) {
  const auto host = platform::make<component::HostObject>();
  host->set("ComponentManager", platform::Value(host));
  QWidget form;
  auto* diagram = new CLSEditorWidget(suite.registry(), &form);
  diagram->editor().Session(host.get());
  diagram->ComponentName("Control");
  const QSignalSpy created(diagram, &CLSEditorWidget::ClassCreated);
  const QSignalSpy buttons(diagram, &CLSEditorWidget::ToolbarButton);
  form.show();
  diagram->editor().CreateClass("a", "A", "", "", "", "");
  ASSERT_EQ(created.count(), 1);
  EXPECT_EQ(created.at(0).at(0), "a");
  EXPECT_FALSE(diagram->action("ZoomIn")->icon().isNull()) << "icons lie beside the library";
  // A slot may take the control away.
  QObject::connect(diagram, &CLSEditorWidget::ToolbarButton, diagram, &QObject::deleteLater);
  diagram->action("ZoomIn")->trigger();
  EXPECT_EQ(buttons.count(), 1);
  const QPointer<CLSEditorWidget> gone(diagram);
  deleteWhatIsToGo();
  EXPECT_FALSE(gone);
  ASSERT_EQ(host->Calls()->Count(), 2);
  const auto last = platform::as<component::HostCall>(host->Calls()->Item(2));
  EXPECT_EQ(last->member(), "RemoveComponent");
  host->terminate();
}

TEST_F(Hosting, aControlHasToolsToDrawWithUnlessAHostHasItsOwn) {
  for (const bool wanted : {true, false}) {
    CLSEditorWidget diagram(suite.registry());
    diagram.DrawingTools(wanted);
    diagram.show();
    diagram.hide();
    diagram.show();
    EXPECT_EQ(diagram.action("Generalization") != nullptr, wanted);
    EXPECT_TRUE(diagram.action("ZoomIn"));
    if (!wanted) continue;
    diagram.action("NewClass")->trigger();
    EXPECT_EQ(diagram.editor().diagram()->Mode(), "clickCreate");
  }
}

TEST_F(Hosting, aControlHasHelpWithoutAHost) {
  CLSEditorWidget diagram(suite.registry());
  diagram.editor().Help();
  const auto windows = QApplication::topLevelWidgets();
  EXPECT_TRUE(std::any_of(windows.begin(), windows.end(), [](const QWidget* widget) {
    return widget->isVisible() && widget->objectName() == "HelpWindow";
  }));
}

TEST_F(Hosting, editorsOfOneElementWriteToTheModel) {
  window->CreateClass("a", "A", "", "", "", "");
  window->CreateClass("b", "B", "", "", "", "");
  window->CreateAssociation("ab", "", "", "a", "b");
  window->SynchronizeDataTypes();
  const auto model = window->CLSRepository();

  CLSClassControlWidget classes(suite.registry());
  classes.show();
  const auto shown = window->GetClassFromNode("a");
  classes.edit(*model, *shown);
  classes.control().AttributeName()->SetText("part");
  classes.control().AttributeType()->Choose("B");
  classes.control().Finish(nullptr);
  EXPECT_EQ(shown->clsObject()->outgoing("Class.Has.Attrib")->Count(), 1);

  CLSAssociationControlWidget relationships(suite.registry());
  relationships.show();
  const auto knows = window->GetAssociationFromLink("ab");
  relationships.edit(*model, *knows);
  const auto grid = relationships.control().PropertyAssociation()->Item(0);
  grid->call("Edit", {"Name", "knows"});
  relationships.control().Finish(nullptr);
  EXPECT_EQ(knows->clsObject()->name(), "knows");

  CLSSelectStereotypeWidget stereotypes(suite.registry());
  stereotypes.control().show(*window->Repository(), nullptr);
  stereotypes.show();
  EXPECT_GT(stereotypes.control().List()->Entries()->values().size(), 0U);
}

}  // namespace
}  // namespace brisel::qt
