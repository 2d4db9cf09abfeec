#include "qt/ExtractAttributeDialog.h"

#include <QVBoxLayout>

#include "qt/CheckBoxWidget.h"
#include "qt/LabelWidget.h"
#include "qt/ListViewWidget.h"

namespace brisel::qt {

ExtractAttributeDialog::ExtractAttributeDialog(
    const platform::Ref<editors::frmExtractAttribute>& form, QWidget* parent)
    : FormDialog(form, parent), m_list(form->Attributes()) {
  auto* content = new QWidget(this);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  m_attributes = new ListViewWidget(form->Attributes(), content);
  m_attributes->setObjectName("Attributes");
  column->addWidget(new LabelWidget(form->Label1(), m_attributes, content));
  column->addWidget(m_attributes, 1);
  auto* asComposite = new CheckBoxWidget(form->asComposite(), content);
  asComposite->setObjectName("asComposite");
  column->addWidget(asComposite);
  setContent(content);
  setButtons(form->Ok(), form->Cancel());
  resize(380, 340);
}

void ExtractAttributeDialog::enterFields() {
  m_attributes->setFocus(Qt::TabFocusReason);
  if (!m_list->selectedRow() && m_list->rowCount() > 0) m_list->Select(1);
}

}  // namespace brisel::qt
