#include "qt/StereotypePicker.h"

#include <QHBoxLayout>

#include "qt/ComboWidget.h"
#include "qt/ControlState.h"
#include "qt/LabelWidget.h"

namespace brisel::qt {

StereotypePicker::StereotypePicker(platform::Ref<editors::CLSSelectStereotype> picker,
                                   QWidget* parent)
    : QWidget(parent),
      m_picker(std::move(picker)),
      m_combo(new ComboWidget(m_picker->Combo1(), ComboWidget::Unknown::refused, this)) {
  m_combo->setObjectName("Stereotype");
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(new LabelWidget(m_picker->Label1(), m_combo, this));
  row->addWidget(m_combo, 1);
  setFocusProxy(m_combo);
  m_changed = m_picker->Changed.connect([this] { showState(*this, *m_picker); });
  showState(*this, *m_picker);
}

}  // namespace brisel::qt
