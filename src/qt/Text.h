#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace brisel::qt {

[[nodiscard]] inline QString toQt(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

[[nodiscard]] inline std::string fromQt(const QString& text) { return text.toStdString(); }

}  // namespace brisel::qt
