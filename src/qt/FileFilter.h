#pragma once

#include <QString>
#include <string_view>

namespace brisel::qt {

/// "DIM Format (*.dim)|*.dim|All files|*" as Qt's dialogs read it: "DIM Format (*.dim);;All files
/// (*)". Patterns joined with ";" become several of one entry. A name without a pattern is dropped.
[[nodiscard]] QString toQtFilter(std::string_view filter);

}  // namespace brisel::qt
