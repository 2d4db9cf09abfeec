#include "controls/CheckBox.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::controls {

void CheckBox::Caption(std::string_view caption) {
  if (m_caption == caption) return;
  m_caption = caption;
  Changed();
}

void CheckBox::value(std::int64_t value) {
  if (value < 0 || value > 2) {
    throw platform::Error(platform::ErrorNumber::invalidCall,
                          "A tick box has the states 0, 1 and 2, not " + std::to_string(value));
  }
  if (m_value == value) return;
  m_value = value;
  Changed();
}

void CheckBox::SetValue(std::int64_t wanted) {
  if (!Enabled()) return;
  value(wanted);
  Clicked();
}

const platform::MemberTable& CheckBox::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<CheckBox>(Control::memberTable())
          .property("Caption", &CheckBox::Caption, &CheckBox::Caption)
          .property("value", &CheckBox::value, &CheckBox::value)
          .method("SetValue", &CheckBox::SetValue)
          .event("Clicked", &CheckBox::Clicked)
          .build();
  return kTable;
}

}  // namespace brisel::controls
