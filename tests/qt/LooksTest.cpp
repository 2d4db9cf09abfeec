#include <QMenu>
#include <QPalette>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "controls/ToolBarControl.h"
#include "qt/NameBox.h"
#include "qt/PopupMenu.h"

namespace brisel::qt {
namespace {

using test::WindowBench;

QPalette darkPalette() {
  QPalette dark;
  dark.setColor(QPalette::Window, QColor(0x2b, 0x2d, 0x31));
  dark.setColor(QPalette::WindowText, QColor(0xe6, 0xe6, 0xe6));
  dark.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x24));
  dark.setColor(QPalette::Text, QColor(0xe6, 0xe6, 0xe6));
  dark.setColor(QPalette::Button, QColor(0x35, 0x38, 0x3d));
  dark.setColor(QPalette::ButtonText, QColor(0xe6, 0xe6, 0xe6));
  return dark;
}

/// Brightness from 0 to 255 in the middle of a part of the picture.
int brightness(const QImage& picture, const QRect& part) {
  qint64 sum = 0;
  for (int y = part.top(); y <= part.bottom(); ++y) {
    for (int x = part.left(); x <= part.right(); ++x) sum += qGray(picture.pixel(x, y));
  }
  return static_cast<int>(sum / (part.width() * part.height()));
}

/// Pictures for people to look at, kept beside the test program.
void keep(const QImage& picture, const char* name) {
  const std::string scale = qEnvironmentVariable("QT_SCALE_FACTOR", "1").toStdString();
  const std::string path = std::string(BRISEL_BINARY_DIR "/looks-") + name + "-" + scale + ".png";
  EXPECT_TRUE(picture.save(path.c_str())) << path;
}

/// The window follows a dark desktop, and its paper stays white.
TEST(Looks, followTheDesktopAndKeepThePaperWhite) {
  const WindowBench bench;
  bench.drawSample();
  bench.button("LayoutHierarchy").trigger();
  const QPalette before = QApplication::palette();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    bench.window->messages().show(MessageBar::Kind::error, "A message for those who look at this.");
    QApplication::processEvents();
    const QImage picture = bench.window->grab().toImage().convertToFormat(QImage::Format_RGB32);
    keep(picture, dark ? "window-dark" : "window-light");
    const double ratio = picture.devicePixelRatio();
    const auto at = [&](const QWidget& widget, QRect part) {
      part.moveTopLeft(widget.mapTo(bench.window.get(), part.topLeft()));
      return brightness(picture,
                        QRect((QPointF(part.topLeft()) * ratio).toPoint(), part.size() * ratio));
    };
    const QWidget& bar = bench.window->editor().toolBar();
    const int ground = at(bar, QRect(bar.width() - 30, 8, 20, 16));
    EXPECT_EQ(ground < 100, dark);
    const QWidget& editor = bench.window->editor();
    EXPECT_GT(at(editor, QRect(editor.width() - 120, editor.height() - 120, 60, 60)), 250);
  }
  QApplication::setPalette(before);
}

/// What is laid over the paper: a name being typed, and the pane. The name is typed on paper on
/// every desktop, the menu and the pane are the desktop's.
TEST(Looks, ofWhatLiesOverThePaper) {
  const WindowBench bench;
  bench.drawSample();
  canvas::DiagramControl& canvas = bench.document->canvas();
  canvas.getNode("order")->bounds({6000, 3000, 3000, 1800});
  canvas.getNode("line")->bounds({6000, 6500, 3000, 1800});
  const auto bar = platform::as<controls::ToolBarControl>(bench.document->editor().ActiveBar21());
  const auto box = bench.document->editor().ClassName();
  const auto pane = bench.document->editor().CLSClassControl1();
  const QPalette before = QApplication::palette();
  bench.activate();
  for (const bool dark : {false, true}) {
    QApplication::setPalette(dark ? darkPalette() : before);
    box->Text("OrderLine");
    box->FontSize(15);
    box->area(canvas.toView(canvas.getNode("line")->titleArea()));
    box->Visible(true);
    box->SelLength(5);
    box->SetFocus();
    pane->Class(bench.document->editor().GetClassFromNode("order").get());
    pane->area({9600, 3000, 4500, 2700});
    pane->Prepare();
    pane->Visible(true);
    QMenu menu(bench.window.get());
    fillMenu(menu, *bar, "tbPopupMenu");
    menu.popup(bench.window->mapToGlobal(QPoint(300, 500)));
    QApplication::processEvents();
    const QImage window = bench.window->grab().toImage().convertToFormat(QImage::Format_RGB32);
    keep(window, dark ? "over-dark" : "over-light");
    keep(menu.grab().toImage(), dark ? "menu-dark" : "menu-light");
    const QWidget& name = bench.window->editor().nameBox();
    const double ratio = window.devicePixelRatio();
    const QPoint corner = name.mapTo(bench.window.get(), QPoint(3, 3));
    const QRect paper((QPointF(corner) * ratio).toPoint(), QSize(4, 4));
    EXPECT_GT(brightness(window, paper), 250) << "a name is typed on paper";
    menu.close();
    box->Visible(false);
    pane->Visible(false);
  }
  QApplication::setPalette(before);
}

}  // namespace
}  // namespace brisel::qt
