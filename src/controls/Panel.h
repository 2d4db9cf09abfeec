#pragma once

#include <string>
#include <string_view>

#include "controls/Control.h"

namespace brisel::controls {

/// An area that other controls lie on, shown and hidden as one.
class Panel : public Control {
 public:
  explicit Panel(std::string_view tag = {}) : m_tag(tag) {}

  /// Free for the owner's use.
  [[nodiscard]] std::string Tag() const { return m_tag; }
  void Tag(std::string_view tag) { m_tag = tag; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_tag;
};

}  // namespace brisel::controls
