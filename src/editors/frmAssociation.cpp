#include "editors/frmAssociation.h"

#include "platform/MemberTableOf.h"

namespace brisel::editors {

frmAssociation::frmAssociation(platform::ComponentRegistry& registry)
    : Form("Association"), m_control(platform::make<CLSAssociationControl>(registry)) {
  m_okClicked = m_ok->Clicked.connect([this] { Hide(); });
  m_cancelClicked = m_cancel->Clicked.connect([this] { Hide(); });
}

const platform::MemberTable& frmAssociation::memberTable() const {
  using F = frmAssociation;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<F>(Form::memberTable())
          .property("Path", &F::Path, &F::Path)
          .property("CLSAssociationControl1", &F::CLSAssociationControl1)
          .property("Ok", &F::Ok)
          .property("Cancel", &F::Cancel)
          .build();
  return kTable;
}

}  // namespace brisel::editors
