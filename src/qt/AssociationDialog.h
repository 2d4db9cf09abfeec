#pragma once

#include "editors/frmAssociation.h"
#include "qt/FormDialog.h"

namespace brisel::qt {

class AssociationPane;

/// The dialog around the editor of a relationship.
class AssociationDialog : public FormDialog {
 public:
  AssociationDialog(const platform::Ref<editors::frmAssociation>& form, QWidget* parent);

 protected:
  void enterFields() override;

 private:
  AssociationPane* m_pane;
};

}  // namespace brisel::qt
