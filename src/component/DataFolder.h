#pragma once

#include <string>

namespace brisel::component {

/// Where the icons, help pages and templates lie: share/brisel in one of the folders above the file
/// that this code was loaded from, library or program. An installation may therefore be moved as a
/// whole. Absolute, without a separator at the end; empty when there is no such folder.
[[nodiscard]] std::string dataFolder();

}  // namespace brisel::component
