#include <QApplication>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <gtest/gtest.h>

/// One application for all window tests; it ends before the static objects of Qt do.
int main(int count, char** arguments) {
  testing::InitGoogleTest(&count, arguments);
  QStandardPaths::setTestModeEnabled(true);  // settings of a person are left alone
  const QTemporaryDir settings;              // and those of tests that run beside these
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
  const QApplication application(count, arguments);
  return RUN_ALL_TESTS();
}
