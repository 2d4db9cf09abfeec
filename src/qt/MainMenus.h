#pragma once

#include <QTimer>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "canvas/DiagramControl.h"

class QAction;
class QMenu;
class QMenuBar;

namespace brisel::qt {

class EditorWidget;

/// The menus of the application's window: one row of a table a command. A command is a button of
/// the canvas, a key of the canvas, or one of the window's own; a button that the window has a
/// command of its own for runs that. Commands can be chosen only while they apply.
class MainMenus : public QObject {
 public:
  using Commands = std::map<std::string, std::function<void()>, std::less<>>;

  /// Fills the bar, which owns what is made. The editor must outlive it.
  MainMenus(QMenuBar& bar, EditorWidget& editor, const Commands& own);

  /// Nothing for an unknown key.
  [[nodiscard]] QAction* action(std::string_view key) const;
  /// By its titles from the bar on, separated by "/"; nothing where there is none.
  [[nodiscard]] QMenu* menu(std::string_view path) const;

 private:
  enum class Needs;
  struct Row;

  static const std::vector<Row>& rows();
  void add(const Row& row, const Commands& own);
  QMenu& menuAt(const std::string& path);
  QAction* makeAction(const Row& row, const Commands& own);
  QAction* buttonAction(const Row& row, const Commands& own) const;
  void pressKey(const Row& row);
  [[nodiscard]] static bool isTool(const Row& row);
  [[nodiscard]] std::string elementOf(const Row& row) const;
  void runTool(const Row& row);
  void refreshTool(const Row& row, QAction& action) const;
  [[nodiscard]] bool has(Needs needs) const;
  void refresh();

  QMenuBar& m_bar;
  EditorWidget& m_editor;
  canvas::DiagramControl& m_canvas;
  std::map<std::string, QMenu*, std::less<>> m_menus;  ///< by path
  std::vector<std::pair<const Row*, QAction*>> m_actions;
  QTimer m_refresh;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
