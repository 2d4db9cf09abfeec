#include "qt/StereotypeDialog.h"

#include "qt/ListEditorWidget.h"

namespace brisel::qt {

StereotypeDialog::StereotypeDialog(const platform::Ref<editors::frmStereotype>& form,
                                   QWidget* parent)
    : FormDialog(form, parent), m_list(new ListEditorWidget(form->ListEditor1(), this)) {
  setContent(m_list);
  setButtons(form->Ok());
  resize(380, 360);
}

void StereotypeDialog::enterFields() { m_list->setFocus(Qt::TabFocusReason); }

}  // namespace brisel::qt
