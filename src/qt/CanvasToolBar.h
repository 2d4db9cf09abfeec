#pragma once

#include <QToolBar>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/DiagramControl.h"

namespace brisel::qt {

/// Shows the canvas's own tool bar, or a part of it: its buttons with icons and tips, pressed ones
/// as checked. A click goes to the canvas; what is shown follows the canvas.
///
/// An editor shows the drawing tools (what a press on the canvas does next) in an upright palette
/// beside the canvas and all else in a row above it. "Select" alone makes no palette: then it
/// stands in the row. Buttons keep the canvas's order, but for "Open", which stands before "Save",
/// and "Help", which comes last.
class CanvasToolBar : public QToolBar {
 public:
  enum class Part { row, palette };

  CanvasToolBar(platform::Ref<canvas::DiagramControl> control, Part part,
                QWidget* parent = nullptr);

  /// The action behind a button, for menus that offer the same command; nothing for a key that this
  /// part does not show.
  [[nodiscard]] QAction* action(std::string_view key) const;
  /// A click on the button runs this from now on, in place of the canvas's answer.
  void runInstead(std::string_view key, std::function<void()> command);

 private:
  void rebuild();
  void addButton(std::size_t index);
  QAction* makeAction(const canvas::Button& button);
  [[nodiscard]] QAction* placeOf(std::string_view key) const;
  [[nodiscard]] bool isMine(const canvas::Button& button) const;
  void showBar();
  void showState(std::size_t index);
  void click(const std::string& key);

  platform::Ref<canvas::DiagramControl> m_control;
  Part m_part;
  std::vector<QAction*> m_actions;  ///< one a button of the canvas; nothing where it is not mine
  std::map<std::string, std::function<void()>, std::less<>> m_instead;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
