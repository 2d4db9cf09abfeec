#include "interchange/FileList.h"

#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::interchange {

std::string FileList::Item(std::int64_t index) const {
  if (index < 1 || index > Count()) {
    throw platform::Error(
        platform::ErrorNumber::subscript,
        "No item " + std::to_string(index) + " in a list of " + std::to_string(Count()));
  }
  return m_files[static_cast<std::size_t>(index - 1)];
}

const platform::MemberTable& FileList::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<FileList>()
                                                  .method("Add", &FileList::Add)
                                                  .property("Count", &FileList::Count)
                                                  .method("Item", &FileList::Item)
                                                  .build();
  return kTable;
}

}  // namespace brisel::interchange
