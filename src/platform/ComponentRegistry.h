#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Object.h"

namespace brisel::platform {

class Shell;

/// Makes components by programmatic identifier and holds what all of them share: the shell and the
/// folder of the files that lie beside the library. Owned by the program or the host; outlives
/// every component that it made. A host registers a component of its own under a suite's
/// identifier to have it used in the suite's place.
class ComponentRegistry {
 public:
  using Factory = std::function<Ref<Object>(ComponentRegistry&)>;

  explicit ComponentRegistry(Ref<Shell> shell);
  ~ComponentRegistry();
  ComponentRegistry(const ComponentRegistry&) = delete;
  ComponentRegistry& operator=(const ComponentRegistry&) = delete;

  void add(std::string progId, Factory factory);
  /// A new component; an Error (429) when the identifier is not registered.
  [[nodiscard]] Ref<Object> create(std::string_view progId);
  /// A new component of the wanted C++ type; an Error (13) when it is of another.
  template <class T>
  [[nodiscard]] Ref<T> create(std::string_view progId) {
    Ref<T> component = as<T>(create(progId));
    if (!component) failKind(progId);
    return component;
  }
  [[nodiscard]] bool contains(std::string_view progId) const;

  [[nodiscard]] bool hasShell() const { return static_cast<bool>(m_shell); }
  [[nodiscard]] Shell& shell() const;
  void shell(Ref<Shell> shell);

  /// Where icons and templates lie, without a separator at the end; empty until it is set.
  [[nodiscard]] const std::string& installationFolder() const { return m_installationFolder; }
  void installationFolder(std::string folder) { m_installationFolder = std::move(folder); }

 private:
  [[noreturn]] static void failKind(std::string_view progId);

  std::map<std::string, Factory, std::less<>> m_factories;
  Ref<Shell> m_shell;
  std::string m_installationFolder;
};

}  // namespace brisel::platform
