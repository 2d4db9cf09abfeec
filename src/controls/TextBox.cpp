#include "controls/TextBox.h"

#include <algorithm>
#include <array>

#include "platform/MemberTableOf.h"

namespace brisel::controls {

namespace {

/// Breaks of lines and paragraphs in UTF-8, the longer ones first.
constexpr std::array<std::string_view, 8> kBreaks = {"\r\n",     "\xE2\x80\xA8", "\xE2\x80\xA9",
                                                     "\xC2\x85", "\n",           "\r",
                                                     "\v",       "\f"};

/// A break of lines, in whichever of its spellings, as one space.
std::string onOneLine(std::string_view text) {
  std::string line;
  line.reserve(text.size());
  while (!text.empty()) {
    const auto found = std::find_if(kBreaks.begin(), kBreaks.end(),
                                    [&](std::string_view one) { return text.starts_with(one); });
    line.push_back(found == kBreaks.end() ? text.front() : ' ');
    text.remove_prefix(found == kBreaks.end() ? 1 : found->size());
  }
  return line;
}

}  // namespace

void TextBox::Text(std::string_view text) {
  std::string line = onOneLine(text);
  if (m_text == line) return;
  m_text = std::move(line);
  m_selStart = m_selLength = 0;
  Changed();
}

void TextBox::SetText(std::string_view text) {
  if (Enabled()) Text(text);
}

std::int64_t TextBox::length() const {
  return std::count_if(m_text.begin(), m_text.end(),
                       [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
}

void TextBox::SelStart(std::int64_t start) {
  m_selStart = std::clamp<std::int64_t>(start, 0, length());
  m_selLength = 0;
  Changed();
}

void TextBox::SelLength(std::int64_t wanted) {
  m_selLength = std::clamp<std::int64_t>(wanted, 0, length() - m_selStart);
  Changed();
}

void TextBox::FontSize(double points) {
  if (m_fontSize == points) return;
  m_fontSize = points;
  Changed();
}

void TextBox::area(const platform::Rect& area) {
  if (m_area == area) return;
  m_area = area;
  Changed();
}

void TextBox::KeyPress(std::string_view key, std::string_view) { KeyPressed(std::string(key)); }

const platform::MemberTable& TextBox::memberTable() const {
  using T = TextBox;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<T>(Control::memberTable())
          .property("Text", &T::Text, &T::Text)
          .property("Tag", &T::Tag, &T::Tag)
          .property("SelStart", &T::SelStart, &T::SelStart)
          .property("SelLength", &T::SelLength, &T::SelLength)
          .property("FontSize", &T::FontSize, &T::FontSize)
          .property("Left", &T::Left)
          .property("Top", &T::Top)
          .property("Width", &T::Width)
          .property("Height", &T::Height)
          .method("SetFocus", &T::SetFocus)
          .method("SetText", &T::SetText)
          .method("KeyPress", &T::KeyPress)
          .optional(1)
          .method("LeaveFocus", &T::LeaveFocus)
          .build();
  return kTable;
}

}  // namespace brisel::controls
