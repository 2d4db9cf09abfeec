#include <QApplication>
#include <QKeyEvent>

#include <gtest/gtest.h>

#include "qt/HelpWindow.h"

namespace brisel::qt {
namespace {

TEST(HelpWindow, closesOnEscape) {
  HelpWindow window(BRISEL_BINARY_DIR "/share/brisel/help");
  window.showPage("UML class diagram.html");
  EXPECT_FALSE(window.toPlainText().isEmpty());
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(&window, &escape);
  EXPECT_FALSE(window.isVisible());
}

}  // namespace
}  // namespace brisel::qt
