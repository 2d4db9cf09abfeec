#pragma once

#include <stdexcept>

namespace brisel::app {

/// The command line asks for what there is not: exit code 2.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace brisel::app
