#include <QToolButton>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "qt/ClassPane.h"

namespace brisel::qt {
namespace {

using test::WindowBench;

class ClassPaneTest : public testing::Test {
 protected:
  ClassPaneTest() { bench.drawSample(); }

  WindowBench bench;
  editors::CLSClassControl& pane = *bench.document->editor().CLSClassControl1();
  platform::Ref<controls::ToolBarControl> bands =
      platform::as<controls::ToolBarControl>(bench.document->editor().ActiveBar21());
  ClassPane& shown = bench.window->editor().classPane();
  QToolButton& close = *shown.findChild<QToolButton*>("ClosePane");
};

TEST_F(ClassPaneTest, liesOverTheCanvasWhereThePaneSays) {
  EXPECT_FALSE(shown.isVisible());
  const auto order = bench.document->editor().GetClassFromNode("order");
  pane.Class(order.get());
  pane.Repository(bench.document->editor().CLSRepository().get());
  pane.area({1500, 3000, 4500, 3000});
  pane.Prepare();
  pane.Visible(true);
  EXPECT_TRUE(shown.isVisible());
  EXPECT_EQ(shown.geometry(), QRect(100, 200, 300, 200));
  EXPECT_EQ(shown.heading(), "Class Order");
  close.click();
  EXPECT_FALSE(shown.isVisible());
  EXPECT_FALSE(pane.Visible());
  EXPECT_FALSE(pane.Class());
}

TEST_F(ClassPaneTest, isDockedWhileTheBandIsOpen) {
  pane.Class(bench.document->editor().GetClassFromNode("order").get());
  pane.Visible(true);
  const QWidget& view = bench.window->editor().view();
  bands->showBand("tbProperty", true);
  QApplication::processEvents();
  EXPECT_TRUE(shown.isDocked() && shown.isVisible());
  EXPECT_GE(shown.mapTo(bench.window.get(), QPoint()).x(),
            view.mapTo(bench.window.get(), QPoint()).x() + view.width());
  std::string closed;
  const auto connection = bands->BandClosed.connect([&](const std::string& key) { closed = key; });
  close.click();
  EXPECT_EQ(closed, "tbProperty");
  EXPECT_FALSE(shown.isDocked());
  pane.Visible(false);
  EXPECT_FALSE(shown.isVisible());
}

}  // namespace
}  // namespace brisel::qt
