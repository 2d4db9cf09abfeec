#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Words that a model's names become in source text of other languages.
namespace brisel::tools {

enum class Language { cpp, java, sql };

/// Letters of ASCII, digits and single "_" inside, made of any UTF-8 text: letters of Latin
/// alphabets lose their marks, other letters become "u" and their code, everything else "_". It
/// starts with no digit; it is empty when the text has nothing to keep, and never longer than 100.
[[nodiscard]] std::string asciiWord(std::string_view utf8);

/// Whether the language, or a macro of its standard headers, has the word for itself.
[[nodiscard]] bool isReserved(Language language, std::string_view word);

/// One line of text for a comment: line breaks and control characters are blanks, invisible
/// characters that turn the direction of text are gone.
[[nodiscard]] std::string plainLine(std::string_view utf8);

/// The lines of a text, safe inside a comment of any of the languages: none ends a comment, goes on
/// in the next line or is read as an escape. Blank lines at both ends are left away.
[[nodiscard]] std::vector<std::string> commentLines(std::string_view utf8);

/// Gives each thing of one scope a word of its own: a reserved one gets "_" at its end, one that is
/// taken "_2", "_3" and so on. The same things in the same order get the same words.
class NameScope {
 public:
  enum class Case { matters, ignored };

  explicit NameScope(Language language, Case letters = Case::matters)
      : m_language(language), m_letters(letters) {}

  /// Words that are refused besides; must outlive the scope.
  void refuse(const std::unordered_set<std::string>* words) { m_refused = words; }
  /// Takes the word without giving it to anything.
  void take(std::string_view word) { m_taken.insert(key(word)); }
  /// The fallback, a word itself, stands for a text that leaves none.
  [[nodiscard]] std::string unique(std::string_view text, std::string_view fallback);
  /// The word that `unique` starts from: neither reserved nor refused, but it may be taken.
  [[nodiscard]] std::string free(std::string_view text, std::string_view fallback) const;

 private:
  [[nodiscard]] std::string key(std::string_view word) const;

  Language m_language;
  Case m_letters;
  const std::unordered_set<std::string>* m_refused = nullptr;
  std::unordered_set<std::string> m_taken;
  std::unordered_map<std::string, int> m_next;
};

}  // namespace brisel::tools
