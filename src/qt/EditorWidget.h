#pragma once

#include <QWidget>

#include "canvas/DiagramControl.h"
#include "editor/CLSEditor.h"

namespace brisel::qt {

class CanvasToolBar;
class DiagramView;

/// The editor as a window shows it: the canvas under its tool bar. The editor must outlive it.
class EditorWidget : public QWidget {
 public:
  explicit EditorWidget(editor::CLSEditor& editor, QWidget* parent = nullptr);

  [[nodiscard]] CanvasToolBar& toolBar() const { return *m_toolBar; }
  [[nodiscard]] DiagramView& view() const { return *m_view; }
  /// A strip that stands between tool bar and canvas from now on.
  void setStrip(QWidget* strip);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;

 private:
  editor::CLSEditor& m_editor;
  CanvasToolBar* m_toolBar;
  DiagramView* m_view;
  platform::Connection m_printing;
};

}  // namespace brisel::qt
