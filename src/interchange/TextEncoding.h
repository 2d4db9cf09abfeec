#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brisel::interchange {

/// The bytes of an XML file as UTF-8 without a mark at its start: UTF-8 and UTF-16 by their first
/// bytes, else what the XML declaration names (UTF-8, ISO-8859-1, windows-1252, US-ASCII). An Error
/// (badFile) "file:line: cause" for bytes that are not text in the encoding or an encoding that is
/// not known. The line breaks stay where they are.
[[nodiscard]] std::string xmlTextAsUtf8(std::string bytes, const std::string& fileName);

/// The position of the first byte that is not part of UTF-8 text; the size when all are.
[[nodiscard]] std::size_t firstBrokenByte(std::string_view text);

}  // namespace brisel::interchange
