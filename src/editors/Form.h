#pragma once

#include <string>
#include <string_view>

#include "platform/Event.h"
#include "platform/Object.h"

namespace brisel::editors {

/// A dialog without a toolkit: a caption and whether it is shown. Its controls are its properties
/// by name. Whoever needs its answer runs it modally through the shell.
class Form : public platform::Object {
 public:
  explicit Form(std::string_view caption) : m_caption(caption) {}

  [[nodiscard]] std::string Caption() const { return m_caption; }
  void Caption(std::string_view caption);
  [[nodiscard]] bool Visible() const { return m_visible; }
  void Visible(bool visible);
  void Hide() { Visible(false); }

  platform::Event<> Changed;  ///< caption or visibility

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_caption;
  bool m_visible = false;
};

}  // namespace brisel::editors
