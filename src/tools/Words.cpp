#include "tools/Words.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include "platform/Text.h"
#include "tools/ReservedWords.h"

namespace brisel::tools {

namespace {

constexpr std::size_t kLongestWord = 100;
constexpr char32_t kBroken = 0;

/// The letters from U+00C0 to U+017F without their marks; "_" for the two signs among them.
constexpr std::array<std::string_view, 192> kLatin = {
    "A", "A", "A",  "A",  "Ae", "A", "AE", "C", "E", "E", "E", "E", "I",  "I", "I",  "I",
    "D", "N", "O",  "O",  "O",  "O", "Oe", "_", "O", "U", "U", "U", "Ue", "Y", "Th", "ss",
    "a", "a", "a",  "a",  "ae", "a", "ae", "c", "e", "e", "e", "e", "i",  "i", "i",  "i",
    "d", "n", "o",  "o",  "o",  "o", "oe", "_", "o", "u", "u", "u", "ue", "y", "th", "y",
    "A", "a", "A",  "a",  "A",  "a", "C",  "c", "C", "c", "C", "c", "C",  "c", "D",  "d",
    "D", "d", "E",  "e",  "E",  "e", "E",  "e", "E", "e", "E", "e", "G",  "g", "G",  "g",
    "G", "g", "G",  "g",  "H",  "h", "H",  "h", "I", "i", "I", "i", "I",  "i", "I",  "i",
    "I", "i", "IJ", "ij", "J",  "j", "K",  "k", "k", "L", "l", "L", "l",  "L", "l",  "L",
    "l", "L", "l",  "N",  "n",  "N", "n",  "N", "n", "n", "N", "n", "O",  "o", "O",  "o",
    "O", "o", "OE", "oe", "R",  "r", "R",  "r", "R", "r", "S", "s", "S",  "s", "S",  "s",
    "S", "s", "T",  "t",  "T",  "t", "T",  "t", "U", "u", "U", "u", "U",  "u", "U",  "u",
    "U", "u", "U",  "u",  "W",  "w", "Y",  "y", "Y", "Z", "z", "Z", "z",  "Z", "z",  "s",
};

/// Takes one character off the front of the text; kBroken for a byte that starts none.
char32_t takeCharacter(std::string_view& text) {
  const auto byte = [&text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const unsigned char lead = byte(0);
  std::size_t length = 1;
  char32_t code = lead;
  if (lead >= 0xF0U && lead < 0xF8U) {
    length = 4;
    code = lead & 0x07U;
  } else if (lead >= 0xE0U && lead < 0xF0U) {
    length = 3;
    code = lead & 0x0FU;
  } else if (lead >= 0xC2U && lead < 0xE0U) {
    length = 2;
    code = lead & 0x1FU;
  } else if (lead >= 0x80U) {
    code = kBroken;
  }
  for (std::size_t i = 1; i < length; ++i) {
    if (i >= text.size() || (byte(i) & 0xC0U) != 0x80U) {
      text.remove_prefix(1);
      return kBroken;
    }
    code = (code << 6U) | (byte(i) & 0x3FU);
  }
  text.remove_prefix(length);
  return code;
}

bool isAsciiLetterOrDigit(char32_t code) {
  return (code >= 'a' && code <= 'z') || (code >= 'A' && code <= 'Z') ||
         (code >= '0' && code <= '9');
}

/// Blocks of marks, signs and pictures, which no word is made of.
bool isSign(char32_t code) {
  constexpr std::array<std::pair<char32_t, char32_t>, 5> kSigns = {
      {{0x80, 0xBF}, {0x2000, 0x2BFF}, {0x3000, 0x3004}, {0xFE00, 0xFE0F}, {0x1F000, 0x1FAFF}}};
  return std::any_of(kSigns.begin(), kSigns.end(), [code](const auto& range) {
    return code >= range.first && code <= range.second;
  });
}

void appendCode(std::string& word, char32_t code) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  word.push_back('u');
  for (int shift = code > 0xFFFF ? 20 : 12; shift >= 0; shift -= 4) {
    word.push_back(kDigits[(code >> static_cast<unsigned>(shift)) & 0xFU]);
  }
}

bool turnsDirection(char32_t code) {
  return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069) ||
         code == 0x200E || code == 0x200F || code == 0x061C;
}

void replaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

}  // namespace

std::string asciiWord(std::string_view utf8) {
  std::string word;
  const auto separate = [&word] {
    if (!word.empty() && word.back() != '_') word.push_back('_');
  };
  while (!utf8.empty() && word.size() < kLongestWord) {
    const char32_t code = takeCharacter(utf8);
    if (isAsciiLetterOrDigit(code)) {
      word.push_back(static_cast<char>(code));
    } else if (code >= 0xC0 && code < 0xC0 + kLatin.size() && kLatin[code - 0xC0] != "_") {
      word.append(kLatin[code - 0xC0]);
    } else if (code >= 0x80 && !isSign(code)) {
      appendCode(word, code);
    } else {
      separate();
    }
  }
  word.resize(std::min(word.size(), kLongestWord));
  if (!word.empty() && word.back() == '_') word.pop_back();
  if (!word.empty() && word[0] >= '0' && word[0] <= '9') word.insert(0, "_");
  return word;
}

bool isReserved(Language language, std::string_view word) {
  switch (language) {
    case Language::cpp:
      return isCppWord(word);
    case Language::java:
      return isJavaWord(word);
    case Language::sql:
      return isSqlWord(word);
  }
  return false;
}

std::string plainLine(std::string_view utf8) {
  std::string line;
  while (!utf8.empty()) {
    const std::string_view rest = utf8;
    const char32_t code = takeCharacter(utf8);
    if (code < ' ' || code == 0x7F || code == 0x85 || code == 0x2028 || code == 0x2029) {
      line.push_back(' ');
    } else if (!turnsDirection(code)) {
      line.append(rest.substr(0, rest.size() - utf8.size()));
    }
  }
  return line;
}

std::vector<std::string> commentLines(std::string_view utf8) {
  std::vector<std::string> lines;
  while (!utf8.empty()) {
    const auto end = utf8.find_first_of("\r\n");
    std::string line = plainLine(utf8.substr(0, end));
    const bool isPair = end != std::string_view::npos && utf8.substr(end, 2) == "\r\n";
    utf8.remove_prefix(end == std::string_view::npos ? utf8.size() : end + (isPair ? 2 : 1));
    replaceAll(line, "*/", "* /");
    replaceAll(line, "/*", "/ *");
    replaceAll(line, "\\u", "\\ u");
    while (!line.empty() && line.back() == ' ') line.pop_back();
    if (line.ends_with('\\') || line.ends_with("\?\?/")) line.push_back('.');
    if (!line.empty() || !lines.empty()) lines.push_back(std::move(line));
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

std::string NameScope::key(std::string_view word) const {
  std::string key(word);
  if (m_letters == Case::ignored) {
    std::transform(key.begin(), key.end(), key.begin(), platform::lowerCase);
  }
  return key;
}

std::string NameScope::free(std::string_view text, std::string_view fallback) const {
  std::string word = asciiWord(text);
  if (word.empty()) word = fallback;
  const auto isRefused = [this](const std::string& tried) {
    return m_refused && m_refused->contains(tried);
  };
  if (!isReserved(m_language, word) && !isRefused(word)) return word;
  std::string other = word + "_";
  for (int number = 2; isRefused(other); ++number) other = word + "_" + std::to_string(number);
  return other;
}

std::string NameScope::unique(std::string_view text, std::string_view fallback) {
  const std::string word = free(text, fallback);
  if (m_taken.insert(key(word)).second) return word;
  int& next = m_next.try_emplace(key(word), 2).first->second;
  for (;; ++next) {
    std::string numbered = word + (word.back() == '_' ? "" : "_") + std::to_string(next);
    if (m_refused && m_refused->contains(numbered)) continue;
    if (m_taken.insert(key(numbered)).second) return numbered;
  }
}

}  // namespace brisel::tools
