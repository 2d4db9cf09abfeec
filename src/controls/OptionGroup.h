#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Control.h"
#include "platform/ValueArray.h"

namespace brisel::controls {

/// Option buttons of which one at most is chosen.
class OptionGroup : public Control {
 public:
  explicit OptionGroup(std::vector<std::string> captions = {}) : m_captions(std::move(captions)) {}

  [[nodiscard]] const std::vector<std::string>& captions() const { return m_captions; }
  /// The index of the chosen button, from 0; -1 for none.
  [[nodiscard]] std::int64_t value() const { return m_value; }
  /// Chosen by the program; -1 for none. An Error (subscript) outside of the buttons.
  void value(std::int64_t index);

  /// Chosen by a person: raises Chosen, also for the button that was chosen already. An Error
  /// (subscript) outside of the buttons.
  void Choose(std::int64_t index);

  platform::Event<> Chosen;

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  [[nodiscard]] platform::Ref<platform::ValueArray> Captions() const;

  std::vector<std::string> m_captions;
  std::int64_t m_value = -1;
};

}  // namespace brisel::controls
