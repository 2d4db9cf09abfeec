#include "tools/OutputName.h"

#include <algorithm>

#include "platform/Text.h"

namespace brisel::tools {

namespace {

constexpr std::size_t kLongestPart = 200;

bool isGoodPart(std::string_view part) {
  if (part.empty() || part.size() > kLongestPart || part == "." || part == "..") return false;
  return part.front() != ' ' && part.back() != ' ' && part.back() != '.';
}

}  // namespace

std::string outputNameFault(std::string_view name) {
  constexpr std::string_view kRefused = "\\:*?\"<>|";
  const bool isBad = std::any_of(name.begin(), name.end(), [&](char c) {
    return static_cast<unsigned char>(c) < ' ' || kRefused.find(c) != std::string_view::npos;
  });
  if (name.empty()) return "a file without a name";
  const std::string fault = "\"" + std::string(name) + "\" cannot be the name of a file to write";
  if (isBad) return fault;
  for (std::size_t start = 0; start <= name.size();) {
    const auto end = std::min(name.find('/', start), name.size());
    if (!isGoodPart(name.substr(start, end - start))) return fault;
    start = end + 1;
  }
  return {};
}

std::string foldedOutputName(std::string_view name) {
  std::string folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), platform::lowerCase);
  return folded;
}

}  // namespace brisel::tools
