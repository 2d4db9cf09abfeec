#include "controls/Panel.h"

#include "platform/MemberTableOf.h"

namespace brisel::controls {

const platform::MemberTable& Panel::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<Panel>(Control::memberTable())
                                                  .property("Tag", &Panel::Tag, &Panel::Tag)
                                                  .build();
  return kTable;
}

}  // namespace brisel::controls
