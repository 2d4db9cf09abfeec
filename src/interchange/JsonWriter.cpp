#include "interchange/JsonWriter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

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

/// Whether the text is of printable ASCII only, without quotes and backslashes: eight bytes at a
/// time, as most texts are such.
bool isPlain(std::string_view text) {
  constexpr std::uint64_t kOnes = 0x0101010101010101U;
  constexpr std::uint64_t kHighs = kOnes << 7U;
  const auto isPlainWord = [](std::uint64_t word) {
    const std::uint64_t quote = word ^ (kOnes * '"');
    const std::uint64_t backslash = word ^ (kOnes * '\\');
    const std::uint64_t special =
        word | (word - kOnes * 0x20) | (quote - kOnes) | (backslash - kOnes);
    return (special & kHighs) == 0;
  };
  const auto load = [](const char* from, std::size_t count, std::uint64_t filler) {
    std::memcpy(&filler, from, count);
    return filler;
  };
  for (; text.size() >= 8; text.remove_prefix(8)) {
    if (!isPlainWord(load(text.data(), 8, 0))) return false;
  }
  return isPlainWord(load(text.data(), text.size(), kOnes * ' '));
}

/// Two bytes "\\n" or six bytes "\\u001f".
std::size_t putEscape(char* out, std::string_view character) {
  constexpr std::string_view kShort = "\"\\\b\f\n\r\t";
  constexpr std::string_view kLetter = "\"\\bfnrt";
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::uint32_t code = static_cast<unsigned char>(character[0]);
  if (character.size() == 2) code = 0x85;
  if (character.size() == 3) code = character.back() == '\xA8' ? 0x2028 : 0x2029;
  *out++ = '\\';
  if (const auto at = kShort.find(character[0]); at != std::string_view::npos) {
    *out = kLetter[at];
    return 2;
  }
  *out++ = 'u';
  for (int shift = 12; shift >= 0; shift -= 4) *out++ = kDigits[(code >> shift) & 0xFU];
  return 6;
}

}  // namespace

void JsonWriter::key(std::string_view key) {
  separate();
  quote(key);
  append(":");
  m_comma = false;
}

void JsonWriter::plainKey(std::string_view key) {
  char* const begin = room(key.size() + 4);
  char* at = begin;
  if (m_comma) *at++ = ',';
  *at++ = '"';
  at = std::copy(key.begin(), key.end(), at);
  *at++ = '"';
  *at++ = ':';
  m_size += static_cast<std::size_t>(at - begin);
  m_comma = false;
}

void JsonWriter::value(std::string_view text) {
  separate();
  quote(text);
}

void JsonWriter::value(bool value) {
  separate();
  append(value ? "true" : "false");
}

void JsonWriter::value(std::int64_t value) {
  constexpr std::size_t kLongest = 24;
  separate();
  char* const begin = room(kLongest);
  m_size += static_cast<std::size_t>(std::to_chars(begin, begin + kLongest, value).ptr - begin);
}

void JsonWriter::value(double value) {
  separate();
  std::array<char, 40> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  append(digits);
  if (digits.find_first_of(".e") == std::string_view::npos) append(".0");
}

void JsonWriter::quote(std::string_view text) {
  if (!isPlain(text)) return quoteSpecial(text);
  char* const at = room(text.size() + 2);
  *at = '"';
  std::copy(text.begin(), text.end(), at + 1);
  at[text.size() + 1] = '"';
  m_size += text.size() + 2;
}

void JsonWriter::quoteSpecial(std::string_view text) {
  constexpr std::size_t kLongestEscape = 6;
  append("\"");
  std::size_t from = 0;
  for (std::size_t i = 0; i < text.size();) {
    const bool isSpecial = kSpecial[static_cast<unsigned char>(text[i])];
    const std::size_t length = isSpecial ? escapedLength(text.substr(i)) : 0;
    if (length == 0) {
      ++i;
      continue;
    }
    append(text.substr(from, i - from));
    m_size += putEscape(room(kLongestEscape), text.substr(i, length));
    i += length;
    from = i;
  }
  append(text.substr(from));
  append("\"");
}

void JsonWriter::append(std::string_view bytes) {
  std::copy(bytes.begin(), bytes.end(), room(bytes.size()));
  m_size += bytes.size();
}

void JsonWriter::grow(std::size_t count) {
  constexpr std::size_t kLeast = 256;
  const std::size_t capacity = std::max({kLeast, m_size + count, m_capacity * 2});
  auto larger = std::make_unique_for_overwrite<char[]>(capacity);
  std::copy_n(m_buffer.get(), m_size, larger.get());
  m_buffer = std::move(larger);
  m_capacity = capacity;
}

}  // namespace brisel::interchange
