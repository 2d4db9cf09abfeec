#pragma once

#include <QPointer>

#include "component/DiagramWindow.h"
#include "qt/FormWindow.h"

namespace brisel::qt {

/// A DiagramWindow that has a window of its own as long as it lives.
class ShownDiagramWindow : public component::DiagramWindow {
 public:
  ShownDiagramWindow(platform::ComponentRegistry& registry, FormWindow::Modal modal)
      : DiagramWindow(registry), m_window(new FormWindow(*this, modal)) {}
  ~ShownDiagramWindow() override {
    if (m_window) m_window->leave();
  }

  /// Nothing when a host has deleted it.
  [[nodiscard]] FormWindow* window() const { return m_window; }

 private:
  QPointer<FormWindow> m_window;  ///< goes by itself once it was left
};

}  // namespace brisel::qt
