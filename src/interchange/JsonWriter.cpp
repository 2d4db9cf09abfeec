#include "interchange/JsonWriter.h"

#include <array>
#include <charconv>

namespace brisel::interchange {

namespace {

/// Bytes that do not simply stand for themselves. 0xC2 and 0xE2 begin the characters that some
/// readers take for line breaks (U+0085, U+2028, U+2029); most that they begin are ordinary.
constexpr std::array<bool, 256> kSpecial = [] {
  std::array<bool, 256> special{};
  for (std::size_t c = 0; c < 0x20; ++c) special[c] = true;
  special['"'] = special['\\'] = special[0xC2] = special[0xE2] = true;
  return special;
}();

/// How many bytes at the front of the text make a character that is written as an escape.
std::size_t escapedLength(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return 1;
  if (text.starts_with("\xC2\x85")) return 2;
  if (text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9")) return 3;
  return 0;
}

void appendEscape(std::string& out, std::string_view character) {
  if (character.size() == 2) {
    out += "\\u0085";
    return;
  }
  if (character.size() == 3) {
    out += character.back() == '\xA8' ? "\\u2028" : "\\u2029";
    return;
  }
  constexpr std::string_view kShort = "\"\\\b\f\n\r\t";
  constexpr std::string_view kLetter = "\"\\bfnrt";
  out += '\\';
  if (const auto at = kShort.find(character[0]); at != std::string_view::npos) {
    out += kLetter[at];
    return;
  }
  constexpr std::string_view kDigits = "0123456789abcdef";
  const auto code = static_cast<unsigned char>(character[0]);
  out += "u00";
  out += kDigits[code >> 4U];
  out += kDigits[code & 0xFU];
}

}  // namespace

void JsonWriter::key(std::string_view key) {
  separate();
  quote(key);
  m_text += ':';
  m_comma = false;
}

void JsonWriter::plainKey(std::string_view key) {
  m_text += m_comma ? ",\"" : "\"";
  m_text += key;
  m_text += "\":";
  m_comma = false;
}

void JsonWriter::value(std::string_view text) {
  separate();
  quote(text);
}

void JsonWriter::value(bool value) {
  separate();
  m_text += value ? "true" : "false";
}

void JsonWriter::value(std::int64_t value) {
  separate();
  std::array<char, 24> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  m_text.append(buffer.data(), end);
}

void JsonWriter::value(double value) {
  separate();
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  m_text += digits;
  if (digits.find_first_of(".e") == std::string_view::npos) m_text += ".0";
}

void JsonWriter::quote(std::string_view text) {
  m_text += '"';
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size();) {
    if (!kSpecial[static_cast<unsigned char>(text[i])]) {
      ++i;
      continue;
    }
    const std::size_t length = escapedLength(text.substr(i));
    if (length == 0) {
      ++i;
      continue;
    }
    m_text += text.substr(from, i - from);
    appendEscape(m_text, text.substr(i, length));
    i += length;
    from = i;
  }
  m_text += text.substr(from);
  m_text += '"';
}

}  // namespace brisel::interchange
