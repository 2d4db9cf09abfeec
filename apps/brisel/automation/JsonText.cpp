#include "automation/JsonText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace brisel::automation {

namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

/// How many bytes the character at the start takes; 0 when it is no valid UTF-8: cut short, longer
/// than it need be, a surrogate, or beyond the last code point.
std::size_t characterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t lead = byte(0);
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const std::size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  const std::uint8_t second = byte(1);
  const bool tooLong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
  const bool beyond = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
  return tooLong || beyond ? 0 : length;
}

void appendEscaped(std::string& out, char c) {
  static constexpr std::string_view kDigits = "0123456789abcdef";
  switch (c) {
    case '"':
      out += "\\\"";
      return;
    case '\\':
      out += "\\\\";
      return;
    case '\n':
      out += "\\n";
      return;
    case '\r':
      out += "\\r";
      return;
    case '\t':
      out += "\\t";
      return;
    default:
      break;
  }
  out += "\\u00";
  out += kDigits[static_cast<std::uint8_t>(c) >> 4];
  out += kDigits[static_cast<std::uint8_t>(c) & 0xF];
}

bool isPlain(char c) { return static_cast<std::uint8_t>(c) >= 0x20 && c != '"' && c != '\\'; }

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
  out += '"';
  for (std::size_t at = 0; at < text.size();) {
    if (!isPlain(text[at])) {
      appendEscaped(out, text[at++]);
    } else if (const std::size_t length = characterLength(text.substr(at))) {
      out += text.substr(at, length);
      at += length;
    } else {
      out += kReplacement;
      ++at;
    }
  }
  out += '"';
}

void appendJsonNumber(std::string& out, double number) {
  if (!std::isfinite(number)) {
    out += "null";
    return;
  }
  std::array<char, 32> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
  const std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  out += text;
  if (text.find_first_of(".e") == std::string_view::npos) out += ".0";
}

}  // namespace brisel::automation
