#pragma once

#include <string>
#include <string_view>

namespace brisel::platform {

/// The ASCII lower case of a byte; bytes of other characters are left alone.
[[nodiscard]] constexpr char lowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Equality in which ASCII letters of either case are the same.
[[nodiscard]] constexpr bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (lowerCase(a[i]) != lowerCase(b[i])) return false;
  }
  return true;
}

/// The text without blanks, tabs and breaks of lines at its ends.
[[nodiscard]] constexpr std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// How many columns UTF-8 text takes in a fixed-pitch font: two for wide characters (CJK, emoji),
/// none for combining marks, one for every other. Broken bytes count one column each.
[[nodiscard]] int columnsOf(std::string_view utf8);

/// The path with every backslash turned into the platform's separator.
[[nodiscard]] std::string nativePath(std::string_view path);

}  // namespace brisel::platform
