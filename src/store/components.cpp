#include "store/components.h"

#include "platform/ComponentRegistry.h"
#include "store/MHashTable.h"
#include "store/Meta.h"
#include "store/UUIDGenerator.h"

namespace brisel::store {

namespace {

template <class T>
void add(platform::ComponentRegistry& registry, const char* progId) {
  registry.add(progId, [](platform::ComponentRegistry&) { return platform::make<T>(); });
}

}  // namespace

void registerComponents(platform::ComponentRegistry& registry) {
  add<Meta>(registry, "BriselCLS.Meta");
  add<UUIDGenerator>(registry, "BriselUtility.UUIDGenerator");
  add<MHashTable>(registry, "BriselDataStructures.MHashTable");
}

}  // namespace brisel::store
