#pragma once

#include <QButtonGroup>
#include <QWidget>

#include "controls/OptionGroup.h"

namespace brisel::qt {

/// Option buttons side by side.
class OptionGroupWidget : public QWidget {
 public:
  explicit OptionGroupWidget(platform::Ref<controls::OptionGroup> group, QWidget* parent = nullptr);

  [[nodiscard]] QAbstractButton& button(int index) const { return *m_buttons.button(index); }

 private:
  void follow();

  platform::Ref<controls::OptionGroup> m_group;
  QButtonGroup m_buttons;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
