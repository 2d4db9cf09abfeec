#include "editors/Form.h"

#include "platform/MemberTableOf.h"

namespace brisel::editors {

void Form::Caption(std::string_view caption) {
  if (m_caption == caption) return;
  m_caption = caption;
  Changed();
}

void Form::Visible(bool visible) {
  if (m_visible == visible) return;
  m_visible = visible;
  Changed();
}

const platform::MemberTable& Form::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<Form>()
          .property("Caption", &Form::Caption, &Form::Caption)
          .property("Visible", &Form::Visible, &Form::Visible)
          .method("Hide", &Form::Hide)
          .build();
  return kTable;
}

}  // namespace brisel::editors
