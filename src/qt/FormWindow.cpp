#include "qt/FormWindow.h"

#include <QCloseEvent>
#include <QVBoxLayout>

#include "qt/EditorWidget.h"
#include "qt/Text.h"

namespace brisel::qt {

FormWindow::FormWindow(component::DiagramWindow& component) : m_component(component) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  resize(1100, 760);
  m_formChanged = component.FormChanged.connect([this] { followForm(); });
  followForm();
}

void FormWindow::followForm() {
  if (m_component.form() == m_form) {
    showForm();
    return;
  }
  if (m_editor) {
    m_editor->hide();
    m_editor->deleteLater();  // the form may have been dropped inside a click on one of its buttons
    layout()->removeWidget(m_editor);
    m_editor = nullptr;
  }
  m_lookChanged.disconnect();
  m_form = m_component.form();
  if (m_form) {
    m_editor = new EditorWidget(*m_form->Editor(), this);
    layout()->addWidget(m_editor);
    m_lookChanged = m_form->Changed.connect([this] { showForm(); });
  }
  showForm();
}

void FormWindow::showForm() {
  if (!m_form) {
    hide();
    return;
  }
  setWindowTitle(toQt(m_form->Caption()));
  setWindowModality(m_form->modal() ? Qt::ApplicationModal : Qt::NonModal);
  const bool busy = m_form->MousePointer() == component::frmCLSDiagram::kHourglassPointer;
  setCursor(busy ? Qt::WaitCursor : Qt::ArrowCursor);
  setVisible(m_form->Visible());
}

void FormWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!m_form) return;
  m_form->Resize(width() * platform::kTwipsPerPixel, height() * platform::kTwipsPerPixel);
}

void FormWindow::closeEvent(QCloseEvent* event) {
  if (m_form) m_form->Hide();
  event->accept();
}

}  // namespace brisel::qt
