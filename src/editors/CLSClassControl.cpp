#include "editors/CLSClassControl.h"

#include "platform/MemberTableOf.h"

namespace brisel::editors {

const platform::MemberTable& CLSClassControl::memberTable() const {
  using C = CLSClassControl;
  static const platform::MemberTable kTable = platform::MemberTableOf<C>()
                                                  .property("Path", &C::Path, &C::Path)
                                                  .property("Visible", &C::Visible, &C::Visible)
                                                  .build();
  return kTable;
}

}  // namespace brisel::editors
