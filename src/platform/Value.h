#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/Ref.h"

namespace brisel::platform {

/// What properties hold and members take and give: empty, Boolean, integer, double, string or an
/// object reference. Two values are equal when they are of one kind and hold the same.
class Value {
 public:
  Value() = default;
  Value(bool value) : m_data(value) {}
  Value(int value) : m_data(static_cast<std::int64_t>(value)) {}
  Value(std::int64_t value) : m_data(value) {}
  Value(double value) : m_data(value) {}
  Value(const char* value) : m_data(std::string(value)) {}
  Value(std::string_view value) : m_data(std::string(value)) {}
  Value(std::string value) : m_data(std::move(value)) {}
  /// An unset reference makes an empty value.
  template <class T>
  Value(const Ref<T>& object) {
    if (object) m_data = Ref<Object>(object.get());
  }

  [[nodiscard]] bool isEmpty() const { return std::holds_alternative<std::monostate>(m_data); }
  [[nodiscard]] bool isBoolean() const { return std::holds_alternative<bool>(m_data); }
  [[nodiscard]] bool isInteger() const { return std::holds_alternative<std::int64_t>(m_data); }
  [[nodiscard]] bool isDouble() const { return std::holds_alternative<double>(m_data); }
  [[nodiscard]] bool isString() const { return std::holds_alternative<std::string>(m_data); }
  [[nodiscard]] bool isObject() const { return std::holds_alternative<Ref<Object>>(m_data); }

  /// The Boolean held; an Error of a type mismatch when another kind is held.
  [[nodiscard]] bool boolean() const;
  /// The integer held, or a double that is a whole number; else an Error.
  [[nodiscard]] std::int64_t integer() const;
  /// The number held, integer or double; else an Error.
  [[nodiscard]] double number() const;
  /// The string held, lives as long as the value; else an Error.
  [[nodiscard]] const std::string& string() const;
  /// The object held, or nothing when empty; else an Error.
  [[nodiscard]] Ref<Object> object() const;

  /// What a reader sees: strings as they are, empty as "", numbers in decimal, True and False.
  [[nodiscard]] std::string text() const;
  /// True for the Boolean true, a number other than zero, and the words "True" and "%TRUE%" in
  /// any case; everything else is false. Never fails.
  [[nodiscard]] bool isTrue() const;
  /// "empty", "Boolean", "integer", "double", "string" or "object".
  [[nodiscard]] std::string_view kindName() const;

  friend bool operator==(const Value&, const Value&) = default;

 private:
  std::variant<std::monostate, bool, std::int64_t, double, std::string, Ref<Object>> m_data;
};

}  // namespace brisel::platform
