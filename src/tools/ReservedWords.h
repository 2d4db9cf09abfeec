#pragma once

#include <string_view>

namespace brisel::tools {

/// Words that a name in the language must not be, letters of either case being different in C++ and
/// Java and the same in SQL.
[[nodiscard]] bool isCppWord(std::string_view word);
[[nodiscard]] bool isJavaWord(std::string_view word);
[[nodiscard]] bool isSqlWord(std::string_view word);

}  // namespace brisel::tools
