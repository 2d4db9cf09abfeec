#include <QApplication>

#include "Program.h"
#include "Window.h"
#include "component/Document.h"
#include "component/Suite.h"
#include "qt/Application.h"
#include "qt/MainWindow.h"
#include "qt/QtShell.h"

namespace brisel::app {

int runWindow(const std::vector<std::string>& files) {
  qt::Application application(BRISEL_VERSION, installationFolder());
  const auto shell = platform::make<qt::QtShell>();
  platform::ComponentRegistry registry(shell);
  component::registerSuite(registry);
  registry.installationFolder(installationFolder());

  component::Document document(registry);
  qt::MainWindow window(document, shell);
  window.show();
  if (!files.empty()) window.openFiles(files);
  return QApplication::exec();
}

}  // namespace brisel::app
