#pragma once

#include <QApplication>

namespace brisel::test {

/// The one application object of a test program. It is never destroyed: at the end of the process
/// that would come after Qt's own static objects.
inline QApplication& application() {
  static int count = 1;
  static char name[] = "test";
  static char* arguments[] = {name, nullptr};
  static auto* const app = new QApplication(count, arguments);
  return *app;
}

}  // namespace brisel::test
