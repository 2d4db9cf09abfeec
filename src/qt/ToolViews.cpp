#include "qt/ToolViews.h"

#include <memory>

#include "qt/TemplateWindow.h"

namespace brisel::qt {

namespace {

using Maker = QWidget* (*)(platform::Object&);

/// A window for a tool of the wanted kind; nothing for a host's own tool under the same name.
template <class View, class Tool>
QWidget* makeView(platform::Object& tool) {
  auto* own = dynamic_cast<Tool*>(&tool);
  return own ? std::make_unique<View>(*own).release() : nullptr;
}

struct Row {
  std::string_view name;
  Maker make;
};

constexpr Row kRows[] = {
    {"BriselTemplateEditor.Template", makeView<TemplateWindow, tools::Template>},
};

}  // namespace

QWidget* makeToolWindow(std::string_view name, platform::Object& tool) {
  for (const Row& row : kRows) {
    if (row.name == name) return row.make(tool);
  }
  return nullptr;
}

}  // namespace brisel::qt
