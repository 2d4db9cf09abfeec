#pragma once

#include <string>
#include <string_view>

#include "platform/Object.h"

namespace brisel::editors {

/// The pane that edits one class. So far it keeps what its owner hands it: the folder of the
/// suite's resources and whether it is shown.
class CLSClassControl : public platform::Object {
 public:
  [[nodiscard]] std::string Path() const { return m_path; }
  void Path(std::string_view path) { m_path = path; }
  [[nodiscard]] bool Visible() const { return m_visible; }
  void Visible(bool visible) { m_visible = visible; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_path;
  bool m_visible = true;
};

}  // namespace brisel::editors
