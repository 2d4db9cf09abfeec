#pragma once

#include "platform/ComponentRegistry.h"

namespace brisel::interchange {

/// Registers the importer, its file list and the exporter of DIM files.
void registerComponents(platform::ComponentRegistry& registry);

}  // namespace brisel::interchange
