#pragma once

#include <QPushButton>

#include "controls/Button.h"

namespace brisel::qt {

/// A button with its caption; a click goes to the control.
class ButtonWidget : public QPushButton {
 public:
  explicit ButtonWidget(platform::Ref<controls::Button> button, QWidget* parent = nullptr);

 private:
  void follow();

  platform::Ref<controls::Button> m_button;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
