#pragma once

#include <utility>
#include <vector>

#include "platform/Object.h"

namespace brisel::platform {

/// An array among the arguments or results of a member. Unlike a collection it is no object of its
/// own to a caller by name: it goes by value.
class ValueArray : public Object {
 public:
  explicit ValueArray(std::vector<Value> values) : m_values(std::move(values)) {}

  [[nodiscard]] const std::vector<Value>& values() const { return m_values; }

 private:
  std::vector<Value> m_values;
};

}  // namespace brisel::platform
