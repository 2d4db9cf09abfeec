#pragma once

#include <memory>
#include <string>
#include <vector>

namespace brisel::qt {
class Application;
}

namespace brisel::app {

/// What has to live as long as there are windows. An Error where there is no display.
[[nodiscard]] std::unique_ptr<qt::Application> startWindows();

/// Opens each file in a window of its own, or all of them as one model; an empty diagram without
/// any. Returns the program's exit code when the last window was closed.
[[nodiscard]] int runWindows(const std::vector<std::string>& files, bool oneModel);

/// Serves automation on standard input and output while a window shows what is created.
[[nodiscard]] int runAutomationWindow();

}  // namespace brisel::app
