#include <gtest/gtest.h>

#include "WindowBench.h"

namespace brisel::qt {
namespace {

using test::WindowBench;

TEST(CanvasToolBar, showsTheButtonsInTheirOrder) {
  const WindowBench bench;
  std::string order;
  for (const QAction* action : bench.window->editor().toolBar().actions()) {
    if (action->isSeparator()) {
      order += "| ";
      continue;
    }
    order += action->objectName().toStdString() + " ";
    EXPECT_FALSE(action->icon().pixmap(24).isNull()) << action->objectName().toStdString();
    EXPECT_FALSE(action->toolTip().isEmpty()) << action->objectName().toStdString();
  }
  EXPECT_EQ(order,
            "Select | Save | ViewAttributes ViewOperations ViewParameters | COM::Builtin COM::Enum "
            "COM::TypeDef COM::Module COM::Interface COM::CoClass COM::DispInterface | ZoomIn "
            "ZoomOut ZoomNo ZoomFull | Print PrintPreview | Copy | LayoutRandom LayoutMatrix "
            "LayoutSpring LayoutHierarchy | AlignLeft AlignRight AlignTop AlignBottom | Help ");
}

TEST(CanvasToolBar, tellsTheIconsApart) {
  const WindowBench bench;
  std::vector<std::pair<QImage, std::string>> seen;
  for (const QAction* action : bench.window->editor().toolBar().actions()) {
    const std::string key = action->objectName().toStdString();
    if (action->isSeparator() || key == "COM::DispInterface") continue;
    const QImage picture = action->icon().pixmap(24).toImage();
    for (const auto& [other, name] : seen) EXPECT_NE(picture, other) << key << " and " << name;
    seen.emplace_back(picture, key);
  }
}

TEST(CanvasToolBar, canBeReadOnLightAndDarkBars) {
  constexpr int kVisible = 60;  // of 255 in brightness
  const WindowBench bench;
  for (const QAction* action : bench.window->editor().toolBar().actions()) {
    if (action->isSeparator()) continue;
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
  canvas.AddButton("Generalization", "", "draw a generalization",
                   BRISEL_BINARY_DIR "\\share\\brisel\\Generalization.bmp", true);
  canvas.AddButton("Locked", "", "not now", "nowhere.bmp", false);
  EXPECT_FALSE(bench.button("Generalization").icon().isNull());
  EXPECT_FALSE(bench.button("Locked").isEnabled());
  std::vector<std::string> clicked;
  const auto connection =
      canvas.ToolbarButton.connect([&](const std::string& key) { clicked.push_back(key); });
  bench.button("Generalization").trigger();
  EXPECT_EQ(clicked, std::vector<std::string>{"Generalization"});
  canvas.ShowToolbar(false);
  EXPECT_FALSE(bench.window->editor().toolBar().isVisible());
}

}  // namespace
}  // namespace brisel::qt
