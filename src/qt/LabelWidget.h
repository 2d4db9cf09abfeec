#pragma once

#include <QLabel>

#include "controls/Label.h"

namespace brisel::qt {

/// A label with its caption, whose mnemonic brings the keyboard to the widget that it names.
class LabelWidget : public QLabel {
 public:
  LabelWidget(platform::Ref<controls::Label> label, QWidget& named, QWidget* parent = nullptr);

 private:
  void follow();

  platform::Ref<controls::Label> m_label;
  QWidget& m_named;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
