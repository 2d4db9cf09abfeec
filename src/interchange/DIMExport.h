#pragma once

#include <string>
#include <string_view>

#include "platform/Object.h"
#include "platform/Repository.h"

namespace brisel::interchange {

/// The component that writes DIM files ("BriselExporter.DIMExport").
class DIMExport : public platform::Object {
 public:
  // The system's members.
  /// Writes the repository to the file; see DimWriter. The only kind of model is "BriselCLS". An
  /// Error where that fails, which leaves the file as it was.
  void Export(std::string_view fileName, std::string_view modelKind,
              platform::MetaRepository& repository);

  /// What the last Export failed with; empty after one that did not.
  [[nodiscard]] std::string LastError() const { return m_lastError; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  std::string m_lastError;
};

}  // namespace brisel::interchange
