#include "controls/TextBox.h"

#include "platform/MemberTableOf.h"

namespace brisel::controls {

void TextBox::Text(std::string_view text) {
  if (m_text == text) return;
  m_text = text;
  Changed();
}

void TextBox::Visible(bool visible) {
  if (m_visible == visible) return;
  m_visible = visible;
  Changed();
}

const platform::MemberTable& TextBox::memberTable() const {
  static const platform::MemberTable kTable =
      platform::MemberTableOf<TextBox>()
          .property("Text", &TextBox::Text, &TextBox::Text)
          .property("Visible", &TextBox::Visible, &TextBox::Visible)
          .property("Tag", &TextBox::Tag, &TextBox::Tag)
          .method("SetText", &TextBox::SetText)
          .build();
  return kTable;
}

}  // namespace brisel::controls
