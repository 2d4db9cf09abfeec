#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QTimer>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "controls/ToolBarControl.h"
#include "qt/FileFilter.h"

namespace brisel::qt {
namespace {

using test::WindowBench;

TEST(FileFilter, readsAsQtWantsIt) {
  const std::pair<const char*, const char*> cases[] = {
      {"DIM Format (*.dim)|*.dim", "DIM Format (*.dim)"},
      {"Models|*.uml;*.xmi|All files (*)|*", "Models (*.uml *.xmi);;All files (*)"},
      {"A name alone", ""},
      {"", ""},
      {"Empty||Next|*.x", "Next (*.x)"},
  };
  for (const auto& [filter, expected] : cases) EXPECT_EQ(toQtFilter(filter), expected) << filter;
}

TEST(QtShell, popsUpTheBandsOfTheEditor) {
  const WindowBench bench;
  const auto bar = platform::as<controls::ToolBarControl>(bench.document->editor().ActiveBar21());
  bar->enabled("miMorpToAss", true);
  QMenu menu;
  fillMenu(menu, *bar, "tbPopupAssoc");
  ASSERT_EQ(menu.actions().size(), 2);
  EXPECT_EQ(menu.actions()[0]->text(), "Edit ...");
  const QMenu* morphing = menu.actions()[1]->menu();
  ASSERT_NE(morphing, nullptr);
  EXPECT_EQ(morphing->actions().size(), 5);

  std::string clicked;
  const auto connection = bar->ToolClick.connect([&](const std::string& key) { clicked = key; });
  bar->Tag("nobody");
  morphing->actions()[0]->trigger();
  EXPECT_EQ(clicked, "miMorpToAss");
}

TEST(QtShell, putsPicturesOnTheClipboardInSeveralKinds) {
  const WindowBench bench;
  bench.drawSample();
  bench.button("Copy").trigger();
  const QMimeData* data = QApplication::clipboard()->mimeData();
  EXPECT_TRUE(data->hasFormat("image/svg+xml"));
  EXPECT_TRUE(data->hasImage()) << "those who take no drawings get points";
}

TEST(QtShell, answersWithTheButtonThatWasClicked) {
  const WindowBench bench;
  const auto shell = platform::make<QtShell>();
  shell->window(bench.window.get());
  for (const char* wanted : {"Save", "Discard", "Cancel"}) {
    QTimer::singleShot(0, [&] {
      QWidget* box = QApplication::activeModalWidget();
      ASSERT_NE(box, nullptr);
      for (QAbstractButton* button : box->findChildren<QAbstractButton*>()) {
        if (button->text().remove('&') == wanted) button->click();
      }
    });
    EXPECT_EQ(shell->showMessage({"Brisel", "Save?", {"Save", "Discard", "Cancel"}, {}}), wanted);
  }
  QTimer::singleShot(0, [] { QApplication::activeModalWidget()->close(); });
  EXPECT_EQ(shell->showMessage({"Brisel", "Save?", {"Save", "Discard", "Cancel"}, {}}), "Cancel");
}

}  // namespace
}  // namespace brisel::qt
