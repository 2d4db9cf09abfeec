#include <gtest/gtest.h>

#include "WindowBench.h"
#include "component/DiagramWindow.h"
#include "qt/FormWindow.h"

namespace brisel::qt {
namespace {

using test::WindowBench;

std::vector<const QAction*> buttonsOf(const WindowBench& bench) {
  std::vector<const QAction*> buttons;
  for (const CanvasToolBar* bar :
       {&bench.window->editor().toolBar(), &bench.window->editor().drawingTools()}) {
    for (const QAction* action : bar->actions()) {
      if (!action->isSeparator() && action->isVisible()) buttons.push_back(action);
    }
  }
  return buttons;
}

std::string seenIn(const CanvasToolBar& bar) {
  std::string seen;
  for (const QAction* action : bar.actions()) {
    if (!action->isVisible()) continue;
    seen += action->isSeparator() ? "| " : action->objectName().toStdString() + " ";
  }
  return seen;
}

TEST(CanvasToolBar, splitsTheButtonsIntoRowAndPalette) {
  const WindowBench bench;
  EXPECT_EQ(seenIn(bench.window->editor().toolBar()),
            "Open Save | ViewAttributes ViewOperations ViewParameters | COM::Builtin COM::Enum "
            "COM::TypeDef COM::Module COM::Interface COM::CoClass COM::DispInterface | ZoomIn "
            "ZoomOut ZoomNo ZoomFull | Print PrintPreview | Copy | LayoutRandom LayoutMatrix "
            "LayoutSpring LayoutHierarchy | AlignLeft AlignRight AlignTop AlignBottom | "
            "Stereotypes MatrixBrowser Template Demo | Help ");
  EXPECT_EQ(seenIn(bench.window->editor().drawingTools()),
            "Select NewClass Association CompositeAggregation SharedAggregation Generalization ");
  for (const QAction* action : buttonsOf(bench)) {
    EXPECT_FALSE(action->icon().pixmap(24).isNull()) << action->objectName().toStdString();
    EXPECT_FALSE(action->toolTip().isEmpty()) << action->objectName().toStdString();
  }
}

TEST(CanvasToolBar, showsEveryButtonInAWindowOfUsualSize) {
  const WindowBench bench;
  bench.window->resize(1280, 860);
  QApplication::processEvents();
  for (const CanvasToolBar* bar :
       {&bench.window->editor().toolBar(), &bench.window->editor().drawingTools()}) {
    for (QAction* action : bar->actions()) {
      if (action->isSeparator() || !action->isVisible()) continue;
      const QWidget* button = bar->widgetForAction(action);
      ASSERT_NE(button, nullptr);
      const auto isSeen = [&] {
        return button->isVisible() && bar->rect().contains(button->geometry());
      };
      EXPECT_TRUE(WindowBench::waitFor(isSeen)) << action->objectName().toStdString();
    }
  }
}

TEST(CanvasToolBar, keepsSelectInTheRowWhereTheHostAddsNoDrawingTools) {
  WindowBench bench;
  const auto editor = bench.registry.create<editor::CLSEditor>("BriselCLS.CLSEditor");
  EditorWidget widget(*editor);
  widget.show();
  EXPECT_EQ(seenIn(widget.toolBar()).substr(0, 14), "Select | Save ");
  EXPECT_FALSE(widget.drawingTools().isVisible());
  editor->diagram()->AddButton("Association", "", "draw", "", true);
  EXPECT_TRUE(widget.drawingTools().isVisible());
  EXPECT_EQ(seenIn(widget.toolBar()).substr(0, 7), "Save | ");
  EXPECT_EQ(widget.action("Select")->parent(), &widget.drawingTools());
}

TEST(CanvasToolBar, tellsTheIconsApart) {
  const WindowBench bench;
  std::vector<std::pair<QImage, std::string>> seen;
  for (const QAction* action : buttonsOf(bench)) {
    const std::string key = action->objectName().toStdString();
    if (key == "COM::DispInterface") continue;
    const QImage picture = action->icon().pixmap(24).toImage();
    for (const auto& [other, name] : seen) EXPECT_NE(picture, other) << key << " and " << name;
    seen.emplace_back(picture, key);
  }
}

TEST(CanvasToolBar, canBeReadOnLightAndDarkBars) {
  constexpr int kVisible = 60;  // of 255 in brightness
  const WindowBench bench;
  for (const QAction* action : buttonsOf(bench)) {
    const QImage picture = action->icon().pixmap(48).toImage();
    for (const int ground : {0xF0, 0x2B}) {
      int seen = 0;
      for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
          const QColor color = picture.pixelColor(x, y);
          const bool opaque = color.alpha() > 128;
          seen += opaque && std::abs(qGray(color.rgb()) - ground) > kVisible ? 1 : 0;
        }
      }
      EXPECT_GT(seen, 48 * 48 / 20) << action->objectName().toStdString() << " on " << ground;
    }
  }
}

TEST(CanvasToolBar, showsFaintlyWhatCannotBeChosen) {
  const WindowBench bench;
  for (const QAction* action : buttonsOf(bench)) {
    const auto strength = [&](QIcon::Mode mode) {
      const QImage picture = action->icon().pixmap(QSize(24, 24), 2, mode).toImage();
      EXPECT_EQ(picture.size(), QSize(48, 48)) << "as sharp as the screen";
      qint64 sum = 0;
      for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) sum += picture.pixelColor(x, y).alpha();
      }
      return static_cast<double>(sum);
    };
    const double faint = strength(QIcon::Disabled);
    EXPECT_GT(faint, 0) << action->objectName().toStdString();
    EXPECT_LT(faint, strength(QIcon::Normal) / 2) << action->objectName().toStdString();
  }
}

TEST(CanvasToolBar, holdsWhatTheEditorHolds) {
  const WindowBench bench;
  for (const char* key : {"ViewAttributes", "ViewOperations", "ViewParameters", "COM::Enum"}) {
    EXPECT_TRUE(bench.button(key).isChecked()) << key;
  }
  for (const char* key : {"COM::Builtin", "ZoomIn", "Save"}) {
    EXPECT_FALSE(bench.button(key).isChecked()) << key;
  }
}

TEST(CanvasToolBar, clicksReachTheEditor) {
  const WindowBench bench;
  bench.drawSample();
  const auto attributes = [&] {
    return bench.document->canvas().getNode("order")->Section(0)->visible();
  };
  EXPECT_TRUE(attributes());
  bench.button("ViewAttributes").trigger();
  EXPECT_FALSE(attributes());
  EXPECT_FALSE(bench.button("ViewAttributes").isChecked());
  bench.button("ViewAttributes").trigger();
  EXPECT_TRUE(attributes());
  EXPECT_TRUE(bench.button("ViewAttributes").isChecked());

  bench.button("COM::Enum").trigger();
  EXPECT_FALSE(bench.button("COM::Enum").isChecked());

  const double before = bench.document->canvas().getZoom();
  bench.button("ZoomIn").trigger();
  EXPECT_GT(bench.document->canvas().getZoom(), before);
  EXPECT_FALSE(bench.button("ZoomIn").isChecked()) << "a command does not stay down";
}

TEST(CanvasToolBar, followsButtonsOfTheHost) {
  const WindowBench bench;
  canvas::DiagramControl& canvas = bench.document->canvas();
  canvas.AddButton("Mine", "", "of another host",
                   BRISEL_BINARY_DIR "\\share\\brisel\\Generalization.bmp", true);
  canvas.AddButton("Locked", "", "not now", "nowhere.bmp", false);
  EXPECT_FALSE(bench.button("Mine").icon().isNull());
  EXPECT_FALSE(bench.button("Locked").isEnabled());
  std::vector<std::string> clicked;
  const auto connection =
      canvas.ToolbarButton.connect([&](const std::string& key) { clicked.push_back(key); });
  bench.button("Mine").trigger();
  EXPECT_EQ(clicked, std::vector<std::string>{"Mine"});
  canvas.ShowToolbar(false);
  EXPECT_FALSE(bench.window->editor().toolBar().isVisible());
}

/// A host may end the window from inside a click on one of its buttons.
TEST(CanvasToolBar, outlivesTheClickThatEndsTheWindow) {
  WindowBench bench;
  const auto ending = platform::make<component::DiagramWindow>(bench.registry);
  FormWindow window(*ending, FormWindow::Modal::returns);
  ending->Create("ending", nullptr);
  ending->PopUp(false);
  EXPECT_TRUE(window.isVisible());
  EditorWidget* editor = window.findChild<EditorWidget*>();
  int clicks = 0;
  const auto connection = ending->form()->Editor()->ToolbarButton.connect([&](const auto&) {
    ++clicks;
    ending->Destroy();
  });
  editor->action("ZoomIn")->trigger();
  EXPECT_EQ(clicks, 1);
  EXPECT_FALSE(window.isVisible());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(window.findChild<EditorWidget*>(), nullptr);
  ending->Create("again", nullptr);
  EXPECT_NE(window.findChild<EditorWidget*>(), nullptr);
}

}  // namespace
}  // namespace brisel::qt
