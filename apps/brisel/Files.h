#pragma once

#include <string>
#include <string_view>

namespace brisel::app {

/// Stands for standard input or standard output in the place of a path.
inline constexpr std::string_view kStandard = "-";

/// The ending of a path in lower case with its dot, ".dim"; empty without one.
[[nodiscard]] std::string endingOf(std::string_view path);

/// All bytes of a file, or of standard input. An Error names the path and the cause.
[[nodiscard]] std::string readBytes(const std::string& path);

/// Puts the bytes in the place of the file whole, or leaves it as it was; or writes them to
/// standard output. An Error names the path and the cause.
void writeBytes(const std::string& path, std::string_view bytes);

}  // namespace brisel::app
