#include "platform/ComponentRegistry.h"

#include "platform/Error.h"
#include "platform/Shell.h"

namespace brisel::platform {

ComponentRegistry::ComponentRegistry(Ref<Shell> shell) : m_shell(std::move(shell)) {}
ComponentRegistry::~ComponentRegistry() = default;

void ComponentRegistry::add(std::string progId, Factory factory) {
  m_factories.insert_or_assign(std::move(progId), std::move(factory));
}

Ref<Object> ComponentRegistry::create(std::string_view progId) {
  const auto found = m_factories.find(progId);
  if (found == m_factories.end()) {
    throw CallError(ErrorNumber::componentUnknown, "Unknown component: " + std::string(progId));
  }
  return found->second(*this);
}

bool ComponentRegistry::contains(std::string_view progId) const {
  return m_factories.contains(progId);
}

Shell& ComponentRegistry::shell() const { return *m_shell; }
void ComponentRegistry::shell(Ref<Shell> shell) { m_shell = std::move(shell); }

void ComponentRegistry::failKind(std::string_view progId) {
  throw Error(ErrorNumber::typeMismatch,
              "The component " + std::string(progId) + " is not of the kind expected");
}

}  // namespace brisel::platform
