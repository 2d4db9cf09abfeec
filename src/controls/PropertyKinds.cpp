#include "controls/PropertyKinds.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>

#include "platform/Error.h"
#include "platform/Object.h"
#include "platform/Text.h"

namespace brisel::controls {

using platform::equalsIgnoringCase;
using platform::Value;

namespace {

using Words = std::span<const std::string_view>;

constexpr std::array<std::string_view, 3> kScopes = {"public", "protected", "private"};
constexpr std::array<std::string_view, 4> kMultiplicities = {"1", "0..1", "*", "1..*"};
constexpr std::array<std::string_view, 2> kDirections = {"source to target", "target to source"};

struct KnownKey {
  std::string_view key;
  PropertyKind kind;
  Words words = {};
};

constexpr std::array<KnownKey, 19> kKnownKeys = {{
    {"Description", PropertyKind::lines},
    {"Intention", PropertyKind::lines},
    {"comment", PropertyKind::lines},
    {"IsDerived", PropertyKind::boolean},
    {"IsComposite", PropertyKind::boolean},
    {"IsVirtual", PropertyKind::boolean},
    {"SourceNavigable", PropertyKind::boolean},
    {"TargetNavigable", PropertyKind::boolean},
    {"constructor", PropertyKind::boolean},
    {"final", PropertyKind::boolean},
    {"native", PropertyKind::boolean},
    {"static_", PropertyKind::boolean},
    {"synchronized", PropertyKind::boolean},
    {"transient", PropertyKind::boolean},
    {"volatile", PropertyKind::boolean},
    {"scope", PropertyKind::choice, kScopes},
    {"SourceMultiplicity", PropertyKind::openChoice, kMultiplicities},
    {"TargetMultiplicity", PropertyKind::openChoice, kMultiplicities},
    {"PreferredDirection", PropertyKind::openChoice, kDirections},
}};

struct Alias {
  std::string_view shown;
  std::string_view property;
};

constexpr std::array<Alias, 1> kAliases = {{{"Intention", "Description"}}};

[[noreturn]] void refuse(std::string_view key, std::string_view wanted, const Value& given) {
  const std::string what = given.isObject() ? "an object" : "'" + given.text() + "'";
  throw platform::Error(
      platform::ErrorNumber::typeMismatch,
      "The property " + std::string(key) + " takes " + std::string(wanted) + ", not " + what);
}

Value booleanOf(std::string_view key, const Value& given) {
  if (given.isBoolean()) return given;
  if (given.isString() && equalsIgnoringCase(given.string(), "True")) return true;
  if (given.isString() && equalsIgnoringCase(given.string(), "False")) return false;
  refuse(key, "True or False", given);
}

template <class Number>
bool readWhole(std::string_view text, Number& number) {
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  return error == std::errc() && stop == end;
}

Value numberOf(std::string_view key, const Value& given) {
  if (given.isInteger() || (given.isDouble() && std::isfinite(given.number()))) return given;
  if (given.isString()) {
    std::int64_t whole = 0;
    if (readWhole(given.string(), whole)) return whole;
    double fraction = 0;
    if (readWhole(given.string(), fraction) && std::isfinite(fraction)) return fraction;
  }
  refuse(key, "a number", given);
}

Value textOf(std::string_view key, const Value& given) {
  if (given.isBoolean() || given.isObject()) refuse(key, "a text", given);
  return given.text();
}

Value wordOf(std::string_view key, Words words, const Value& given) {
  if (given.isEmpty() || given == Value("")) return "";
  std::string wanted;
  for (const std::string_view word : words) {
    if (given.isString() && equalsIgnoringCase(given.string(), word)) return word;
    wanted.append(wanted.empty() ? "" : ", ").append(word);
  }
  refuse(key, "one of " + wanted, given);
}

}  // namespace

PropertyFormat formatOf(std::string_view key, const Value& value) {
  for (const KnownKey& known : kKnownKeys) {
    if (equalsIgnoringCase(known.key, key)) return {known.kind, known.words};
  }
  if (value.isBoolean()) return {PropertyKind::boolean, {}};
  if (value.isInteger() || value.isDouble()) return {PropertyKind::number, {}};
  return {};
}

std::string_view propertyBehind(std::string_view key) {
  for (const Alias& alias : kAliases) {
    if (equalsIgnoringCase(alias.shown, key)) return alias.property;
  }
  return key;
}

Value shownValue(const PropertyFormat& format, const Value& stored) {
  if (format.kind == PropertyKind::boolean) return stored.isTrue();
  if (format.kind == PropertyKind::number) return stored;
  return stored.text();
}

Value storedValue(std::string_view key, const PropertyFormat& format, const Value& given) {
  switch (format.kind) {
    case PropertyKind::boolean:
      return booleanOf(key, given);
    case PropertyKind::number:
      return numberOf(key, given);
    case PropertyKind::choice:
      return wordOf(key, format.words, given);
    case PropertyKind::text:
    case PropertyKind::lines:
    case PropertyKind::openChoice:
      break;
  }
  return textOf(key, given);
}

}  // namespace brisel::controls
