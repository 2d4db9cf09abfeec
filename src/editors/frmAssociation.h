#pragma once

#include "controls/Button.h"
#include "editors/CLSAssociationControl.h"
#include "editors/Form.h"

namespace brisel::editors {

/// The dialog around the relationship editor. Ok and Cancel do the same on purpose: each only
/// hides the dialog, and what was edited is written by the control's `Finish`.
class frmAssociation : public Form {
 public:
  explicit frmAssociation(platform::ComponentRegistry& registry);

  [[nodiscard]] std::string Path() const { return m_control->Path(); }
  void Path(std::string_view path) { m_control->Path(path); }

  [[nodiscard]] platform::Ref<CLSAssociationControl> CLSAssociationControl1() const {
    return m_control;
  }
  [[nodiscard]] platform::Ref<controls::Button> Ok() const { return m_ok; }
  [[nodiscard]] platform::Ref<controls::Button> Cancel() const { return m_cancel; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::Ref<CLSAssociationControl> m_control;
  platform::Ref<controls::Button> m_ok = platform::make<controls::Button>("&Ok");
  platform::Ref<controls::Button> m_cancel = platform::make<controls::Button>("&Cancel");
  platform::Connection m_okClicked;
  platform::Connection m_cancelClicked;
};

}  // namespace brisel::editors
