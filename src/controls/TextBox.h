#pragma once

#include <string>
#include <string_view>

#include "platform/Event.h"
#include "platform/Geometry.h"
#include "platform/Object.h"

namespace brisel::controls {

/// A line of text that a person edits: the text, whether it is shown, and where.
class TextBox : public platform::Object {
 public:
  [[nodiscard]] std::string Text() const { return m_text; }
  void Text(std::string_view text);
  [[nodiscard]] bool Visible() const { return m_visible; }
  void Visible(bool visible);
  /// Free for the owner's use.
  [[nodiscard]] std::string Tag() const { return m_tag; }
  void Tag(std::string_view tag) { m_tag = tag; }
  /// As a person types it.
  void SetText(std::string_view text) { Text(text); }

  platform::Event<> Changed;  ///< text or visibility changed

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_text;
  std::string m_tag;
  bool m_visible = true;
};

}  // namespace brisel::controls
