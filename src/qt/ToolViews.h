#pragma once

#include <string_view>

#include "platform/Object.h"

class QWidget;

namespace brisel::qt {

/// The window of a tool by its programmatic identifier; it holds the tool. Nothing for a tool that
/// has none. The caller owns it.
[[nodiscard]] QWidget* makeToolWindow(std::string_view name, platform::Object& tool);

}  // namespace brisel::qt
