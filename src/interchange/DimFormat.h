#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Text.h"

/// The words of a DIM file (docs/dim-format.md).
namespace brisel::interchange::dim {

inline constexpr std::string_view kFormat = "DIM";
inline constexpr std::int64_t kVersion = 1;
inline constexpr std::string_view kModelKind = "BriselCLS";

namespace key {
inline constexpr std::string_view kFormat = "format";
inline constexpr std::string_view kVersion = "version";
inline constexpr std::string_view kKind = "kind";
inline constexpr std::string_view kNode = "node";
inline constexpr std::string_view kLink = "link";
inline constexpr std::string_view kEnd = "end";
inline constexpr std::string_view kId = "id";
inline constexpr std::string_view kName = "name";
inline constexpr std::string_view kSource = "source";
inline constexpr std::string_view kTarget = "target";
inline constexpr std::string_view kProperties = "properties";
inline constexpr std::string_view kArea = "area";
inline constexpr std::string_view kPoints = "points";
inline constexpr std::string_view kLeft = "left";
inline constexpr std::string_view kTop = "top";
inline constexpr std::string_view kWidth = "width";
inline constexpr std::string_view kHeight = "height";
/// {"double": "nan"}: a number that JSON has no digits for.
inline constexpr std::string_view kDouble = "double";
}  // namespace key

namespace word {
inline constexpr std::string_view kNotANumber = "nan";
inline constexpr std::string_view kInfinity = "inf";
inline constexpr std::string_view kMinusInfinity = "-inf";
}  // namespace word

/// A rectangle of the diagram, in twips.
struct Area {
  std::int64_t left = 0;
  std::int64_t top = 0;
  std::int64_t width = 0;
  std::int64_t height = 0;
};

/// A point of a drawn line, in twips.
struct Point {
  std::int64_t x = 0;
  std::int64_t y = 0;
};

/// The three words of a link type: "Class.Has.Attrib".
struct LinkWords {
  std::string_view source;
  std::string_view relation;
  std::string_view target;
};
[[nodiscard]] constexpr LinkWords linkWords(std::string_view type) {
  const auto first = type.find('.');
  const auto last = type.rfind('.');
  if (first == std::string_view::npos || first == last) return {};
  return {type.substr(0, first), type.substr(first + 1, last - first - 1), type.substr(last + 1)};
}

/// The name that an ownership link has, which its line goes without: "owner.Has.owned".
inline void ownershipName(std::string& name, std::string_view source, std::string_view relation,
                          std::string_view target) {
  name.assign(source).append(1, '.').append(relation).append(1, '.').append(target);
}

/// The text as errors show it.
[[nodiscard]] inline std::string inQuotes(std::string_view text) {
  return std::string("\"").append(text).append("\"");
}

/// Whether the property is a node's own name or identifier, which its line begins with.
[[nodiscard]] constexpr bool isOwnProperty(std::string_view name) {
  return platform::equalsIgnoringCase(name, "Name") ||
         platform::equalsIgnoringCase(name, "Identifier");
}

}  // namespace brisel::interchange::dim
