#pragma once

#include <stdexcept>
#include <string>

namespace brisel::platform {

/// Numbers that an Error carries; hosts and automation clients tell failures apart by them.
enum class ErrorNumber : int {
  invalidCall = 5,
  overflow = 6,
  typeMismatch = 13,
  fileNotFound = 53,
  fileAccess = 75,
  subscript = 9,
  objectMissing = 91,
  duplicateKey = 457,
  componentUnknown = 429,
  memberUnknown = 438,
  argumentCount = 450,
  notFound = 1000,
  badFile = 1001,
  cancelled = 1002,
};

/// What goes wrong below a public member: a number and one clear sentence in what().
class Error : public std::runtime_error {
 public:
  Error(ErrorNumber number, const std::string& description)
      : std::runtime_error(description), m_number(static_cast<int>(number)) {}

  [[nodiscard]] int number() const { return m_number; }

 private:
  int m_number;
};

/// The call itself was wrong: no such member, or arguments of the wrong number or kind.
class CallError : public Error {
 public:
  using Error::Error;
};

}  // namespace brisel::platform
