#pragma once

#include <string>
#include <vector>

#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"

namespace brisel::component {

/// A model that was read from files of whichever kind.
struct ModelFile {
  platform::Ref<platform::MetaRepository> repository;
  bool isDiagram = false;          ///< one DIM file: saving writes it again
  std::vector<std::string> notes;  ///< one line for each thing that the model has no place for
};

/// Reads a DIM file, or the files of one model of another tool. An Error names file and cause.
[[nodiscard]] ModelFile readModel(platform::ComponentRegistry& registry,
                                  const std::vector<std::string>& files);

}  // namespace brisel::component
