#pragma once

#include <QToolBar>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/DiagramControl.h"

namespace brisel::qt {

/// Shows the canvas's own tool bar: its buttons in their order with icons and tips, pressed ones as
/// checked. A click goes to the canvas; what is shown follows the canvas.
class CanvasToolBar : public QToolBar {
 public:
  explicit CanvasToolBar(platform::Ref<canvas::DiagramControl> control, QWidget* parent = nullptr);

  /// The action behind a button, for menus that offer the same command; nothing for an unknown key.
  [[nodiscard]] QAction* action(std::string_view key) const;

 private:
  void rebuild();
  void addButton(std::size_t index);
  void showState(std::size_t index);
  void click(const std::string& key);

  platform::Ref<canvas::DiagramControl> m_control;
  std::vector<QAction*> m_actions;  ///< one a button, in the canvas's order
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
