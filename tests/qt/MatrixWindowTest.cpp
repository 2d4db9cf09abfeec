#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <set>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "qt/MatrixWindow.h"
#include "tools/MatrixBrowser.h"

namespace brisel::qt {
namespace {

using test::WindowBench;
using Cell = MatrixView::Cell;

class MatrixWindowTest : public testing::Test {
 protected:
  MatrixWindowTest() {
    bench.drawSample();
    editor.CreateClass("customer", "Customer", "", "", "", "");
    editor.CreateAssociation("by", "by", "", "order", "customer");
    bench.button("MatrixBrowser").trigger();
    for (QWidget* one : QApplication::topLevelWidgets()) {
      if (auto* found = qobject_cast<MatrixWindow*>(one)) window = found;
    }
    if (!window) throw std::logic_error("no window");
    browser = platform::as<tools::MatrixBrowser>(editor.MatrixBrowser1());
    browser->Sort("name");  // Customer, Order, OrderLine
    window->activateWindow();
    QApplication::processEvents();
  }
  ~MatrixWindowTest() override {
    if (window) window->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  template <class Child>
  Child& child(const char* name) {
    return *window->findChild<Child*>(name);
  }
  [[nodiscard]] MatrixView& view() const { return window->view(); }
  void click(Cell cell, Qt::MouseButton button = Qt::LeftButton) const {
    QTest::mouseClick(view().viewport(), button, {}, view().areaOf(cell).center());
  }
  static void choose(QMenu& menu, const QString& name) {
    for (QAction* action : menu.actions()) {
      if (action->objectName() == name) return action->trigger();
    }
    ADD_FAILURE() << "no " << name.toStdString();
  }
  [[nodiscard]] std::string looked() { return child<QLabel>("LookedAt").text().toStdString(); }

  WindowBench bench;
  editor::CLSEditor& editor = bench.document->editor();
  QPointer<MatrixWindow> window;
  platform::Ref<tools::MatrixBrowser> browser;
};

TEST_F(MatrixWindowTest, isDrivenByTheMouse) {
  click({2, 0});
  EXPECT_TRUE(bench.document->canvas().getNode("order")->selected());
  click({2, 3});
  EXPECT_TRUE(bench.document->canvas().getLink("lines")->selected());
  EXPECT_FALSE(bench.document->canvas().getNode("order")->selected());
  EXPECT_EQ(browser->CurrentColumn(), 3);
  EXPECT_EQ(looked(), "Order is composed of OrderLine (\"lines\")");
  // What is made by the menu of a cell is drawn at once; what would be a circle cannot be chosen.
  click({1, 3}, Qt::RightButton);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  choose(*menu, "Make.generalization");
  menu->close();
  EXPECT_EQ(bench.document->canvas().getAllLinks()->Count(), 3);
  const std::unique_ptr<QMenu> back(view().menuOf({3, 1}));
  for (const QAction* action : back->actions()) {
    if (action->objectName() != "Make.generalization") continue;
    EXPECT_FALSE(action->isEnabled());
    EXPECT_EQ(action->toolTip(), "Customer is already below OrderLine");
  }
  choose(*std::unique_ptr<QMenu>(view().menuOf({3, 2})), "Delete.lines");
  EXPECT_FALSE(bench.document->canvas().getLink("lines"));
}

TEST_F(MatrixWindowTest, keepsTheNamesWhereTheyAre) {
  for (int i = 0; i < 200; ++i) {
    const std::string name = "Extra" + std::to_string(i);
    editor.CLSRepository()->MakeClass(name, name, "", "", "", "");
  }
  QApplication::processEvents();
  EXPECT_EQ(child<QLabel>("Counts").text().toStdString(), "203 classes, 2 relationships");
  for (const int cell : {22, 80, 3, 1}) {
    view().zoomTo(cell, {});
    view().verticalScrollBar()->setValue(37);
    view().horizontalScrollBar()->setValue(501);
    for (const Cell asked : {Cell{60, 70}, Cell{0, 70}, Cell{60, 0}}) {
      const QPoint at = view().areaOf(asked).center();
      if (!view().viewport()->rect().contains(at)) continue;
      EXPECT_EQ(view().cellAt(at), asked) << cell;
    }
    EXPECT_FALSE(view().cellAt({1, 1}).isValid()) << "the corner";
  }
  view().zoomToFit();
  EXPECT_EQ(view().verticalScrollBar()->maximum(), 0);
  // The point under the pointer stays there.
  view().zoomTo(22, {});
  const QPoint pointer(500, 400);
  const Cell under = view().cellAt(pointer);
  view().zoom(3, pointer);
  EXPECT_EQ(view().cellAt(pointer), under);
  // Keys bring what they reach into view.
  QTest::keyClick(&view(), Qt::Key_End, Qt::ControlModifier);
  EXPECT_TRUE(view().viewport()->rect().contains(view().areaOf({203, 203})));
  QTest::keyClick(&view(), Qt::Key_Home, Qt::ControlModifier);
  EXPECT_TRUE(view().viewport()->rect().contains(view().areaOf({1, 1})));
}

TEST_F(MatrixWindowTest, filtersAsOneTypes) {
  view().setFocus();
  QTest::keyClick(&view(), Qt::Key_C, Qt::NoModifier);
  auto& name = child<QLineEdit>("NameFilter");
  EXPECT_EQ(name.text().toStdString(), "c");
  name.setText("order");
  QApplication::processEvents();
  EXPECT_EQ(child<QLabel>("Counts").text().toStdString(), "2 of 3 classes, 1 relationship");
  child<QAbstractButton>("Kind.composite").click();
  QApplication::processEvents();
  EXPECT_EQ(child<QLabel>("Counts").text().toStdString(), "2 of 3 classes, 0 relationships");
  EXPECT_EQ(browser->KindFilter(), "association shared generalization");
  QTest::keyClick(&name, Qt::Key_Escape);
  EXPECT_EQ(browser->NameFilter(), "");
  // What is asked for by name shows in the window.
  browser->Filter("cust", "entity", "");
  QApplication::processEvents();
  EXPECT_EQ(name.text().toStdString(), "cust");
  EXPECT_EQ(child<QComboBox>("StereotypeFilter").currentText().toStdString(), "entity");
  EXPECT_TRUE(child<QAbstractButton>("Kind.composite").isChecked());
  EXPECT_FALSE(view().viewport()->grab().isNull()) << "nothing is found";
  QTest::keyClick(&view(), Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
  EXPECT_FALSE(editor.MatrixBrowser1());
}

TEST_F(MatrixWindowTest, paintsMarksWhereTheyAre) {
  browser->Select(1, 1);
  for (const int cell : {44, 22, 10, 4}) {
    view().zoomTo(cell, {});
    QApplication::processEvents();
    const QImage picture = view().viewport()->grab().toImage();
    const double ratio = picture.devicePixelRatio();
    /// How many colours there are within a cell, clear of its border.
    const auto colours = [&](Cell asked) {
      const QRectF area = QRectF(view().areaOf(asked)).adjusted(1, 1, -1, -1);
      std::set<QRgb> found;
      for (int y = qRound(area.top() * ratio); y < qRound(area.bottom() * ratio); ++y) {
        for (int x = qRound(area.left() * ratio); x < qRound(area.right() * ratio); ++x) {
          found.insert(picture.pixel(x, y));
        }
      }
      return found;
    };
    EXPECT_EQ(colours({1, 3}).size(), 1U) << "an empty cell at " << cell;
    for (const Cell filled : {Cell{2, 3}, Cell{3, 2}, Cell{1, 2}, Cell{2, 1}}) {
      const std::set<QRgb> empty = colours({1, 3});
      EXPECT_NE(colours(filled), empty) << filled.row << ',' << filled.column << " at " << cell;
    }
    EXPECT_NE(colours({2, 3}), colours({3, 2})) << "there and back look different";
  }
}

TEST_F(MatrixWindowTest, hasWordsForThoseWhoDoNotSee) {
  for (const QWidget* one : window->findChildren<QWidget*>()) {
    if (one->focusPolicy() == Qt::NoFocus || !one->isVisible()) continue;
    const auto* button = qobject_cast<const QAbstractButton*>(one);
    const bool hasText = button && !button->text().isEmpty();
    const bool isPart =
        one->parentWidget() != window && !one->parentWidget()->objectName().isEmpty();
    EXPECT_TRUE(hasText || isPart || !one->accessibleName().isEmpty())
        << one->metaObject()->className() << ' ' << one->objectName().toStdString();
  }
  browser->Select(2, 1);
  EXPECT_EQ(view().accessibleDescription().toStdString(),
            "Order is associated with Customer (\"by\")");
}

TEST_F(MatrixWindowTest, outlivesWhatItShows) {
  editor.DeleteClass("order");
  EXPECT_FALSE(view().viewport()->grab().isNull());
  browser->Select(2, 2);
  bench.document->create();
  QApplication::processEvents();
  EXPECT_EQ(child<QLabel>("Counts").text().toStdString(), "0 classes, 0 relationships");
  EXPECT_FALSE(view().viewport()->grab().isNull());
  for (const auto key :
       {Qt::Key_Down, Qt::Key_End, Qt::Key_Return, Qt::Key_Delete, Qt::Key_Space}) {
    QTest::keyClick(&view(), key);
  }
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
  bench.document->editor().terminate();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(window.isNull());
}

}  // namespace
}  // namespace brisel::qt
