#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <iostream>

#include <unistd.h>

#include "Program.h"
#include "Window.h"
#include "automation/LineBuffer.h"
#include "automation/Serve.h"
#include "automation/Server.h"
#include "qt/Application.h"
#include "qt/ShownDiagramWindow.h"

namespace brisel::app {

namespace {

void showComponents(platform::ComponentRegistry& registry) {
  registry.add("BriselCLS.DiagramWindow", [](platform::ComponentRegistry& made) {
    return platform::make<qt::ShownDiagramWindow>(made, qt::FormWindow::Modal::returns);
  });
}

/// Takes what has come in; false at the end of the input.
bool takeInput(automation::LineBuffer& lines) {
  std::array<char, 65536> bytes{};
  const ssize_t count = ::read(STDIN_FILENO, bytes.data(), bytes.size());
  if (count > 0) lines.append({bytes.data(), static_cast<std::size_t>(count)});
  return count > 0 || (count < 0 && (errno == EINTR || errno == EAGAIN));
}

}  // namespace

int runAutomationWindow() {
  std::signal(SIGPIPE, SIG_IGN);
  const auto application = startWindows();
  QApplication::setQuitOnLastWindowClosed(false);
  Program program;
  showComponents(program.registry());
  automation::Server server(program.registry(), [](std::string_view message) {
    std::cout << message << '\n' << std::flush;
  });
  const auto answered = program.shell().Answered.connect(
      [&server](const std::string& method, const platform::Ref<platform::ValueRecord>& params) {
        server.notify(method, params);
      });

  automation::LineBuffer lines;
  QSocketNotifier input(STDIN_FILENO, QSocketNotifier::Read);
  QObject::connect(&input, &QSocketNotifier::activated, [&] {
    const bool more = takeInput(lines);
    automation::handleLines(lines, server);
    if (more) return;
    automation::handleRest(lines, server);
    input.setEnabled(false);
    QApplication::quit();
  });
  return QApplication::exec();
}

}  // namespace brisel::app
