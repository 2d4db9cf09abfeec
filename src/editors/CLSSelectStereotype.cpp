#include "editors/CLSSelectStereotype.h"

#include "platform/MemberTableOf.h"

namespace brisel::editors {

CLSSelectStereotype::CLSSelectStereotype() { Create(); }

void CLSSelectStereotype::show(platform::MetaRepository& model, platform::Node* stereotype) {
  Destroy();
  Create();
  m_combo->fill(*model.MetaNodes(platform::types::kStereotype)->extension(), "Name");
  Selection(stereotype);
}

const platform::MemberTable& CLSSelectStereotype::memberTable() const {
  using S = CLSSelectStereotype;
  static const platform::MemberTable kTable =
      platform::MemberTableOf<S>(Control::memberTable())
          .method("Create", &S::Create)
          .method("Init", &S::Init)
          .method("Deinit", &S::Deinit)
          .method("Destroy", &S::Destroy)
          .property<platform::Ref<platform::Node>, platform::Node*>("Selection", &S::Selection,
                                                                    &S::Selection)
          .method("List", &S::List)
          .property("Combo1", &S::Combo1)
          .property("Label1", &S::Label1)
          .build();
  return kTable;
}

}  // namespace brisel::editors
