#include "interchange/DIMExport.h"

#include "interchange/DimFormat.h"
#include "interchange/DimWriter.h"
#include "platform/Error.h"
#include "platform/MemberTableOf.h"

namespace brisel::interchange {

void DIMExport::Export(std::string_view fileName, std::string_view modelKind,
                       platform::MetaRepository& repository) {
  m_lastError.clear();
  try {
    if (modelKind != dim::kModelKind) {
      throw platform::Error(
          platform::ErrorNumber::invalidCall,
          "A DIM file cannot hold a model of the kind \"" + std::string(modelKind) + "\"");
    }
    DimWriter::write(std::string(fileName), repository);
  } catch (const std::exception& error) {
    m_lastError = error.what();
    throw;
  }
}

const platform::MemberTable& DIMExport::memberTable() const {
  static const platform::MemberTable kTable = platform::MemberTableOf<DIMExport>()
                                                  .method("Export", &DIMExport::Export)
                                                  .property("LastError", &DIMExport::LastError)
                                                  .build();
  return kTable;
}

}  // namespace brisel::interchange
