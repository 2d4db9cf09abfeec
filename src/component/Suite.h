#pragma once

#include "platform/ComponentRegistry.h"

namespace brisel::component {

/// Registers every component of the suite under its programmatic identifier: the one place that
/// knows all rooms. A registry without an installation folder gets the one that belongs to this
/// library. What a host registers afterwards is used in the suite's place.
void registerSuite(platform::ComponentRegistry& registry);

}  // namespace brisel::component
