#include "controls/Control.h"

#include "platform/MemberTableOf.h"

namespace brisel::controls {

void Control::Visible(bool visible) {
  if (m_visible == visible) return;
  m_visible = visible;
  Changed();
}

void Control::Enabled(bool enabled) {
  if (m_enabled == enabled) return;
  m_enabled = enabled;
  Changed();
}

const platform::MemberTable& Control::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<Control>()
          .property("Visible", &Control::Visible, &Control::Visible)
          .property("Enabled", &Control::Enabled, &Control::Enabled)
          .build();
  return kTable;
}

}  // namespace brisel::controls
