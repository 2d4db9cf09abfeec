#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>

/// What views of controls look like beyond the desktop's own style.
namespace brisel::qt {

/// Of a text that tells what was refused; readable on light and on dark grounds.
[[nodiscard]] inline QPalette refusalPalette(QPalette palette) {
  palette.setColor(QPalette::WindowText, QColor(0xd8, 0x45, 0x3c));
  return palette;
}

/// Of a heading in the same size.
[[nodiscard]] inline QFont headingFont(QFont font) {
  font.setBold(true);
  return font;
}

/// From the one colour (share 0) to the other (share 1).
[[nodiscard]] inline QColor mixed(const QColor& one, const QColor& other, float share) {
  const auto part = [&](float a, float b) { return a + (b - a) * share; };
  return QColor::fromRgbF(part(one.redF(), other.redF()), part(one.greenF(), other.greenF()),
                          part(one.blueF(), other.blueF()));
}

}  // namespace brisel::qt
