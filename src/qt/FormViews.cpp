#include "qt/FormViews.h"

#include <array>

#include "qt/AssociationDialog.h"
#include "qt/ClassControlDialog.h"
#include "qt/ClassDialog.h"
#include "qt/ExtractAttributeDialog.h"
#include "qt/StereotypeDialog.h"

namespace brisel::qt {

namespace {

template <class Form, class Dialog>
std::unique_ptr<FormDialog> make(platform::Object& object, QWidget* parent) {
  auto* form = dynamic_cast<Form*>(&object);
  if (!form) return nullptr;
  return std::make_unique<Dialog>(platform::Ref<Form>(form), parent);
}

struct FormView {
  std::string_view form;
  std::unique_ptr<FormDialog> (*make)(platform::Object& form, QWidget* parent);
};

constexpr std::array kViews = {
    FormView{"frmAssociation", &make<editors::frmAssociation, AssociationDialog>},
    FormView{"frmClass", &make<editors::frmClass, ClassDialog>},
    FormView{"frmClassControl", &make<editors::frmClassControl, ClassControlDialog>},
    FormView{"frmExtractAttribute", &make<editors::frmExtractAttribute, ExtractAttributeDialog>},
    FormView{"frmStereotype", &make<editors::frmStereotype, StereotypeDialog>},
};

}  // namespace

std::unique_ptr<FormDialog> makeFormDialog(std::string_view name, platform::Object& form,
                                           QWidget* parent) {
  for (const FormView& view : kViews) {
    if (view.form == name) return view.make(form, parent);
  }
  return nullptr;
}

}  // namespace brisel::qt
