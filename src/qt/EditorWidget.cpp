#include "qt/EditorWidget.h"

#include <QKeyEvent>
#include <QVBoxLayout>

#include "qt/CanvasToolBar.h"
#include "qt/DiagramView.h"
#include "qt/InputNames.h"
#include "qt/Printing.h"

namespace brisel::qt {

EditorWidget::EditorWidget(editor::CLSEditor& editor, QWidget* parent)
    : QWidget(parent), m_editor(editor) {
  const auto control = platform::as<canvas::DiagramControl>(editor.diagram());
  m_toolBar = new CanvasToolBar(control, this);
  m_view = new DiagramView(control, this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(m_toolBar);
  column->addWidget(m_view, 1);
  setFocusProxy(m_view);
  m_printing = control->PrintRequested.connect([this, control = control.get()](bool preview) {
    printDiagram(control->scene(), preview, this);
  });
}

void EditorWidget::setStrip(QWidget* strip) {
  static_cast<QVBoxLayout*>(layout())->insertWidget(1, strip);
}

void EditorWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  m_editor.Resize(width() * platform::kTwipsPerPixel, height() * platform::kTwipsPerPixel);
}

void EditorWidget::keyReleaseEvent(QKeyEvent* event) {
  m_editor.KeyUp(nameOfKey(*event));
  QWidget::keyReleaseEvent(event);
}

}  // namespace brisel::qt
