#pragma once

#include <QLineEdit>
#include <QScopedValueRollback>
#include <vector>

#include "controls/TextBox.h"

namespace brisel::qt {

/// A text box as a line of text: shows its text and selection, and tells it what is typed, selected
/// and pressed.
class TextBoxWidget : public QLineEdit {
 public:
  explicit TextBoxWidget(platform::Ref<controls::TextBox> box, QWidget* parent = nullptr);

 protected:
  /// The text box says something else than before.
  virtual void follow();
  void followText();
  /// The keyboard is wanted here.
  virtual void takeFocus();
  [[nodiscard]] controls::TextBox& box() const { return *m_box; }
  /// Does something that the text box knows of and need not be told.
  template <class Body>
  void untold(Body&& body) {
    const QScopedValueRollback telling(m_telling, true);
    body();
  }

  void keyPressEvent(QKeyEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void followSelection();
  void tellText();
  void tellSelection();

  platform::Ref<controls::TextBox> m_box;
  bool m_telling = false;  ///< what the text box says comes from here
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
