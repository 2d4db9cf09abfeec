#pragma once

#include <string>
#include <vector>

#include "interchange/ModelImport.h"

namespace brisel::app {

/// Reads the files of one model into a new repository: DIM files, or files of other tools. Standard
/// input is taken for what it holds. An Error names file, line and cause; a UsageError when the
/// two sorts are mixed.
[[nodiscard]] interchange::ImportResult readModelFiles(const std::vector<std::string>& paths,
                                                       platform::ComponentRegistry& registry);

}  // namespace brisel::app
