#include "qt/LabelWidget.h"

#include "qt/ControlState.h"
#include "qt/Text.h"

namespace brisel::qt {

LabelWidget::LabelWidget(platform::Ref<controls::Label> label, QWidget* named, QWidget* parent)
    : QLabel(parent), m_label(std::move(label)), m_named(named) {
  setBuddy(named);
  m_changed = m_label->Changed.connect([this] { follow(); });
  follow();
}

void LabelWidget::follow() {
  const QString caption = toQt(m_label->Caption());
  setText(caption);
  if (m_named) m_named->setAccessibleName(QString(caption).remove('&').remove(':'));
  showState(*this, *m_label);
}

}  // namespace brisel::qt
