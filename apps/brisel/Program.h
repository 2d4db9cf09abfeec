#pragma once

#include <string>

#include "component/AutomaticShell.h"
#include "platform/ComponentRegistry.h"

namespace brisel::app {

/// The shell of a command: answers every dialog by default, and remembers the first error that a
/// component has shown, since a command must not go on after one.
class CommandShell : public component::AutomaticShell {
 public:
  std::string showMessage(const platform::Message& message) override;

  /// Raises what was shown as an Error, once.
  void throwFailure();

 private:
  std::string m_failure;
};

/// The components of the suite and what they share, for a command that needs no display.
class Program {
 public:
  Program();

  [[nodiscard]] platform::ComponentRegistry& registry() { return m_registry; }
  [[nodiscard]] CommandShell& shell() { return *m_shell; }

 private:
  platform::Ref<CommandShell> m_shell = platform::make<CommandShell>();
  platform::ComponentRegistry m_registry{m_shell};
};

/// Where icons and templates lie, both in an installation and in a build folder.
[[nodiscard]] std::string installationFolder();

}  // namespace brisel::app
