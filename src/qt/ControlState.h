#pragma once

#include <QWidget>

#include "controls/Control.h"

namespace brisel::qt {

/// Shows or hides the widget and takes its use away as the control says. A widget that lies on
/// nothing yet is not made a window of by that.
inline void showState(QWidget& widget, const controls::Control& control) {
  const bool wasHiddenHere = widget.testAttribute(Qt::WA_WState_ExplicitShowHide);
  if (!control.Visible()) {
    widget.hide();
  } else if (wasHiddenHere && widget.isHidden()) {
    widget.show();
  }
  widget.setEnabled(control.Enabled());
}

}  // namespace brisel::qt
