#pragma once

#include <string>
#include <string_view>

#include "controls/Control.h"

namespace brisel::controls {

/// A text that a person reads. "&" marks the mnemonic of the control behind it.
class Label : public Control {
 public:
  explicit Label(std::string_view caption = {}) : m_caption(caption) {}

  [[nodiscard]] std::string Caption() const { return m_caption; }
  void Caption(std::string_view caption);

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_caption;
};

}  // namespace brisel::controls
