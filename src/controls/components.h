#pragma once

#include "platform/ComponentRegistry.h"

namespace brisel::controls {

void registerComponents(platform::ComponentRegistry& registry);

}  // namespace brisel::controls
