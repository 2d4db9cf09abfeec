#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>

namespace brisel::platform {

namespace {

struct Range {
  char32_t first;
  char32_t last;
};

// East Asian wide and fullwidth blocks, and the emoji planes (Unicode Standard Annex 11).
constexpr std::array kWide = {
    Range{0x1100, 0x115F},   Range{0x2E80, 0x303E},   Range{0x3041, 0x33FF},
    Range{0x3400, 0x4DBF},   Range{0x4E00, 0x9FFF},   Range{0xA000, 0xA4CF},
    Range{0xAC00, 0xD7A3},   Range{0xF900, 0xFAFF},   Range{0xFE30, 0xFE6F},
    Range{0xFF00, 0xFF60},   Range{0xFFE0, 0xFFE6},   Range{0x1F300, 0x1F64F},
    Range{0x1F900, 0x1F9FF}, Range{0x20000, 0x3FFFD},
};
constexpr std::array kCombining = {Range{0x0300, 0x036F}, Range{0x200B, 0x200F},
                                   Range{0x20D0, 0x20FF}, Range{0xFE00, 0xFE0F}};

template <std::size_t N>
bool lies(const std::array<Range, N>& ranges, char32_t c) {
  return std::any_of(ranges.begin(), ranges.end(),
                     [c](Range r) { return c >= r.first && c <= r.last; });
}

/// Reads one character and moves `at` behind it; a broken sequence is one byte.
char32_t decode(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
  const std::uint8_t lead = byte(at);
  const std::size_t length = lead < 0x80           ? 1
                             : (lead >> 5) == 0x6  ? 2
                             : (lead >> 4) == 0xE  ? 3
                             : (lead >> 3) == 0x1E ? 4
                                                   : 1;
  if (length == 1 || at + length > text.size()) {
    ++at;
    return lead;
  }
  char32_t c = lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) c = (c << 6) | (byte(at + i) & 0x3FU);
  at += length;
  return c;
}

}  // namespace

int columnsOf(std::string_view utf8) {
  int columns = 0;
  for (std::size_t at = 0; at < utf8.size();) {
    if (static_cast<std::uint8_t>(utf8[at]) < 0x80) {
      ++columns;
      ++at;
      continue;
    }
    const char32_t c = decode(utf8, at);
    if (lies(kCombining, c)) continue;
    columns += lies(kWide, c) ? 2 : 1;
  }
  return columns;
}

std::string nativePath(std::string_view path) {
  std::string native(path);
  std::replace(native.begin(), native.end(), '\\',
               static_cast<char>(std::filesystem::path::preferred_separator));
  return native;
}

}  // namespace brisel::platform
