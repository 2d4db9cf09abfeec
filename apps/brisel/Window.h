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

/// Opens the window on the files, which are those of one model; on an empty diagram without any.
/// Returns the program's exit code when the window was closed.
[[nodiscard]] int runWindow(const std::vector<std::string>& files);

/// Serves automation on standard input and output while a window shows what is created.
[[nodiscard]] int runAutomationWindow();

}  // namespace brisel::app
