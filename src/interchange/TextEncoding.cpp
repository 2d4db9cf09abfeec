#include "interchange/TextEncoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/Error.h"
#include "platform/Text.h"

namespace brisel::interchange {

namespace {

using platform::Error;
using platform::ErrorNumber;

/// What windows-1252 puts at 0x80 to 0x9F; the five bytes without a meaning stay control codes.
constexpr std::array<std::uint16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

[[noreturn]] void fail(const std::string& fileName, std::string_view before,
                       const std::string& cause) {
  const auto line = std::count(before.begin(), before.end(), '\n') + 1;
  throw Error(ErrorNumber::badFile, fileName + ":" + std::to_string(line) + ": " + cause);
}

void append(std::string& text, std::uint32_t code) {
  const auto byte = [&](std::uint32_t value) { text.push_back(static_cast<char>(value)); };
  if (code < 0x80) {
    byte(code);
  } else if (code < 0x800) {
    byte(0xC0 | code >> 6);
    byte(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    byte(0xE0 | code >> 12);
    byte(0x80 | (code >> 6 & 0x3F));
    byte(0x80 | (code & 0x3F));
  } else {
    byte(0xF0 | code >> 18);
    byte(0x80 | (code >> 12 & 0x3F));
    byte(0x80 | (code >> 6 & 0x3F));
    byte(0x80 | (code & 0x3F));
  }
}

std::string fromOneByteText(std::string_view bytes, bool isWindows1252) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 16);
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isMapped = isWindows1252 && byte >= 0x80 && byte < 0xA0;
    append(text, isMapped ? kWindows1252[byte - 0x80U] : byte);
  }
  return text;
}

std::string fromUtf16(std::string_view bytes, bool isBigEndian, const std::string& fileName) {
  std::string text;
  text.reserve(bytes.size() * 3 / 4);
  if (bytes.size() % 2 != 0) fail(fileName, {}, "an odd number of bytes is not UTF-16 text");
  const auto unit = [&](std::size_t at) {
    const std::uint32_t first = static_cast<unsigned char>(bytes[at]);
    const std::uint32_t second = static_cast<unsigned char>(bytes[at + 1]);
    return isBigEndian ? first << 8 | second : second << 8 | first;
  };
  for (std::size_t at = 0; at < bytes.size(); at += 2) {
    std::uint32_t code = unit(at);
    if (code >= 0xD800 && code < 0xE000) {
      const std::uint32_t low = at + 2 < bytes.size() ? unit(at + 2) : 0;
      if (code >= 0xDC00 || low < 0xDC00 || low >= 0xE000) {
        fail(fileName, text, "half a character pair is not UTF-16 text");
      }
      code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
      at += 2;
    }
    append(text, code);
  }
  return text;
}

/// The encoding that the XML declaration names; empty without one.
std::string declaredEncoding(std::string_view text) {
  if (!text.starts_with("<?xml")) return {};
  const std::string_view declaration = text.substr(0, text.find("?>"));
  const std::size_t name = declaration.find("encoding");
  if (name == std::string_view::npos) return {};
  const std::size_t open = declaration.find_first_of("\"'", name);
  if (open == std::string_view::npos) return {};
  const std::size_t close = declaration.find(declaration[open], open + 1);
  if (close == std::string_view::npos) return {};
  return std::string(declaration.substr(open + 1, close - open - 1));
}

std::string checkedUtf8(std::string text, const std::string& fileName) {
  const std::size_t broken = firstBrokenByte(text);
  if (broken < text.size()) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(text[broken]);
    const std::string hex = {'0', 'x', kDigits[byte >> 4U], kDigits[byte & 15U]};
    fail(fileName, std::string_view(text).substr(0, broken), "the byte " + hex + " is not UTF-8");
  }
  return text;
}

/// How many bytes the character that begins here takes; 0 when it is none. Surrogates, overlong
/// forms and what lies above U+10FFFF are none.
std::size_t characterSize(std::string_view text) {
  const auto at = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  const auto follows = [&](std::size_t i, unsigned low = 0x80, unsigned high = 0xBF) {
    return at(i) >= low && at(i) <= high;
  };
  const unsigned first = at(0);
  if (first < 0x80) return first == 0 ? 0 : 1;  // a zero byte is in no text file
  if (first >= 0xC2 && first <= 0xDF) return follows(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const unsigned low = first == 0xE0 ? 0xA0 : 0x80;
    const unsigned high = first == 0xED ? 0x9F : 0xBF;
    return follows(1, low, high) && follows(2) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const unsigned low = first == 0xF0 ? 0x90 : 0x80;
    const unsigned high = first == 0xF4 ? 0x8F : 0xBF;
    return follows(1, low, high) && follows(2) && follows(3) ? 4 : 0;
  }
  return 0;
}

}  // namespace

std::size_t firstBrokenByte(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    const std::size_t size = characterSize(text.substr(at));
    if (size == 0) return at;
    at += size;
  }
  return at;
}

std::string xmlTextAsUtf8(std::string bytes, const std::string& fileName) {
  using namespace std::string_view_literals;
  const std::string_view view = bytes;
  if (view.starts_with("\xEF\xBB\xBF"sv)) return checkedUtf8(bytes.substr(3), fileName);
  if (view.starts_with("\xFF\xFE"sv)) return fromUtf16(view.substr(2), false, fileName);
  if (view.starts_with("\xFE\xFF"sv)) return fromUtf16(view.substr(2), true, fileName);
  if (view.starts_with("<\0"sv)) return fromUtf16(view, false, fileName);
  if (view.starts_with("\0<"sv)) return fromUtf16(view, true, fileName);

  const std::string encoding = declaredEncoding(view);
  const auto is = [&](std::string_view name) {
    return platform::equalsIgnoringCase(encoding, name);
  };
  if (encoding.empty() || is("UTF-8") || is("US-ASCII") || is("ASCII") || is("UTF8")) {
    return checkedUtf8(std::move(bytes), fileName);
  }
  if (is("windows-1252") || is("cp1252")) return fromOneByteText(view, true);
  if (is("ISO-8859-1") || is("latin1")) return fromOneByteText(view, false);
  fail(fileName, {}, "the encoding \"" + encoding + "\" is not known");
}

}  // namespace brisel::interchange
