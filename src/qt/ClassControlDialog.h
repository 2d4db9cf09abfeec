#pragma once

#include "editors/frmClassControl.h"
#include "qt/FormDialog.h"

namespace brisel::qt {

class ClassControlView;

/// The dialog that is filled by the class editor.
class ClassControlDialog : public FormDialog {
 public:
  ClassControlDialog(const platform::Ref<editors::frmClassControl>& form, QWidget* parent);

 protected:
  void enterFields() override;

 private:
  ClassControlView* m_content;
};

}  // namespace brisel::qt
