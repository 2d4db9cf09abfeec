#pragma once

#include <QWidget>
#include <vector>

#include "component/DiagramWindow.h"

namespace brisel::qt {

/// The window of a DiagramWindow component: follows its form, which may come and go. The component
/// must outlive it.
class FormWindow : public QWidget {
 public:
  explicit FormWindow(component::DiagramWindow& component);

 protected:
  void resizeEvent(QResizeEvent* event) override;
  /// A form is hidden by its window's close button; the component lives on.
  void closeEvent(QCloseEvent* event) override;

 private:
  void followForm();
  void showForm();

  component::DiagramWindow& m_component;
  platform::Ref<component::frmCLSDiagram> m_form;  ///< the one that is shown
  QWidget* m_editor = nullptr;
  platform::Connection m_formChanged;
  platform::Connection m_lookChanged;
};

}  // namespace brisel::qt
