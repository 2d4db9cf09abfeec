#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "controls/Control.h"
#include "platform/Geometry.h"

namespace brisel::controls {

/// A line of text that a person edits: the text, what of it is selected, and where it stands. Changed
/// tells of text, selection, font and place too.
class TextBox : public Control {
 public:
  [[nodiscard]] std::string Text() const { return m_text; }
  /// Line breaks become spaces. Nothing is selected afterwards.
  void Text(std::string_view text);
  /// Free for the owner's use.
  [[nodiscard]] std::string Tag() const { return m_tag; }
  void Tag(std::string_view tag) { m_tag = tag; }
  /// Counted in characters (code points) from 0; brought into the text.
  [[nodiscard]] std::int64_t SelStart() const { return m_selStart; }
  void SelStart(std::int64_t start);
  [[nodiscard]] std::int64_t SelLength() const { return m_selLength; }
  void SelLength(std::int64_t length);
  /// Height of the em in points.
  [[nodiscard]] double FontSize() const { return m_fontSize; }
  void FontSize(double points);

  // In twips of what it lies on.
  [[nodiscard]] double Left() const { return m_area.left; }
  [[nodiscard]] double Top() const { return m_area.top; }
  [[nodiscard]] double Width() const { return m_area.width; }
  [[nodiscard]] double Height() const { return m_area.height; }
  [[nodiscard]] const platform::Rect& area() const { return m_area; }
  void area(const platform::Rect& area);

  /// The keyboard comes to the text box.
  void SetFocus() { FocusAsked(); }

  // What a person does.
  /// Types over all that is there.
  void SetText(std::string_view text);
  /// A key that does not change the text, by name: "Return", "Escape".
  void KeyPress(std::string_view key, std::string_view modifiers);
  /// The keyboard went elsewhere.
  void LeaveFocus() { FocusLost(); }

  platform::Event<> FocusAsked;
  platform::Event<> FocusLost;
  platform::Event<std::string> KeyPressed;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] std::int64_t length() const;

  std::string m_text;
  std::string m_tag;
  std::int64_t m_selStart = 0;
  std::int64_t m_selLength = 0;
  double m_fontSize = 10;
  platform::Rect m_area;
};

}  // namespace brisel::controls
