#pragma once

#include <QWidget>
#include <string_view>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"

class QAction;

namespace brisel::qt {

class CanvasToolBar;
class ClassPane;
class DiagramView;
class NameBox;

/// The editor as a window shows it: the canvas under its tool bar, the drawing tools to its left,
/// the property band to its right, and what is laid over it.
class EditorWidget : public QWidget {
 public:
  explicit EditorWidget(editor::CLSEditor& editor, QWidget* parent = nullptr);

  [[nodiscard]] editor::CLSEditor& editor() const { return *m_editor; }
  [[nodiscard]] CanvasToolBar& toolBar() const { return *m_toolBar; }
  [[nodiscard]] CanvasToolBar& drawingTools() const { return *m_drawingTools; }
  [[nodiscard]] DiagramView& view() const { return *m_view; }
  [[nodiscard]] NameBox& nameBox() const { return *m_nameBox; }
  [[nodiscard]] ClassPane& classPane() const { return *m_classPane; }
  /// The action behind a button of the canvas, wherever it is shown; nothing for an unknown key.
  [[nodiscard]] QAction* action(std::string_view key) const;
  /// A strip that stands between tool bar and canvas from now on.
  void setStrip(QWidget* strip);
  /// What is typed so far is written to the model: the name in place, what is pending in the pane.
  void finishEditing();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  platform::Ref<editor::CLSEditor> m_editor;
  CanvasToolBar* m_toolBar;
  CanvasToolBar* m_drawingTools;
  DiagramView* m_view;
  NameBox* m_nameBox;
  ClassPane* m_classPane;
  platform::Connection m_printing;
};

}  // namespace brisel::qt
