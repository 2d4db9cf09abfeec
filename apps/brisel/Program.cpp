#include "Program.h"

#include <utility>

#include "component/DataFolder.h"
#include "component/Suite.h"
#include "platform/Error.h"

namespace brisel::app {

std::string CommandShell::showMessage(const platform::Message& message) {
  if (message.icon == platform::MessageIcon::critical && m_failure.empty()) {
    m_failure = message.text;
  }
  return AutomaticShell::showMessage(message);
}

void CommandShell::throwFailure() {
  if (m_failure.empty()) return;
  throw platform::Error(platform::ErrorNumber::invalidCall, std::exchange(m_failure, {}));
}

Program::Program() {
  component::registerSuite(m_registry);
  m_registry.add("Brisel.Shell", [this](platform::ComponentRegistry&) { return m_shell; });
}

std::string installationFolder() { return component::dataFolder(); }

}  // namespace brisel::app
