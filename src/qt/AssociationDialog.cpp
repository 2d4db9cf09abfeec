#include "qt/AssociationDialog.h"

#include "qt/AssociationPane.h"

namespace brisel::qt {

AssociationDialog::AssociationDialog(const platform::Ref<editors::frmAssociation>& form,
                                     QWidget* parent)
    : FormDialog(form, parent), m_pane(new AssociationPane(form->CLSAssociationControl1(), this)) {
  setContent(m_pane);
  setButtons(form->Ok(), form->Cancel());
  resize(460, 430);
}

void AssociationDialog::enterFields() { m_pane->enterFields(); }

}  // namespace brisel::qt
