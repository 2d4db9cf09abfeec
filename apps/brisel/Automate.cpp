#include <csignal>
#include <iostream>

#include "Commands.h"
#include "Program.h"
#include "automation/Serve.h"
#include "automation/Server.h"

namespace brisel::app {

void automate() {
  // A client that stops reading is no reason to end before its requests do.
  std::signal(SIGPIPE, SIG_IGN);
  std::ios::sync_with_stdio(false);
  Program program;
  automation::Server server(program.registry(), [](std::string_view message) {
    std::cout << message << '\n' << std::flush;
  });
  const auto connection = program.shell().Answered.connect(
      [&server](const std::string& method, const platform::Ref<platform::ValueRecord>& params) {
        server.notify(method, params);
      });
  automation::serve(std::cin, server);
}

}  // namespace brisel::app
