#include "qt/ToolViews.h"

#include <array>
#include <memory>

#include "qt/MatrixWindow.h"
#include "qt/TemplateWindow.h"

namespace brisel::qt {

namespace {

/// A window for a tool of the wanted kind; nothing for a host's own tool under the same name.
template <class Tool, class Window>
QWidget* make(platform::Object& object) {
  auto* tool = dynamic_cast<Tool*>(&object);
  return tool ? std::make_unique<Window>(platform::Ref<Tool>(tool)).release() : nullptr;
}

struct ToolView {
  std::string_view tool;
  QWidget* (*make)(platform::Object& tool);
};

constexpr std::array kViews = {
    ToolView{"BriselTemplateEditor.Template", &make<tools::Template, TemplateWindow>},
    ToolView{"BriselUtility.MatrixBrowser", &make<tools::MatrixBrowser, MatrixWindow>},
};

}  // namespace

QWidget* makeToolWindow(std::string_view name, platform::Object& tool) {
  for (const ToolView& view : kViews) {
    if (view.tool == name) return view.make(tool);
  }
  return nullptr;
}

}  // namespace brisel::qt
