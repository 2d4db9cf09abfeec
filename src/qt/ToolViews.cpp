#include "qt/ToolViews.h"

namespace brisel::qt {

QWidget* makeToolWindow(std::string_view, platform::Object&) { return nullptr; }

}  // namespace brisel::qt
