#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "controls/Button.h"
#include "editors/Form.h"

class QVBoxLayout;

namespace brisel::qt {

/// A form as a modal dialog: its content above a row of the form's own buttons. It follows the
/// form's caption and ends when the form is hidden, by whomever. Escape and the window's close
/// button click the form's Cancel; a form without one is hidden.
class FormDialog : public QDialog {
 public:
  FormDialog(platform::Ref<editors::Form> form, QWidget* parent);

  /// Shows the form until it is hidden.
  void run();
  void reject() override;

 protected:
  /// Above the buttons, taking all the room that they leave.
  void setContent(QWidget* content);
  /// In the order in which the desktop has them. Enter clicks `ok`; `cancel` may be nothing.
  void setButtons(const platform::Ref<controls::Button>& ok,
                  const platform::Ref<controls::Button>& cancel = {});
  /// The keyboard comes to where a person begins.
  virtual void enterFields() {}

 private:
  void follow();

  platform::Ref<editors::Form> m_form;
  platform::Ref<controls::Button> m_cancel;
  QVBoxLayout* m_column;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
