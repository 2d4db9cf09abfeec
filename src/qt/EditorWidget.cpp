#include "qt/EditorWidget.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include "qt/CanvasToolBar.h"
#include "qt/ClassPane.h"
#include "qt/DiagramView.h"
#include "qt/InputNames.h"
#include "qt/NameBox.h"
#include "qt/Printing.h"

namespace brisel::qt {

EditorWidget::EditorWidget(editor::CLSEditor& editor, QWidget* parent)
    : QWidget(parent), m_editor(&editor) {
  const auto control = platform::as<canvas::DiagramControl>(editor.diagram());
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  auto* row = new QHBoxLayout;
  row->setSpacing(0);
  m_toolBar = new CanvasToolBar(control, CanvasToolBar::Part::row, this);
  m_drawingTools = new CanvasToolBar(control, CanvasToolBar::Part::palette, this);
  m_view = new DiagramView(control, this);
  m_nameBox = new NameBox(editor.ClassName(), *m_view);
  m_classPane = new ClassPane(editor.CLSClassControl1(),
                              platform::as<controls::ToolBarControl>(editor.ActiveBar21()),
                              *m_view->viewport(), *row);
  row->insertWidget(0, m_drawingTools);
  row->insertWidget(1, m_view, 1);
  column->addWidget(m_toolBar);
  column->addLayout(row, 1);
  setFocusProxy(m_view);
  m_printing = control->PrintRequested.connect([this, control = control.get()](bool preview) {
    printDiagram(control->scene(), preview, this);
  });
}

QAction* EditorWidget::action(std::string_view key) const {
  QAction* tool = m_drawingTools->isHidden() ? nullptr : m_drawingTools->action(key);
  return tool ? tool : m_toolBar->action(key);
}

void EditorWidget::setStrip(QWidget* strip) {
  static_cast<QVBoxLayout*>(layout())->insertWidget(1, strip);
}

void EditorWidget::finishEditing() {
  const platform::Ref<controls::TextBox> box = m_editor->ClassName();
  if (box->Visible()) box->LeaveFocus();
  m_editor->finishEditing();
}

void EditorWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  m_editor->Resize(width() * platform::kTwipsPerPixel, height() * platform::kTwipsPerPixel);
}

void EditorWidget::keyReleaseEvent(QKeyEvent* event) {
  m_editor->KeyUp(nameOfKey(*event));
  QWidget::keyReleaseEvent(event);
}

}  // namespace brisel::qt
