#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QImage>
#include <QMenu>
#include <QMimeData>
#include <QProgressDialog>
#include <QTimer>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "controls/ToolBarControl.h"
#include "qt/FileFilter.h"
#include "qt/PopupMenu.h"

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
  bench.drawSample();
  editor::CLSEditor& editor = bench.document->editor();
  const auto bar = platform::as<controls::ToolBarControl>(editor.ActiveBar21());
  bar->Tag("lines");
  editor.MorphingAssoc("lines", "ToAssociation");
  QMenu menu;
  fillMenu(menu, *bar, "tbPopupAssoc");
  ASSERT_EQ(menu.actions().size(), 2);
  EXPECT_EQ(menu.actions()[0]->text(), "Edit ...");
  const QMenu* morphing = menu.actions()[1]->menu();
  ASSERT_NE(morphing, nullptr);
  ASSERT_EQ(morphing->actions().size(), 5);
  EXPECT_FALSE(morphing->actions()[0]->isEnabled());
  EXPECT_EQ(morphing->actions()[0]->toolTip(), "It is an association already");
  ASSERT_TRUE(morphing->actions()[1]->isEnabled());

  std::string clicked;
  const auto connection = bar->ToolClick.connect([&](const std::string& key) { clicked = key; });
  morphing->actions()[1]->trigger();
  EXPECT_EQ(clicked, "miMorphToAggShared");
  EXPECT_TRUE(editor.GetAssociationFromLink("lines")->isAggregation());
}

TEST(QtShell, marksGreysAndLimitsTools) {
  const WindowBench bench;
  const auto bar = platform::as<controls::ToolBarControl>(bench.document->editor().ActiveBar21());
  bar->checked("miCompartmentsOperations", true);
  bar->tool("miMorphMerge")->enabled(false);
  bar->addBand("tbCircle", "Circle");
  bar->addTool("tbCircle", "miAround", "Around", "tbCircle");
  QMenu menu;
  fillMenu(menu, *bar, "tbPopupMenu");
  const auto tool = [&](const char* key) { return menu.findChild<QAction*>(key); };
  EXPECT_TRUE(tool("miCompartmentsOperations")->isChecked());
  EXPECT_FALSE(tool("miCompartmentsAttributes")->isChecked());
  EXPECT_FALSE(tool("miMorphMerge")->isEnabled());
  EXPECT_EQ(tool("miPopupSizeToFit")->text(), "&Size to fit");
  QMenu circle;
  fillMenu(circle, *bar, "tbCircle");
  EXPECT_EQ(circle.actions().size(), 1) << "a band that opens itself comes to an end";
}

TEST(QtShell, showsHowFarALayoutIsAndStopsIt) {
  const WindowBench bench;
  bench.drawSample();
  auto& canvas = bench.window->editor().view().control();
  const auto places = [&] {
    return std::pair(canvas.scene().node("order")->bounds(), canvas.scene().node("line")->bounds());
  };
  canvas.Layout("MATRIX");
  const auto before = places();
  canvas.patience(std::chrono::milliseconds(0));
  bool shown = false;
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    shown = dialog->isVisible() && dialog->labelText() == "Laying out the diagram";
    dialog->findChild<QAbstractButton*>()->click();
  });
  canvas.Layout("%HIERARCHY%");
  EXPECT_TRUE(shown);
  EXPECT_EQ(places(), before);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "the dialog is gone";
  canvas.Layout("%HIERARCHY%");
  EXPECT_NE(places(), before) << "one cancelled layout cancels no other";
}

TEST(QtShell, popsUpAtTheMouseAndGivesTheKeyboardBack) {
  const WindowBench bench;
  bench.drawSample();
  bench.activate();
  bench.window->editor().view().setFocus();
  const auto bar = platform::as<controls::ToolBarControl>(bench.document->editor().ActiveBar21());
  bar->addBand("tbShort", "Short");
  bar->addTool("tbShort", "miOnly", "&Only this", "");
  const QPoint place = bench.window->mapToGlobal(QPoint(150, 120));
  {
    const PopupsAt there(place);
    bar->popUp("tbShort");
  }
  EXPECT_EQ(popupPlace(), QCursor::pos()) << "only while it is asked for";
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->pos(), place);
  std::string clicked;
  const auto connection = bar->ToolClick.connect([&](const std::string& key) { clicked = key; });
  for (const int key : {Qt::Key_Down, Qt::Key_Return}) {
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      QKeyEvent event(type, key, Qt::NoModifier);
      QApplication::sendEvent(menu, &event);
    }
  }
  EXPECT_EQ(clicked, "miOnly");
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  EXPECT_TRUE(bench.window->editor().view().hasFocus());
  bar->popUp("no such band");
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

/// Where a menu would pop up, and for which item, when the keyboard asks for it.
TEST(QtShell, theKeyboardAsksForTheMenuOfTheSelectedItem) {
  const WindowBench bench;
  bench.drawSample();
  bench.document->canvas().getNode("order")->bounds({3000, 3000, 3000, 1500});
  bench.document->canvas().getNode("line")->bounds({300000, 3000, 3000, 1500});
  bench.activate();
  const DiagramView& view = bench.window->editor().view();
  std::string asked;
  QPoint place;
  const auto listen = [&](const std::string& key) {
    asked += key + " ";
    place = view.viewport()->mapFromGlobal(popupPlace());
  };
  const auto nodes = bench.document->canvas().NodeRClicked.connect(listen);
  const auto links = bench.document->canvas().LinkRClicked.connect(listen);
  const auto ask = [&](int key, Qt::KeyboardModifiers modifiers) {
    bench.window->editor().view().setFocus();
    WindowBench::type(key, {}, modifiers);
    while (QWidget* popup = QApplication::activePopupWidget()) popup->close();
  };
  bench.document->canvas().unselectAll();
  ask(Qt::Key_Menu, Qt::NoModifier);
  EXPECT_EQ(asked, "") << "nothing is selected";
  bench.document->canvas().selNode(platform::Value("order"));
  ask(Qt::Key_Menu, Qt::NoModifier);
  EXPECT_EQ(place, QPoint(300, 250));
  ask(Qt::Key_F10, Qt::ShiftModifier);
  bench.document->canvas().selNode(platform::Value("line"));
  ask(Qt::Key_Menu, Qt::NoModifier);
  EXPECT_EQ(place, QPoint(view.viewport()->width(), 250)) << "as near as is seen";
  bench.document->canvas().selLink(platform::Value("lines"));
  ask(Qt::Key_Menu, Qt::NoModifier);
  EXPECT_EQ(asked, "order order line lines ");
}

TEST(QtShell, putsPicturesOnTheClipboardInSeveralKinds) {
  const WindowBench bench;
  bench.drawSample();
  bench.button("Copy").trigger();
  const QMimeData* data = QApplication::clipboard()->mimeData();
  EXPECT_TRUE(data->hasFormat("image/svg+xml"));
  EXPECT_TRUE(data->data("image/svg+xml").contains("OrderLine"));
  ASSERT_TRUE(data->hasImage()) << "those who take no drawings get points";
  const QImage points = QImage::fromData(data->data("image/png"), "PNG");
  const QImage own = qvariant_cast<QImage>(data->imageData());
  EXPECT_EQ(points.size(), own.size());
  const platform::Rect all = bench.document->canvas().scene().extent();
  EXPECT_NEAR(own.width(), all.width / 15 + 40, 2);
  EXPECT_NEAR(own.height(), all.height / 15 + 40, 2);
}

TEST(QtShell, copiesALargeDiagramAsASmallerPicture) {
  const WindowBench bench;
  bench.drawSample();
  bench.document->canvas().getNode("line")->bounds({900000, 600000, 3000, 1500});
  bench.button("Copy").trigger();
  const QImage own = qvariant_cast<QImage>(QApplication::clipboard()->mimeData()->imageData());
  EXPECT_GT(qint64(own.width()) * own.height(), 30'000'000);
  EXPECT_LE(qint64(own.width()) * own.height(), 41'000'000);
  const auto shell = platform::make<QtShell>();
  shell->copy({{"text/plain", "words"}, {"image/svg+xml", "no drawing"}});
  EXPECT_EQ(QApplication::clipboard()->text(), "words");
  EXPECT_TRUE(QApplication::clipboard()->image().isNull());
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
