#include "qt/OptionGroupWidget.h"

#include <QHBoxLayout>
#include <QRadioButton>

#include "qt/ControlState.h"
#include "qt/Text.h"
#include "qt/TickStyle.h"

namespace brisel::qt {

OptionGroupWidget::OptionGroupWidget(platform::Ref<controls::OptionGroup> group, QWidget* parent)
    : QWidget(parent), m_group(std::move(group)) {
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(12);
  int index = 0;
  for (const std::string& caption : m_group->captions()) {
    auto* button = new QRadioButton(toQt(caption), this);
    button->setStyle(&tickStyle());
    m_buttons.addButton(button, index++);
    row->addWidget(button);
  }
  row->addStretch(1);
  connect(&m_buttons, &QButtonGroup::idClicked, this, [this](int chosen) {
    const platform::Ref<controls::OptionGroup> held = m_group;
    held->Choose(chosen);
  });
  m_changed = m_group->Changed.connect([this] { follow(); });
  follow();
}

void OptionGroupWidget::follow() {
  const auto chosen = static_cast<int>(m_group->value());
  if (m_buttons.checkedId() != chosen) {
    m_buttons.setExclusive(false);  // none may be chosen
    for (QAbstractButton* button : m_buttons.buttons()) {
      button->setChecked(m_buttons.id(button) == chosen);
    }
    m_buttons.setExclusive(true);
  }
  // The keyboard comes to the group as a whole: to the chosen button, or else to the first.
  const int entry = chosen < 0 ? 0 : chosen;
  if (QAbstractButton* first = m_buttons.button(entry)) setFocusProxy(first);
  showState(*this, *m_group);
}

}  // namespace brisel::qt
