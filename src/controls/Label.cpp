#include "controls/Label.h"

#include "platform/MemberTableOf.h"

namespace brisel::controls {

void Label::Caption(std::string_view caption) {
  if (m_caption == caption) return;
  m_caption = caption;
  Changed();
}

const platform::MemberTable& Label::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<Label>(Control::memberTable())
          .property("Caption", &Label::Caption, &Label::Caption)
          .build();
  return kTable;
}

}  // namespace brisel::controls
