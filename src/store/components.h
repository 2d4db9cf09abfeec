#pragma once

namespace brisel::platform {
class ComponentRegistry;
}

namespace brisel::store {

/// The repository server, the identifier generator and the hash table.
void registerComponents(platform::ComponentRegistry& registry);

}  // namespace brisel::store
