#pragma once

#include <QLabel>

#include "controls/Label.h"

namespace brisel::qt {

/// A label with its caption. It gives the widget that it names, if any, its name for those who
/// listen to the window, and its mnemonic.
class LabelWidget : public QLabel {
 public:
  LabelWidget(platform::Ref<controls::Label> label, QWidget* named, QWidget* parent = nullptr);

 private:
  void follow();

  platform::Ref<controls::Label> m_label;
  QWidget* m_named;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
