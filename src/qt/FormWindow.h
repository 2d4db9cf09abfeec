#pragma once

#include <QWidget>

#include "component/DiagramWindow.h"

class QEventLoop;

namespace brisel::qt {

/// The window of a DiagramWindow component: follows its form, which may come and go. Whoever owns
/// the component calls `leave` before it goes.
class FormWindow : public QWidget {
 public:
  /// Whether a modal PopUp comes back when the form was hidden, or at once.
  enum class Modal { waits, returns };

  FormWindow(component::DiagramWindow& component, Modal modal);
  ~FormWindow() override;

  /// Lets go of the component, hides, and is deleted when no event of the window is under way.
  void leave();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  /// A form is hidden by its window's close button; the component lives on.
  void closeEvent(QCloseEvent* event) override;

 private:
  void followForm();
  void showForm();
  void showBusy(bool busy);
  void waitUntilHidden();
  void dropEditor();

  component::DiagramWindow* m_component;           ///< nothing once it was left
  platform::Ref<component::frmCLSDiagram> m_form;  ///< the one that is shown
  QWidget* m_editor = nullptr;
  bool m_busy = false;
  QEventLoop* m_waiting = nullptr;
  platform::Connection m_formChanged;
  platform::Connection m_lookChanged;
  platform::Connection m_shownModally;
};

}  // namespace brisel::qt
