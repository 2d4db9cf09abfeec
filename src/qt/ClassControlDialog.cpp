#include "qt/ClassControlDialog.h"

#include "qt/ClassControlView.h"

namespace brisel::qt {

ClassControlDialog::ClassControlDialog(const platform::Ref<editors::frmClassControl>& form,
                                       QWidget* parent)
    : FormDialog(form, parent), m_content(new ClassControlView(form->CLSClassControl1(), this)) {
  setContent(m_content);
  resize(480, 430);
}

void ClassControlDialog::enterFields() { m_content->enterFields(); }

}  // namespace brisel::qt
