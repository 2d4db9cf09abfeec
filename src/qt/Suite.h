#pragma once

#include <string_view>

#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"
#include "qt/QtShell.h"

namespace brisel::qt {

/// Registers every component of the suite for a program with windows: a DiagramWindow has a window
/// of its own, and a modal PopUp waits in it.
void registerSuite(platform::ComponentRegistry& registry);

/// What the controls and windows of one program share: the registry with every component, and the
/// shell that shows their dialogs. A program that has none makes do with `instance`.
class Suite {
 public:
  Suite();
  Suite(const Suite&) = delete;
  Suite& operator=(const Suite&) = delete;

  /// The one that controls use which are placed on a form without being told of a registry. Made
  /// when it is first needed; lives as long as the program.
  static Suite& instance();

  /// A host registers components of its own here, before the first control is made.
  [[nodiscard]] platform::ComponentRegistry& registry() { return m_registry; }
  /// Its dialogs stand in front of the active window, unless they are told of another.
  [[nodiscard]] QtShell& shell() { return *m_shell; }

  /// A new component by its programmatic identifier; an Error (429) for one that is not known, (13)
  /// for one that is of another C++ type.
  template <class T = platform::Object>
  [[nodiscard]] platform::Ref<T> create(std::string_view progId) {
    return m_registry.create<T>(progId);
  }
  /// An empty model, to be given to an editor.
  [[nodiscard]] platform::Ref<platform::MetaRepository> newModel();

 private:
  platform::Ref<QtShell> m_shell = platform::make<QtShell>();
  platform::ComponentRegistry m_registry{m_shell};
};

}  // namespace brisel::qt
