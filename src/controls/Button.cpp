#include "controls/Button.h"

#include "platform/MemberTableOf.h"

namespace brisel::controls {

void Button::Caption(std::string_view caption) {
  if (m_caption == caption) return;
  m_caption = caption;
  Changed();
}

void Button::Click() {
  if (Enabled() && Visible()) Clicked();
}

const platform::MemberTable& Button::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<Button>(Control::memberTable())
          .property("Caption", &Button::Caption, &Button::Caption)
          .method("Click", &Button::Click)
          .event("Clicked", &Button::Clicked)
          .build();
  return kTable;
}

}  // namespace brisel::controls
