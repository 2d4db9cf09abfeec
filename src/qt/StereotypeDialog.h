#pragma once

#include "editors/frmStereotype.h"
#include "qt/FormDialog.h"

namespace brisel::qt {

class ListEditorWidget;

/// The dialog that edits the list of a model's stereotypes.
class StereotypeDialog : public FormDialog {
 public:
  StereotypeDialog(const platform::Ref<editors::frmStereotype>& form, QWidget* parent);

 protected:
  void enterFields() override;

 private:
  ListEditorWidget* m_list;
};

}  // namespace brisel::qt
