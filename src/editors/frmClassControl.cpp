#include "editors/frmClassControl.h"

#include "platform/MemberTableOf.h"

namespace brisel::editors {

frmClassControl::frmClassControl(platform::ComponentRegistry& registry)
    : Form("Class"), m_control(platform::make<CLSClassControl>(registry)) {
  m_closing = m_control->Closing.connect([this] { Hide(); });
}

const platform::MemberTable& frmClassControl::memberTable() const {
  using F = frmClassControl;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<F>(Form::memberTable())
          .property("Path", &F::Path, &F::Path)
          .property("CLSClassControl1", &F::CLSClassControl1)
          .build();
  return kTable;
}

}  // namespace brisel::editors
