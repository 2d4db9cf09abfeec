#include "qt/ToolViews.h"

#include <array>

#include "qt/MatrixWindow.h"

namespace brisel::qt {

namespace {

template <class Tool, class Window>
QWidget* make(platform::Object& object) {
  auto* tool = dynamic_cast<Tool*>(&object);
  return tool ? new Window(platform::Ref<Tool>(tool)) : nullptr;
}

struct ToolView {
  std::string_view tool;
  QWidget* (*make)(platform::Object& tool);
};

constexpr std::array kViews = {
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
