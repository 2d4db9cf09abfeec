#include <QPalette>

#include <gtest/gtest.h>

#include "WindowBench.h"

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

/// The window follows a dark desktop, and its paper stays white; pictures for people to look at
/// are kept beside the test program.
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
    EXPECT_TRUE(picture.save(dark ? BRISEL_BINARY_DIR "/window-dark.png"
                                  : BRISEL_BINARY_DIR "/window-light.png"));
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

}  // namespace
}  // namespace brisel::qt
