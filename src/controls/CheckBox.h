#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "controls/Control.h"

namespace brisel::controls {

/// A tick box of three states: 0 not ticked, 1 ticked, 2 grey (neither).
class CheckBox : public Control {
 public:
  explicit CheckBox(std::string_view caption = {}) : m_caption(caption) {}

  [[nodiscard]] std::string Caption() const { return m_caption; }
  void Caption(std::string_view caption);
  [[nodiscard]] std::int64_t value() const { return m_value; }
  /// Set by the program. An Error (invalidCall) for another number than 0, 1 and 2.
  void value(std::int64_t value);

  /// Set by a person: raises Clicked, whatever the state was. Errors as `value`.
  void SetValue(std::int64_t value);

  platform::Event<> Clicked;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_caption;
  std::int64_t m_value = 0;
};

}  // namespace brisel::controls
