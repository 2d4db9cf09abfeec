#include "qt/FormWindow.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QGuiApplication>
#include <QPointer>
#include <QVBoxLayout>
#include <utility>

#include "qt/EditorWidget.h"
#include "qt/Text.h"

namespace brisel::qt {

FormWindow::FormWindow(component::DiagramWindow& component, Modal modal) : m_component(&component) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  resize(1100, 760);
  m_formChanged = component.FormChanged.connect([this] { followForm(); });
  if (modal == Modal::waits) {
    m_shownModally = component.ShownModally.connect([this] { waitUntilHidden(); });
  }
  followForm();
}

FormWindow::~FormWindow() {
  showBusy(false);
  if (m_waiting) m_waiting->quit();
}

void FormWindow::leave() {
  m_component = nullptr;
  m_formChanged.disconnect();
  m_shownModally.disconnect();
  followForm();
  deleteLater();
}

void FormWindow::followForm() {
  const auto form = m_component ? m_component->form() : platform::Ref<component::frmCLSDiagram>();
  if (form != m_form) {
    dropEditor();
    m_form = form;
    if (form) {
      m_editor = new EditorWidget(*form->Editor(), this);
      layout()->addWidget(m_editor);
      m_lookChanged = form->Changed.connect([this] { showForm(); });
    }
  }
  showForm();
}

void FormWindow::dropEditor() {
  m_lookChanged.disconnect();
  if (!m_editor) return;
  m_editor->hide();
  m_editor->deleteLater();  // the form may have been dropped inside a click on one of its buttons
  layout()->removeWidget(m_editor);
  m_editor = nullptr;
}

void FormWindow::showForm() {
  const bool shown = m_form && m_form->Visible();
  showBusy(shown && m_form->MousePointer() == component::frmCLSDiagram::kHourglassPointer);
  if (shown) {
    const auto modality = m_form->modal() ? Qt::ApplicationModal : Qt::NonModal;
    if (modality != windowModality()) {
      hide();  // a window that is shown keeps the modality that it has
      setWindowModality(modality);
    }
  }
  if (m_form) setWindowTitle(toQt(m_form->Caption()));
  setVisible(shown);
  if (!shown && m_waiting) m_waiting->quit();
}

/// Over the whole program, since the canvas has a pointer of its own.
void FormWindow::showBusy(bool busy) {
  if (std::exchange(m_busy, busy) == busy) return;
  if (busy) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}

void FormWindow::waitUntilHidden() {
  if (!isVisible() || m_waiting) return;
  const QPointer<FormWindow> self(this);  // the component may go while its window is waited for
  QEventLoop loop;
  m_waiting = &loop;
  loop.exec(QEventLoop::DialogExec);
  if (self) m_waiting = nullptr;
}

void FormWindow::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  if (!m_form) return;
  m_form->Resize(width() * platform::kTwipsPerPixel, height() * platform::kTwipsPerPixel);
}

void FormWindow::closeEvent(QCloseEvent* event) {
  if (const auto form = m_form) form->Hide();
  event->accept();
}

}  // namespace brisel::qt
