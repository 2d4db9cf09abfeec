#pragma once

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

}  // namespace brisel::qt
