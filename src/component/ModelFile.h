#pragma once

#include <string>
#include <vector>

#include "interchange/ImportReport.h"
#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"

namespace brisel::component {

/// A model that was read from files of whichever kind.
struct ModelFile {
  platform::Ref<platform::MetaRepository> repository;
  interchange::ImportReport report;  ///< what the model has no place for
  bool isDiagram = false;            ///< one DIM file: saving writes it again
};

/// Reads a DIM file, or the files of one model of another tool. An Error names file and cause.
[[nodiscard]] ModelFile readModel(platform::ComponentRegistry& registry,
                                  const std::vector<std::string>& files);

/// The same from memory: what it is is told by what it holds. Messages call it by the name.
[[nodiscard]] ModelFile readModel(platform::ComponentRegistry& registry, const std::string& name,
                                  std::string bytes);

/// The report for a person, one line for each entry.
[[nodiscard]] std::vector<std::string> notesOf(const interchange::ImportReport& report);

}  // namespace brisel::component
