#pragma once

#include <string>
#include <string_view>

namespace brisel::tools {

/// What is wrong with the name of a file to write, for a person; empty for a good one: a relative
/// path with "/" between its parts that leads nowhere but into its folder, on any system.
[[nodiscard]] std::string outputNameFault(std::string_view name);

/// The same for names that would be one file on a system that ignores case.
[[nodiscard]] std::string foldedOutputName(std::string_view name);

}  // namespace brisel::tools
