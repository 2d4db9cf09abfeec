#include <QClipboard>
#include <QPushButton>
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "qt/NameBox.h"

namespace brisel::qt {
namespace {

using platform::Rect;
using test::WindowBench;

/// A text box over a class, shown through its own members as the editor does it.
class NameBoxTest : public testing::Test {
 protected:
  NameBoxTest() {
    bench.drawSample();
    bench.document->canvas().getNode("order")->bounds({6000, 3000, 3000, 1800});
    bench.activate();
    bench.window->editor().view().setFocus();
    left = box.FocusLost.connect([this] { log += "left "; });
    pressed = box.KeyPressed.connect([this](const std::string& key) { log += key + " "; });
  }

  void begin(const char* text = "newClass") {
    box.Tag("order");
    box.Text(text);
    box.FontSize(15);
    box.area(
        bench.document->canvas().toView(bench.document->canvas().getNode("order")->titleArea()));
    box.Visible(true);
    box.SelStart(0);
    box.SelLength(1000);
    box.SetFocus();
    log.clear();
  }
  [[nodiscard]] bool viewHasKeyboard() const { return bench.window->editor().view().hasFocus(); }

  WindowBench bench;
  controls::TextBox& box = *bench.document->editor().ClassName();
  NameBox& shown = bench.window->editor().nameBox();
  std::string log;
  platform::Connection left, pressed;
};

TEST_F(NameBoxTest, appearsOverTheTitleWithAllSelected) {
  EXPECT_FALSE(shown.isVisible());
  begin();
  EXPECT_TRUE(shown.isVisible());
  EXPECT_TRUE(shown.hasFocus());
  EXPECT_EQ(shown.selectedText(), "newClass");
  const QPoint middle = shown.geometry().center();
  const QPointF title = bench.window->editor().view().fromTwips(
      bench.document->canvas().getNode("order")->titleArea().center());
  EXPECT_NEAR(middle.x(), title.x(), 1.5);
  EXPECT_NEAR(middle.y(), title.y(), 1.5);
  bench.document->canvas().zoom(200);
  box.FontSize(30);
  EXPECT_NEAR(QFontInfo(shown.font()).pixelSize(), 40, 1);
  box.Visible(false);
  EXPECT_FALSE(shown.isVisible());
  EXPECT_TRUE(viewHasKeyboard());
  EXPECT_EQ(log, "") << "who hides the text box knows that it is left";
}

TEST_F(NameBoxTest, tellsWhatIsTypedAndSelected) {
  begin();
  WindowBench::type("Größe \U0001F600x");
  EXPECT_EQ(box.Text(), "Größe \U0001F600x");
  EXPECT_EQ(box.SelStart(), 8) << "in code points";
  WindowBench::type(Qt::Key_Left);
  WindowBench::type(Qt::Key_Left, {}, Qt::ShiftModifier);
  EXPECT_EQ(box.SelStart(), 6);
  EXPECT_EQ(box.SelLength(), 1);
  EXPECT_EQ(shown.selectedText(), "\U0001F600");
  box.area(box.area().movedBy({150, 150}));
  EXPECT_EQ(shown.selectedText(), "\U0001F600") << "zooming and scrolling leave the cursor alone";
  WindowBench::type("y");
  EXPECT_EQ(box.Text(), "Größe yx");
  EXPECT_EQ(shown.cursorPosition(), 7);

  box.Text("Set by the owner");
  EXPECT_EQ(shown.text(), "Set by the owner");
  box.SelStart(4);
  box.SelLength(2);
  EXPECT_EQ(shown.selectedText(), "by");
}

TEST_F(NameBoxTest, takesBreaksOfLinesAsBlanks) {
  begin();
  QApplication::clipboard()->setText("two\nlines");
  shown.paste();
  EXPECT_EQ(box.Text(), "two lines");
  EXPECT_EQ(shown.text(), "two lines");
}

TEST_F(NameBoxTest, handsOnTheKeysThatEndIt) {
  const std::pair<int, const char*> keys[] = {
      {Qt::Key_Return, "Return "}, {Qt::Key_Enter, "Return "}, {Qt::Key_Escape, "Escape "}};
  for (const auto& [key, told] : keys) {
    begin();
    WindowBench::type(key);
    EXPECT_EQ(log.substr(0, std::string(told).size()), told);
  }
  begin();
  WindowBench::type(Qt::Key_Tab);
  EXPECT_NE(log.find("left"), std::string::npos);
  EXPECT_TRUE(viewHasKeyboard());
}

TEST_F(NameBoxTest, keepsItsKeysFromTheCanvas) {
  begin();
  bench.document->canvas().selNode(platform::Value("order"));
  const Rect before = bench.document->canvas().getNode("order")->bounds();
  for (const int key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Delete, Qt::Key_Home,
                        Qt::Key_PageUp, Qt::Key_F2, Qt::Key_Space}) {
    WindowBench::type(key);
  }
  EXPECT_EQ(bench.document->canvas().getNode("order")->bounds(), before);
  EXPECT_EQ(bench.document->canvas().scene().nodes().size(), 2U);
  EXPECT_TRUE(shown.isVisible());
}

TEST_F(NameBoxTest, editsItsTextWhereAMenuHasTheSameShortcut) {
  begin();
  const std::tuple<int, Qt::KeyboardModifiers, bool> keys[] = {
      {Qt::Key_A, Qt::ControlModifier, true},
      {Qt::Key_C, Qt::ControlModifier, true},
      {Qt::Key_Delete, Qt::NoModifier, true},
      {Qt::Key_A, Qt::ShiftModifier, true},
      {Qt::Key_S, Qt::ControlModifier, false},
      {Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier, false}};
  for (const auto& [key, modifiers, own] : keys) {
    const QString text = key == Qt::Key_Delete ? QString() : QString(QChar(key));
    QKeyEvent question(QEvent::ShortcutOverride, key, modifiers, text);
    question.ignore();
    QApplication::sendEvent(&shown, &question);
    EXPECT_EQ(question.isAccepted(), own) << key;
  }
}

TEST_F(NameBoxTest, tellsOnceWhenTheKeyboardGoesElsewhere) {
  begin();
  bench.click({20, 20});
  EXPECT_NE(log.find("left"), std::string::npos);
  box.Visible(false);
  begin();
  bench.window->editor().finishEditing();
  EXPECT_EQ(log, "left ");
}

TEST_F(NameBoxTest, growsWithItsTextInsideTheView) {
  begin("A");
  const int narrow = shown.width();
  const QString name = "AVeryLongNameThatIsWiderThanItsBox";
  WindowBench::type(name);
  EXPECT_GE(shown.width(), name.size() * 12) << "twelve pixels a column at 15 points";
  EXPECT_NEAR(shown.geometry().center().x(), 500, 2) << "around the same middle";
  WindowBench::type(name + name + name + name);
  const QRect view = bench.window->editor().view().viewport()->rect();
  EXPECT_TRUE(view.contains(shown.geometry()));
  shown.selectAll();
  WindowBench::type("B");
  EXPECT_EQ(shown.width(), narrow);
}

/// Columns of the picture that hold dark pixels of the text, from the first to the last.
std::pair<int, int> inkOf(const QImage& picture, const QRect& part) {
  int first = part.right();
  int last = part.left();
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) {
      if (qGray(picture.pixel(x, y)) > 100) continue;
      first = std::min(first, x);
      last = std::max(last, x);
    }
  }
  return {first, last};
}

TEST_F(NameBoxTest, liesOverTheTitleAsItIsDrawn) {
  for (const double zoom : {100.0, 75.0, 130.0}) {
    bench.document->canvas().zoom(zoom);
    bench.document->canvas().viewport().scrollTo({});
    box.Visible(false);
    QWidget& viewport = *bench.window->editor().view().viewport();
    const Rect title =
        bench.document->canvas().toView(bench.document->canvas().getNode("order")->titleArea());
    const QRect part(QPoint(int(title.left / 15) + 3, int(title.top / 15) + 3),
                     QSize(int(title.width / 15) - 6, int(title.height / 15) - 6));
    const auto drawn = inkOf(viewport.grab().toImage(), part);
    begin("Order");
    box.FontSize(15 * zoom / 100);
    shown.deselect();
    const auto edited = inkOf(viewport.grab().toImage(), part);
    EXPECT_NEAR(drawn.first, edited.first, 2) << zoom;
    EXPECT_NEAR(drawn.second, edited.second, 2) << zoom;
  }
}

}  // namespace
}  // namespace brisel::qt
