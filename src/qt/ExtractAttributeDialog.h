#pragma once

#include "editors/frmExtractAttribute.h"
#include "qt/FormDialog.h"

namespace brisel::qt {

/// The dialog in which the attribute is chosen that becomes a class: the first, to begin with.
class ExtractAttributeDialog : public FormDialog {
 public:
  ExtractAttributeDialog(const platform::Ref<editors::frmExtractAttribute>& form, QWidget* parent);

 protected:
  void enterFields() override;

 private:
  QWidget* m_attributes;
  platform::Ref<controls::ListView> m_list;
};

}  // namespace brisel::qt
