#include "interchange/DIMImport.h"

#include "interchange/DimReader.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::interchange {

platform::Ref<platform::MetaRepository> DIMImport::Import(FileList& files) {
  m_lastError.clear();
  try {
    return DimReader(m_registry).read(files.files());
  } catch (const std::exception& error) {
    m_lastError = error.what();
    throw;
  }
}

const platform::MemberTable& DIMImport::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<DIMImport>()
                                                  .method("Import", &DIMImport::Import)
                                                  .property("LastError", &DIMImport::LastError)
                                                  .build();
  return kTable;
}

}  // namespace brisel::interchange
