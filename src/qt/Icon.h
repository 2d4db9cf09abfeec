#pragma once

#include <QIcon>
#include <string_view>

namespace brisel::qt {

/// The icon of a file whose path may be joined with backslashes. A drawing (.svg) of the same stem
/// beside the file is taken in its place, since it is sharp at every scaling. An empty icon when
/// there is neither.
[[nodiscard]] QIcon loadIcon(std::string_view path);

}  // namespace brisel::qt
