#include "platform/ErrorTrap.h"

#include "platform/Shell.h"

namespace brisel::platform {

std::string errorReport(int number, std::string_view description, std::string_view module,
                        std::string_view procedure) {
  std::string text = "Error No: " + std::to_string(number) + "  '";
  text.append(description).append("'");
  if (!module.empty()) {
    text.append("(Module '").append(module).append("' Function '").append(procedure).append("()')");
  }
  return text;
}

void reportError(Shell& shell, std::string_view module, std::string_view procedure) {
  int number = static_cast<int>(ErrorNumber::invalidCall);
  std::string description = "Unknown failure";
  try {
    throw;
  } catch (const Error& error) {
    number = error.number();
    description = error.what();
  } catch (const std::exception& error) {
    description = error.what();
  } catch (...) {
  }
  shell.showMessage({"Brisel",
                     errorReport(number, description, module, procedure),
                     {"OK"},
                     MessageIcon::critical});
}

}  // namespace brisel::platform
