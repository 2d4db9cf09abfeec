#include "qt/ButtonWidget.h"

#include "qt/ControlState.h"
#include "qt/Text.h"

namespace brisel::qt {

ButtonWidget::ButtonWidget(platform::Ref<controls::Button> button, QWidget* parent)
    : QPushButton(parent), m_button(std::move(button)) {
  connect(this, &QPushButton::clicked, this, [held = m_button] { held->Click(); });
  m_changed = m_button->Changed.connect([this] { follow(); });
  follow();
}

void ButtonWidget::follow() {
  setText(toQt(m_button->Caption()));
  showState(*this, *m_button);
}

}  // namespace brisel::qt
