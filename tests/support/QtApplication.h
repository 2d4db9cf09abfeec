#pragma once

#include <QApplication>

namespace brisel::test {

/// The one application object of a test program.
inline QApplication& application() {
  static int count = 1;
  static char name[] = "test";
  static char* arguments[] = {name, nullptr};
  static QApplication app(count, arguments);
  return app;
}

}  // namespace brisel::test
