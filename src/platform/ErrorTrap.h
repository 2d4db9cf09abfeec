#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/Error.h"

namespace brisel::platform {

class Shell;

/// "Error No: 5  'Invalid call'(Module 'CLSEditor' Function 'Populate()')"; without a module the
/// last part is left away.
[[nodiscard]] std::string errorReport(int number, std::string_view description,
                                      std::string_view module, std::string_view procedure);

/// Shows the exception that is being handled in a message box titled "Brisel".
void reportError(Shell& shell, std::string_view module, std::string_view procedure);

/// The trap of a public member: runs the body; what it throws is reported and an empty result
/// given in its place, so that nothing escapes to the host.
template <class Body>
auto trapped(Shell& shell, std::string_view module, std::string_view procedure, Body&& body)
    -> std::invoke_result_t<Body> {
  try {
    return body();
  } catch (...) {
    reportError(shell, module, procedure);
  }
  if constexpr (!std::is_void_v<std::invoke_result_t<Body>>) return {};
}

}  // namespace brisel::platform
