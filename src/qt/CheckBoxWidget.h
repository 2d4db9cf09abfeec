#pragma once

#include <QCheckBox>

#include "controls/CheckBox.h"

namespace brisel::qt {

/// A tick box with its caption. A click of a person ticks one that is grey.
class CheckBoxWidget : public QCheckBox {
 public:
  explicit CheckBoxWidget(platform::Ref<controls::CheckBox> box, QWidget* parent = nullptr);

 private:
  void follow();

  platform::Ref<controls::CheckBox> m_box;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
