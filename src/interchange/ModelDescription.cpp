#include "interchange/ModelDescription.h"

#include <algorithm>
#include <array>

namespace brisel::interchange {

namespace {

std::string told(const std::string& place, std::string_view cause) {
  return place.empty() ? std::string(cause) : (place + ": ").append(cause);
}

bool isUnlimited(std::string_view bound) { return bound == "*" || bound == "-1" || bound == "-2"; }

/// Identifiers that a tool made up: long, and with the marks of a counter or of random bytes.
bool tellsNothing(std::string_view identifier) {
  constexpr std::size_t kLongestReadable = 20;
  if (identifier.size() <= kLongestReadable) return false;
  return identifier.front() == '_' || std::any_of(identifier.begin(), identifier.end(),
                                                  [](char c) { return c >= '0' && c <= '9'; });
}

std::string_view behindLast(std::string_view text, char separator) {
  const std::size_t at = text.rfind(separator);
  return at == std::string_view::npos ? text : text.substr(at + 1);
}

/// Identifiers that hold the text of a type behind a mark of the tool.
std::string_view withoutToolMark(std::string_view identifier) {
  constexpr std::array<std::string_view, 3> kMarks = {"EAnone_", "EAJava_", "EAID_"};
  for (const std::string_view mark : kMarks) {
    if (identifier.size() > mark.size() && identifier.starts_with(mark)) {
      return identifier.substr(mark.size());
    }
  }
  return identifier;
}

}  // namespace

std::size_t ModelDescription::stub(const std::string& id, const std::string& name) {
  const auto [entry, isNew] = m_stubs.try_emplace(id, classifiers.size());
  if (isNew) {
    DescribedClassifier classifier;
    classifier.id = id;
    classifier.name = name;
    classifier.kind = ClassifierKind::stub;
    classifiers.push_back(std::move(classifier));
  }
  return entry->second;
}

void ModelDescription::skip(std::string kind, std::string id, const std::string& place,
                            std::string_view cause) {
  report.skipped.push_back({std::move(kind), std::move(id), told(place, cause)});
}

void ModelDescription::skip(const StereotypeUse& use, std::string_view element) {
  skip("stereotype", use.id, use.place, ("\"" + use.name + "\" is applied to ").append(element));
}

void ModelDescription::note(std::string kind, std::string id, const std::string& place,
                            std::string_view text) {
  report.notes.push_back({std::move(kind), std::move(id), told(place, text)});
}

std::string multiplicityText(std::string_view lower, std::string_view upper) {
  if (isUnlimited(lower)) lower = "0";
  if (isUnlimited(upper)) return lower == "0" ? "*" : std::string(lower).append("..*");
  if (lower == upper) return std::string(upper);
  return std::string(lower).append("..").append(upper);
}

std::string withArticle(std::string_view word) {
  constexpr std::string_view kVowels = "aeioAEIO";
  const bool isVowel = !word.empty() && kVowels.find(word.front()) != std::string_view::npos;
  return std::string(isVowel ? "an " : "a ").append(word);
}

std::string nameOfReference(std::string_view reference) {
  const std::size_t hash = reference.find('#');
  if (hash == std::string_view::npos) return std::string(withoutToolMark(reference));
  const std::string_view fragment = reference.substr(hash + 1);
  const std::string_view name = behindLast(fragment, '/');
  if (name.empty() || tellsNothing(name)) {
    return std::string(behindLast(reference.substr(0, hash), '/')).append("#").append(fragment);
  }
  return std::string(name);
}

}  // namespace brisel::interchange
