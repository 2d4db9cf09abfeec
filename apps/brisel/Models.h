#pragma once

#include <string>
#include <vector>

#include "component/ModelFile.h"

namespace brisel::app {

/// Reads the files of one model into a new repository: DIM files, or files of other tools. Standard
/// input is taken for what it holds. An Error names file, line and cause.
[[nodiscard]] component::ModelFile readModelFiles(const std::vector<std::string>& paths,
                                                  platform::ComponentRegistry& registry);

/// One line on standard error that counts what the model has no place for, or nothing.
void tellOfReport(const interchange::ImportReport& report);

}  // namespace brisel::app
