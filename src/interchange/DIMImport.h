#pragma once

#include <string>

#include "interchange/FileList.h"
#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"

namespace brisel::interchange {

/// The component that reads DIM files ("BriselImporter.DIMImport").
class DIMImport : public platform::Object {
 public:
  explicit DIMImport(platform::ComponentRegistry& registry) : m_registry(registry) {}

  // The system's members.
  /// The files as one new repository; see DimReader. An Error where that fails.
  platform::Ref<platform::MetaRepository> Import(FileList& files);

  /// What the last Import failed with; empty after one that did not.
  [[nodiscard]] std::string LastError() const { return m_lastError; }

  [[nodiscard]] const platform::MemberTable& memberTable() const override;

 private:
  platform::ComponentRegistry& m_registry;
  std::string m_lastError;
};

}  // namespace brisel::interchange
