#pragma once

#include <string>
#include <string_view>

#include "controls/Control.h"

namespace brisel::controls {

/// A button with a caption, in which "&" marks the mnemonic.
class Button : public Control {
 public:
  explicit Button(std::string_view caption = {}) : m_caption(caption) {}

  [[nodiscard]] std::string Caption() const { return m_caption; }
  void Caption(std::string_view caption);

  /// A person's click: raises Clicked, unless the button is disabled or not shown.
  void Click();

  platform::Event<> Clicked;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_caption;
};

}  // namespace brisel::controls
