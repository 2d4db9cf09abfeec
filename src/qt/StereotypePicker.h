#pragma once

#include <QWidget>

#include "editors/CLSSelectStereotype.h"

namespace brisel::qt {

class ComboWidget;

/// The drop-down in which a stereotype is picked, behind its label.
class StereotypePicker : public QWidget {
 public:
  explicit StereotypePicker(platform::Ref<editors::CLSSelectStereotype> picker,
                            QWidget* parent = nullptr);

  [[nodiscard]] ComboWidget& combo() const { return *m_combo; }

 private:
  platform::Ref<editors::CLSSelectStereotype> m_picker;
  ComboWidget* m_combo;
  platform::Connection m_changed;
};

}  // namespace brisel::qt
