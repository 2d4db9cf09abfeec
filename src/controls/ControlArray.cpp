#include "controls/ControlArray.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::controls {

platform::Ref<platform::Object> ControlArray::Item(std::int64_t index) const {
  if (index < 0 || index >= Count()) {
    throw platform::Error(
        platform::ErrorNumber::subscript,
        "No control " + std::to_string(index) + " in an array of " + std::to_string(Count()));
  }
  return m_items[static_cast<std::size_t>(index)];
}

const platform::MemberTable& ControlArray::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<ControlArray>()
                                                  .property("Count", &ControlArray::Count)
                                                  .method("Item", &ControlArray::Item)
                                                  .build();
  return kTable;
}

}  // namespace brisel::controls
