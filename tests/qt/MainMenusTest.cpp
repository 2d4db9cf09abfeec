#include <QLabel>
#include <QMenu>
#include <QMenuBar>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "qt/MainMenus.h"

namespace brisel::qt {
namespace {

using platform::Value;
using test::WindowBench;

QAction& command(const WindowBench& bench, std::string_view key) {
  return *bench.window->menus().action(key);
}

/// The keys of the commands that can be chosen now, of those that depend on what there is.
std::string applying(const WindowBench& bench) {
  QApplication::processEvents();
  std::string keys;
  for (const char* key : {"CopyPicture", "SelectAll", "Delete", "Properties", "Rename"}) {
    if (command(bench, key).isEnabled()) keys += std::string(key) + " ";
  }
  return keys;
}

TEST(MainMenus, offerWhatApplies) {
  const WindowBench bench;
  EXPECT_EQ(applying(bench), "");
  bench.drawSample();
  canvas::DiagramControl& canvas = bench.document->canvas();
  canvas.unselectAll();
  EXPECT_EQ(applying(bench), "CopyPicture SelectAll ");
  canvas.selNode(Value("order"));
  EXPECT_EQ(applying(bench), "CopyPicture SelectAll Delete Properties Rename ");
  canvas.selNode(Value("line"));
  EXPECT_EQ(applying(bench), "CopyPicture SelectAll Delete ");
  canvas.unselectAll();
  canvas.selLink(Value("lines"));
  EXPECT_EQ(applying(bench), "CopyPicture SelectAll Delete Properties ");
}

TEST(MainMenus, refactorWhatIsSelected) {
  const WindowBench bench;
  bench.drawSample();
  canvas::DiagramControl& canvas = bench.document->canvas();
  editor::CLSEditor& editor = bench.document->editor();
  canvas.unselectAll();
  QApplication::processEvents();
  EXPECT_FALSE(command(bench, "miMorpToAss").isEnabled());
  EXPECT_EQ(command(bench, "miMorpToAss").toolTip(), "Select one relationship");
  EXPECT_EQ(command(bench, "miMorphClassSplit").toolTip(), "Select one class");
  EXPECT_EQ(command(bench, "miMorphMerge").statusTip(), "Select the classes to merge");
  canvas.selLink(Value("lines"));
  editor.MorphingAssoc("lines", "ToSharedAggregation");
  QApplication::processEvents();
  EXPECT_FALSE(command(bench, "miMorphToAggShared").isEnabled());
  ASSERT_TRUE(command(bench, "miMorpToAss").isEnabled());
  EXPECT_EQ(command(bench, "miMorpToAss").toolTip(),
            "Turn the selected relationship into an association");
  command(bench, "miMorpToAss").trigger();
  EXPECT_TRUE(editor.GetAssociationFromLink("lines")->isAssociation());
  canvas.selection().selectAll();
  QApplication::processEvents();
  const auto before = canvas.getAllNodes()->Count();
  command(bench, "miMorphMerge").trigger();
  EXPECT_EQ(canvas.getAllNodes()->Count(), before + 1);
}

TEST(MainMenus, tellWhatALayoutIsOf) {
  const WindowBench bench;
  bench.drawSample();
  canvas::DiagramControl& canvas = bench.document->canvas();
  const auto title = [&] {
    QApplication::processEvents();
    for (const QMenu* menu : bench.window->menuBar()->findChildren<QMenu*>()) {
      if (menu->actions().contains(&command(bench, "LayoutSpring"))) return menu->title();
    }
    return QString();
  };
  canvas.unselectAll();
  EXPECT_EQ(title(), "&Layout");
  canvas.selNode(Value("order"));
  EXPECT_EQ(title(), "&Layout");
  canvas.selNode(Value("line"));
  EXPECT_EQ(title(), "&Layout of the Selection");
}

TEST(MainMenus, holdEveryButtonOfTheCanvas) {
  const WindowBench bench;
  for (const canvas::Button& button : bench.document->canvas().buttonBar().buttons()) {
    if (button.isSeparator() || button.key == "Copy") continue;  // "CopyPicture" stands for it
    QAction* action = bench.window->menus().action(button.key);
    ASSERT_NE(action, nullptr) << button.key;
    EXPECT_EQ(action, &bench.button(button.key)) << "one state in menu and bar";
    EXPECT_FALSE(action->text().isEmpty()) << button.key;
    EXPECT_EQ(action->isEnabled(), button.enabled) << button.key;
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    EXPECT_TRUE(action->toolTip().contains(keys)) << button.key << ": tips tell the shortcut";
  }
}

TEST(MainMenus, leaveTheCanvassKeysToWhoHasTheKeyboard) {
  const WindowBench bench;
  bench.drawSample();
  QApplication::processEvents();
  command(bench, "SelectAll").trigger();
  EXPECT_EQ(bench.document->canvas().selection().size(), 3U);
  for (const char* key : {"Rename", "Properties", "Delete", "SelectAll", "Help"}) {
    EXPECT_EQ(command(bench, key).shortcutContext(), Qt::WidgetShortcut) << key;
    EXPECT_FALSE(command(bench, key).shortcut().isEmpty()) << key;
  }
}

TEST(MainMenus, newClassIsTheToolWhileAClickCreates) {
  const WindowBench bench;
  canvas::DiagramControl& canvas = bench.document->canvas();
  for (int round = 0; round < 2; ++round) {
    bench.button("NewClass").trigger();
    EXPECT_EQ(canvas.Mode(), "clickCreate");
    EXPECT_TRUE(bench.button("NewClass").isChecked());
  }
  bench.button("Select").trigger();
  EXPECT_EQ(canvas.Mode(), "select");
  EXPECT_FALSE(bench.button("NewClass").isChecked());
}

TEST(MainMenus, openAndSaveAreTheWindowsOnTheBarToo) {
  const WindowBench bench;
  bench.drawSample();
  bench.shell->chosenFiles.emplace_back(bench.path("a.dim"));
  bench.button("Save").trigger();
  EXPECT_EQ(bench.document->path(), bench.path("a.dim"));
  bench.document->create();
  bench.shell->chosenFiles.emplace_back(bench.path("a.dim"));
  bench.button("Open").trigger();
  EXPECT_EQ(bench.document->counts().classes, 2);
}

TEST(MainMenus, aNameBeingTypedCountsWhenTheDiagramIsSaved) {
  for (const char* key : {"Save", "SaveAs", "New", "Open", "Export", "Close"}) {
    const WindowBench bench;
    controls::TextBox& box = *bench.document->editor().ClassName();
    box.Visible(true);
    int left = 0;
    const auto connection = box.FocusLost.connect([&] { ++left; });
    command(bench, key).trigger();
    EXPECT_EQ(left, 1) << key;
  }
}

TEST(StatusLine, tellsHintToolCountsAndWhatThePointerIsOver) {
  const WindowBench bench;
  bench.drawSample();
  const auto text = [&](const char* name) {
    return bench.window->findChild<QLabel*>(name)->text().toStdString();
  };
  canvas::DiagramControl& canvas = bench.document->canvas();
  canvas.getNode("order")->bounds({3000, 3000, 3000, 1500});
  QWidget& viewport = *bench.window->editor().view().viewport();
  const QPointF at(300, 250);
  QMouseEvent move(QEvent::MouseMove, at, viewport.mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                   Qt::NoModifier);
  QApplication::sendEvent(&viewport, &move);
  EXPECT_EQ(text("StatusHint"), "Order: 1 attribute, 0 operations");
  canvas.Hint("Drag to the other class");
  EXPECT_EQ(text("StatusHint"), "Drag to the other class");
  canvas.Hint("");
  EXPECT_EQ(text("StatusHint"), "Order: 1 attribute, 0 operations");
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&viewport, &leave);
  EXPECT_EQ(text("StatusHint"), "");
  EXPECT_EQ(text("StatusTool"), "Select");
  bench.button("NewClass").trigger();
  EXPECT_EQ(text("StatusTool"), "New class");
  bench.button("Select").trigger();
  canvas.PressButton("Generalization");
  EXPECT_EQ(text("StatusTool"), "Generalization");
  bench.window->refreshState();
  EXPECT_EQ(text("StatusCounts"), "2 classes, 1 relationship");
  canvas.zoom(150);
  EXPECT_EQ(text("StatusZoom"), "150 %");
}

}  // namespace
}  // namespace brisel::qt
