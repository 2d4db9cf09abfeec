#include "qt/CheckBoxWidget.h"

#include "qt/ControlState.h"
#include "qt/Text.h"
#include "qt/TickStyle.h"

namespace brisel::qt {

CheckBoxWidget::CheckBoxWidget(platform::Ref<controls::CheckBox> box, QWidget* parent)
    : QCheckBox(parent), m_box(std::move(box)) {
  setStyle(&tickStyle());
  connect(this, &QCheckBox::clicked, this, [this] {
    const platform::Ref<controls::CheckBox> held = m_box;
    held->SetValue(held->value() == 1 ? 0 : 1);
    follow();  // one that is disabled in the meantime keeps its state
  });
  m_changed = m_box->Changed.connect([this] { follow(); });
  follow();
}

void CheckBoxWidget::follow() {
  setText(toQt(m_box->Caption()));
  const auto value = m_box->value();
  setCheckState(value == 2   ? Qt::PartiallyChecked
                : value == 1 ? Qt::Checked
                             : Qt::Unchecked);
  setTristate(false);  // a person does not make it grey
  showState(*this, *m_box);
}

}  // namespace brisel::qt
