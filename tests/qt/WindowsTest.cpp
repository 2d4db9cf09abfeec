#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QSettings>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "qt/MainMenus.h"
#include "qt/RecentMenu.h"
#include "qt/Windows.h"

namespace brisel::qt {
namespace {

using test::AnsweringShell;
using test::WindowBench;

/// The application without its loop, and two diagrams on the disk.
class Desktop : public testing::Test {
 protected:
  Desktop() {
    QSettings().clear();
    const WindowBench bench;
    for (const char* name : {"a.dim", "b.dim"}) {
      bench.drawSample();
      bench.document->canvas().getNode("line")->bounds({12000, 7000, 2700, 1800});
      bench.shell->chosenFiles.emplace_back(path(name));
      EXPECT_TRUE(bench.document->save());
      bench.document->create();
    }
  }
  ~Desktop() override { QSettings().clear(); }

  [[nodiscard]] std::string path(const char* name) const {
    return folder.filePath(name).toStdString();
  }
  static void trigger(const MainWindow& window, std::string_view key) {
    window.menus().action(key)->trigger();
    QApplication::processEvents();
  }
  static void draw(const MainWindow& window) {
    window.editor().editor().CreateClass("new", "New", "", "", "", "public");
  }
  [[nodiscard]] QStringList titles() const {
    QStringList titles;
    for (MainWindow* window : windows.all()) {
      window->refreshState();
      titles += window->windowTitle();
    }
    return titles;
  }

  QTemporaryDir folder;
  std::vector<platform::Ref<AnsweringShell>> shells;
  Windows windows{BRISEL_BINARY_DIR "/share/brisel", [this] {
                    shells.push_back(platform::make<AnsweringShell>());
                    return platform::Ref<QtShell>(shells.back());
                  }};
};

TEST_F(Desktop, givesEachFileAWindowAndShowsItOnce) {
  MainWindow& first = windows.open({path("a.dim")});
  MainWindow& second = windows.open({path("b.dim")}, &first);
  EXPECT_NE(&first, &second);
  EXPECT_NE(first.pos(), second.pos()) << "both can be seen";
  EXPECT_EQ(&windows.open({folder.filePath("./a.dim").toStdString()}, &second), &first);
  trigger(first, "NewWindow");
  EXPECT_EQ(titles(),
            QStringList({"a.dim[*] - Brisel", "b.dim[*] - Brisel", "Untitled[*] - Brisel"}));
  const auto canvas = platform::as<canvas::DiagramControl>(second.editor().editor().diagram());
  const double zoom = canvas->viewport().zoom();
  canvas->viewport().fit(canvas->scene().extent());
  EXPECT_EQ(std::max(canvas->viewport().zoom(), 60.0), zoom) << "fitted to the window as seen";
  // What cannot be opened is told where it was asked for.
  MainWindow& third = *windows.all().back();
  draw(third);
  EXPECT_EQ(&windows.open({path("missing.dim")}, &third), &third);
  EXPECT_TRUE(third.messages().text().contains("missing.dim"));
  EXPECT_EQ(windows.all().size(), 3U);
}

TEST_F(Desktop, opensInAnUntouchedWindowAndNeverOverWork) {
  MainWindow& first = windows.add();
  shells[0]->chosenFiles.emplace_back(path("a.dim"));
  trigger(first, "Open");
  EXPECT_EQ(titles(), QStringList({"a.dim[*] - Brisel"}));
  draw(first);
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(folder.filePath("a.dim")),
                QUrl::fromLocalFile(folder.filePath("b.dim"))});
  QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&first, &enter);
  QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&first, &drop);
  EXPECT_EQ(titles(), QStringList({"a.dim[*] - Brisel", "b.dim[*] - Brisel"}));
  EXPECT_TRUE(first.isWindowModified()) << "a file that is open already is not read again";
}

TEST_F(Desktop, quitsAllWindowsOrNone) {
  for (const char* name : {"a.dim", "b.dim"}) draw(windows.open({path(name)}));
  shells[0]->answers = {"Discard", "Save"};
  shells[1]->answers = {"Cancel", "Save"};
  trigger(*windows.all()[0], "Quit");
  EXPECT_EQ(titles().size(), 2) << "one Cancel keeps all of them";
  EXPECT_TRUE(windows.all()[0]->isWindowModified()) << "and what was to be lost is still there";
  trigger(*windows.all()[1], "Quit");
  EXPECT_TRUE(windows.all().empty());
  MainWindow& again = windows.open({path("b.dim")});
  EXPECT_NE(again.editor().editor().diagram()->getNode("new"), nullptr) << "saved on the way out";
}

TEST_F(Desktop, asksBeforeTheSessionEnds) {
  draw(windows.open({path("a.dim")}));
  EXPECT_TRUE(windows.prepareToEnd(false)) << "nobody may be asked";
  EXPECT_TRUE(shells[0]->asked.empty());
  shells[0]->answers = {"Cancel"};
  EXPECT_FALSE(windows.prepareToEnd(true));
  shells[0]->answers = {"Save"};
  EXPECT_TRUE(windows.prepareToEnd(true));
  EXPECT_FALSE(windows.all()[0]->editor().editor().RepositoryFileName().empty());
}

TEST_F(Desktop, aClosedWindowLeavesTheOthersAlone) {
  const QPointer<MainWindow> first = &windows.open({path("a.dim")});
  MainWindow& second = windows.open({path("b.dim")});
  first->resize(777, 555);
  trigger(*first, "Close");
  EXPECT_TRUE(first.isNull());
  draw(second);
  EXPECT_EQ(titles(), QStringList({"b.dim[*] - Brisel"}));
  shells[1]->answers = {"Discard"};
  trigger(second, "Close");
  EXPECT_TRUE(windows.all().empty());
  EXPECT_TRUE(QSettings().contains("window/geometry"));
}

TEST_F(Desktop, remembersWhereItsWindowWas) {
  MainWindow& first = windows.add();
  first.setGeometry(60, 50, 640, 480);
  trigger(first, "Close");
  EXPECT_EQ(windows.add().geometry(), QRect(60, 50, 640, 480));
}

TEST_F(Desktop, offersTheFilesOfLastTimeThatAreStillThere) {
  MainWindow& first = windows.open({path("a.dim")});
  windows.open({path("b.dim")}, &first);
  QMenu& menu = *first.menus().menu("&File/Open &Recent");
  const auto offered = [&] {
    static_cast<void>(QMetaObject::invokeMethod(first.menus().menu("&File"), "aboutToShow"));
    QStringList names;
    for (const QAction* action : menu.actions()) {
      if (action->data().isValid()) names += QFileInfo(action->data().toString()).fileName();
    }
    return names;
  };
  EXPECT_EQ(offered(), QStringList({"b.dim", "a.dim"}));
  windows.open({path("missing.dim")}, &first);
  QFile::remove(folder.filePath("b.dim"));
  EXPECT_EQ(offered(), QStringList({"a.dim"})) << "neither what is gone nor what never was";
  shells.back()->answers = {"Discard"};
  for (MainWindow* window : windows.all()) window->closeUnasked();
  QApplication::processEvents();

  MainWindow& later = windows.add();
  QMenu& kept = *later.menus().menu("&File/Open &Recent");
  ASSERT_TRUE(kept.menuAction()->isEnabled());
  kept.actions().constFirst()->trigger();
  QApplication::processEvents();
  EXPECT_EQ(titles(), QStringList({"a.dim[*] - Brisel"}));
  trigger(later, "ClearRecent");
  EXPECT_TRUE(RecentMenu::files().isEmpty());
}

TEST_F(Desktop, offersToReloadWhatAnotherProgramChanged) {
  MainWindow& window = windows.open({path("a.dim")});
  const auto isTold = [&](const char* what) {
    return WindowBench::waitFor(
        [&] { return window.messages().isVisible() && window.messages().text().contains(what); });
  };
  const WindowBench elsewhere;
  ASSERT_TRUE(elsewhere.window->openFiles({path("a.dim")}));
  draw(*elsewhere.window);
  ASSERT_TRUE(elsewhere.document->save());
  ASSERT_TRUE(isTold("a.dim was changed by another program"));
  EXPECT_EQ(window.editor().editor().diagram()->getNode("new"), nullptr);
  window.messages().findChild<QPushButton*>("MessageOffer")->click();
  EXPECT_NE(window.editor().editor().diagram()->getNode("new"), nullptr);
  EXPECT_FALSE(window.messages().isVisible());

  QFile::remove(folder.filePath("a.dim"));
  ASSERT_TRUE(isTold("moved or deleted"));
  trigger(window, "Close");
  EXPECT_EQ(shells[0]->asked.size(), 1U) << "what stands nowhere else is not lost unasked";
}

}  // namespace
}  // namespace brisel::qt
