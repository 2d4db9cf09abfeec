#pragma once

#include <QApplication>

namespace brisel::bench {

/// The one application of the program, without a display. It is never ended: at the end of the
/// program Qt's own static objects go first.
inline QApplication& application() {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static int count = 1;
  static char name[] = "benchmark";
  static char* arguments[] = {name, nullptr};
  static auto* const app = new QApplication(count, arguments);
  return *app;
}

}  // namespace brisel::bench
