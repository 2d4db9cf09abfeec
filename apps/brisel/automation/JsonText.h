#pragma once

#include <string>
#include <string_view>

namespace brisel::automation {

/// Appends the text as a JSON string, quotes included. Bytes that are no valid UTF-8 become the
/// replacement character, so that what is written is always valid.
void appendJsonString(std::string& out, std::string_view text);

/// Appends the shortest number that reads back as the same double; whole ones keep a ".0", so that
/// they stay doubles. What JSON cannot express (infinite, not a number) becomes null.
void appendJsonNumber(std::string& out, double number);

}  // namespace brisel::automation
