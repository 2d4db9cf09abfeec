#pragma once

#include <QComboBox>
#include <QLineEdit>

namespace brisel::qt {

/// The keyboard comes to a field, with its text selected as when Tab brings it there.
inline void enterField(QWidget& field) {
  field.setFocus(Qt::TabFocusReason);
  auto* line = qobject_cast<QLineEdit*>(&field);
  if (const auto* combo = qobject_cast<QComboBox*>(&field)) line = combo->lineEdit();
  if (line) line->selectAll();
}

}  // namespace brisel::qt
