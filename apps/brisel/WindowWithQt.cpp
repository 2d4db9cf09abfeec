#include <QApplication>
#include <cstdlib>
#include <iostream>

#include "Program.h"
#include "Window.h"
#include "platform/Error.h"
#include "qt/Application.h"
#include "qt/Windows.h"

namespace brisel::app {

namespace {

/// Qt ends the process by a signal where it finds no display to talk to; this ends it as any other
/// failed operation does.
void tellAndEnd(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type != QtFatalMsg) return;
  std::cerr << "brisel: " << text.section('\n', 0, 0).toStdString() << std::endl;
  std::_Exit(1);
}

}  // namespace

std::unique_ptr<qt::Application> startWindows() {
  const bool isTold = qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
  const bool hasDisplay =
      !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
  if (!isTold && !hasDisplay) {
    throw platform::Error(platform::ErrorNumber::invalidCall,
                          "there is no display to show a window on; brisel convert FILE OUT.png "
                          "draws a picture without one");
  }
  const QtMessageHandler before = qInstallMessageHandler(tellAndEnd);
  auto application = std::make_unique<qt::Application>(BRISEL_VERSION, installationFolder());
  qInstallMessageHandler(before);
  return application;
}

int runWindows(const std::vector<std::string>& files, bool oneModel) {
  const auto application = startWindows();
  qt::Windows windows(installationFolder());
  if (files.empty()) {
    windows.add();
  } else if (oneModel) {
    windows.open(files);
  } else {
    for (const std::string& file : files) windows.open({file});
  }
  return QApplication::exec();
}

}  // namespace brisel::app
