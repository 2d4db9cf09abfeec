#include "platform/Value.h"

#include <array>
#include <charconv>
#include <cmath>

#include "platform/Error.h"
#include "platform/Object.h"
#include "platform/Text.h"

namespace brisel::platform {

namespace {

constexpr double kLargestExact = 9007199254740992.0;  // 2^53

[[noreturn]] void mismatch(const Value& value, std::string_view wanted) {
  throw Error(ErrorNumber::typeMismatch, "Type mismatch: " + std::string(wanted) + " expected, " +
                                             std::string(value.kindName()) + " given");
}

std::string decimal(double value) {
  std::array<char, 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  return {buffer.data(), end};
}

}  // namespace

bool Value::boolean() const {
  if (const bool* held = std::get_if<bool>(&m_data)) return *held;
  mismatch(*this, "Boolean");
}

std::int64_t Value::integer() const {
  if (const auto* held = std::get_if<std::int64_t>(&m_data)) return *held;
  if (const double* held = std::get_if<double>(&m_data)) {
    if (std::trunc(*held) == *held && std::abs(*held) <= kLargestExact) {
      return static_cast<std::int64_t>(*held);
    }
  }
  mismatch(*this, "integer");
}

double Value::number() const {
  if (const auto* held = std::get_if<std::int64_t>(&m_data)) return static_cast<double>(*held);
  if (const double* held = std::get_if<double>(&m_data)) return *held;
  mismatch(*this, "number");
}

const std::string& Value::string() const {
  if (const auto* held = std::get_if<std::string>(&m_data)) return *held;
  mismatch(*this, "string");
}

Ref<Object> Value::object() const {
  if (isEmpty()) return {};
  if (const auto* held = std::get_if<Ref<Object>>(&m_data)) return *held;
  mismatch(*this, "object");
}

std::string Value::text() const {
  if (const auto* held = std::get_if<std::string>(&m_data)) return *held;
  if (const bool* held = std::get_if<bool>(&m_data)) return *held ? "True" : "False";
  if (const auto* held = std::get_if<std::int64_t>(&m_data)) return std::to_string(*held);
  if (const double* held = std::get_if<double>(&m_data)) return decimal(*held);
  return {};
}

bool Value::isTrue() const {
  if (const bool* held = std::get_if<bool>(&m_data)) return *held;
  if (const auto* held = std::get_if<std::int64_t>(&m_data)) return *held != 0;
  if (const double* held = std::get_if<double>(&m_data)) return *held != 0;
  if (const auto* held = std::get_if<std::string>(&m_data)) {
    return equalsIgnoringCase(*held, "true") || equalsIgnoringCase(*held, "%true%");
  }
  return false;
}

std::string_view Value::kindName() const {
  static constexpr std::array<std::string_view, 6> kNames = {"empty",  "Boolean", "integer",
                                                             "double", "string",  "object"};
  return kNames[m_data.index()];
}

}  // namespace brisel::platform
