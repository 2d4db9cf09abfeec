#pragma once

#include "editors/frmClass.h"
#include "qt/FormDialog.h"

class QVBoxLayout;

namespace brisel::qt {

/// The dialog in which a new class is named and the members that move to it are ticked.
class ClassDialog : public FormDialog {
 public:
  ClassDialog(const platform::Ref<editors::frmClass>& form, QWidget* parent);

 protected:
  void enterFields() override;

 private:
  void addMembers(QVBoxLayout& column, const QString& title,
                  const platform::Ref<controls::ListView>& list,
                  const platform::Ref<controls::Button>& all);

  QWidget* m_name;
};

}  // namespace brisel::qt
