#include "platform/ValueList.h"

#include <string>

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::platform {

Value ValueList::Item(std::int64_t index) const {
  if (index < 1 || index > Count()) {
    throw Error(ErrorNumber::subscript,
                "No item " + std::to_string(index) + " in a list of " + std::to_string(Count()));
  }
  return m_values[static_cast<std::size_t>(index - 1)];
}

const MemberTable& ValueList::memberTable() const {
  static const MemberTable kTable = MemberTableOf<ValueList>()
                                        .property("Count", &ValueList::Count)
                                        .method("Item", &ValueList::Item)
                                        .method("ToArray", &ValueList::toArray)
                                        .build();
  return kTable;
}

}  // namespace brisel::platform
