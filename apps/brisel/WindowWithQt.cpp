#include <QApplication>
#include <cstdlib>
#include <iostream>

#include "Program.h"
#include "Window.h"
#include "component/Document.h"
#include "component/Suite.h"
#include "platform/Error.h"
#include "qt/Application.h"
#include "qt/MainWindow.h"
#include "qt/QtShell.h"

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

int runWindow(const std::vector<std::string>& files) {
  const auto application = startWindows();
  const auto shell = platform::make<qt::QtShell>();
  platform::ComponentRegistry registry(shell);
  component::registerSuite(registry);

  component::Document document(registry);
  qt::MainWindow window(document, shell);
  window.show();
  if (!files.empty()) window.openFiles(files);
  return QApplication::exec();
}

}  // namespace brisel::app
