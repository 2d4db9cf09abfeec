#pragma once

#include "platform/ComponentRegistry.h"

namespace brisel::component {

/// Registers every component of the suite under its programmatic identifier: the one place that
/// knows all rooms.
void registerSuite(platform::ComponentRegistry& registry);

}  // namespace brisel::component
