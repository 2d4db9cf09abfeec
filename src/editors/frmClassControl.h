#pragma once

#include "editors/CLSClassControl.h"
#include "editors/Form.h"

namespace brisel::editors {

/// A dialog that holds nothing but the class pane. Members are written as they are edited, so that
/// closing it discards none.
class frmClassControl : public Form {
 public:
  explicit frmClassControl(platform::ComponentRegistry& registry);

  [[nodiscard]] std::string Path() const { return m_control->Path(); }
  void Path(std::string_view path) { m_control->Path(path); }

  [[nodiscard]] platform::Ref<CLSClassControl> CLSClassControl1() const { return m_control; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::Ref<CLSClassControl> m_control;
  platform::Connection m_closing;
};

}  // namespace brisel::editors
