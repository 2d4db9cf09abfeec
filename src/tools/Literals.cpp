#include "tools/Literals.h"

#include <algorithm>
#include <charconv>

#include "platform/Text.h"

namespace brisel::tools {

namespace {

constexpr std::size_t kSafeDigits = 9;  // fit into 32 bits, and so does the number behind

bool allDigits(std::string_view text) {
  return !text.empty() &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// An integer without leading zeros, which other languages would take for octal; else empty.
std::string integerIn(std::string_view text, std::size_t digits, bool isSigned) {
  const bool negative = text.starts_with('-');
  if (negative && !isSigned) return {};
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  if (!allDigits(text)) return {};
  while (text.size() > 1 && text[0] == '0') text.remove_prefix(1);
  if (text.size() > digits) return {};
  return (negative ? "-" : "") + std::string(text);
}

/// A number with a point, so that every language takes it for one.
std::string realIn(std::string_view text) {
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return {};
  if (number > 1e30 || number < -1e30 || number != number) return {};
  const bool plain = text.find_first_not_of("-0123456789.") == std::string_view::npos;
  std::string digits = plain ? std::string(text) : std::to_string(number);
  if (digits.find('.') == std::string::npos) digits.append(".0");
  if (digits.starts_with('.')) digits.insert(0, "0");
  if (digits.starts_with("-.")) digits.insert(1, "0");
  if (digits.ends_with('.')) digits.push_back('0');
  return digits;
}

/// What stands between quotes, or the text itself without any.
std::string_view unquoted(std::string_view text) {
  if (text.size() >= 2 && (text[0] == '"' || text[0] == '\'') && text.back() == text[0]) {
    return text.substr(1, text.size() - 2);
  }
  return text;
}

std::string quoted(std::string_view text) {
  std::string literal = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') literal.push_back('\\');
    literal.push_back(c);
    if (c == '?') literal.append("\" \"");  // no trigraph comes out
  }
  return literal + "\"";
}

std::string javaQuoted(std::string_view text) {
  std::string literal = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') literal.push_back('\\');
    literal.push_back(c);
  }
  return literal + "\"";
}

void setAll(CodeTyped& typed, const std::string& literal) {
  typed.cppValue = typed.javaValue = typed.sqlValue = literal;
}

void makeTextLiteral(CodeTyped& typed, std::string_view value) {
  const std::string text = plainLine(unquoted(value));
  typed.cppValue = quoted(text);
  typed.javaValue = javaQuoted(text);
  typed.sqlValue = sqlText(text);
}

void makeIntegerLiteral(CodeTyped& typed, std::string_view value) {
  constexpr std::size_t kByteDigits = 2;
  constexpr std::size_t kShortDigits = 4;
  const TypeKind kind = typed.type->kind;
  const bool isSigned =
      kind != TypeKind::unsigned32 && kind != TypeKind::unsigned64 && kind != TypeKind::byte;
  const std::size_t digits = kind == TypeKind::byte    ? kByteDigits
                             : kind == TypeKind::int16 ? kShortDigits
                                                       : kSafeDigits;
  setAll(typed, integerIn(value, digits, isSigned));
  const bool isLong = typed.type->java == "long";
  if (!typed.javaValue.empty() && isLong) typed.javaValue.push_back('L');
}

void makeBooleanLiteral(CodeTyped& typed, std::string_view value) {
  const bool isTrue = platform::equalsIgnoringCase(value, "true") || value == "%TRUE%";
  const bool isFalse = platform::equalsIgnoringCase(value, "false") || value == "%FALSE%";
  if (!isTrue && !isFalse) return;
  setAll(typed, isTrue ? "true" : "false");
  typed.sqlValue = isTrue ? "TRUE" : "FALSE";
}

}  // namespace

Multiplicity parseMultiplicity(std::string_view text) {
  text = platform::trimmed(text);
  const auto dots = text.find("..");
  const std::string_view lower = platform::trimmed(text.substr(0, dots));
  const std::string_view upper =
      dots == std::string_view::npos ? lower : platform::trimmed(text.substr(dots + 2));
  const bool isMany = upper == "*" || platform::equalsIgnoringCase(upper, "n") ||
                      platform::equalsIgnoringCase(upper, "m") ||
                      (allDigits(upper) && upper != "0" && upper != "1");
  const bool isZero = allDigits(lower) && lower.find_first_not_of('0') == std::string_view::npos;
  return {isMany, !isMany && isZero};
}

std::string sqlText(std::string_view text) {
  std::string literal = "'";
  for (const char c : text) {
    literal.push_back(c);
    if (c == '\'') literal.push_back(c);
  }
  return literal + "'";
}

std::string smallInteger(std::string_view text) {
  return integerIn(platform::trimmed(text), kSafeDigits, true);
}

void makeLiterals(CodeTyped& typed) {
  const std::string_view value = platform::trimmed(typed.value);
  if (value.empty() || typed.isMany) return;
  switch (typed.type->kind) {
    case TypeKind::text:
      return makeTextLiteral(typed, value);
    case TypeKind::boolean:
      return makeBooleanLiteral(typed, value);
    case TypeKind::byte:
    case TypeKind::int16:
    case TypeKind::int32:
    case TypeKind::int64:
    case TypeKind::unsigned32:
    case TypeKind::unsigned64:
      return makeIntegerLiteral(typed, value);
    case TypeKind::float32:
    case TypeKind::float64:
      setAll(typed, realIn(value));
      if (typed.cppValue.empty() || typed.type->kind == TypeKind::float64) return;
      typed.cppValue.push_back('F');
      typed.javaValue.push_back('F');
      return;
    default:
      return;
  }
}

}  // namespace brisel::tools
