#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/Object.h"

namespace brisel::platform {

/// A result of several named parts. Like an array it goes by value to a caller by name.
class ValueRecord : public Object {
 public:
  using Field = std::pair<std::string, Value>;

  explicit ValueRecord(std::vector<Field> fields) : m_fields(std::move(fields)) {}

  /// In the order in which they were given.
  [[nodiscard]] const std::vector<Field>& fields() const { return m_fields; }

  /// The value of the field; a CallError when there is none of that name.
  Value get(std::string_view member) override {
    for (const auto& [name, value] : m_fields) {
      if (name == member) return value;
    }
    return Object::get(member);
  }

 private:
  std::vector<Field> m_fields;
};

}  // namespace brisel::platform
