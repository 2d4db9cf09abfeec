#include "qt/FormDialog.h"

#include <QDialogButtonBox>
#include <QVBoxLayout>

#include "qt/ButtonWidget.h"
#include "qt/Text.h"

namespace brisel::qt {

FormDialog::FormDialog(platform::Ref<editors::Form> form, QWidget* parent)
    : QDialog(parent), m_form(std::move(form)), m_column(new QVBoxLayout(this)) {
  m_changed = m_form->Changed.connect([this] { follow(); });
}

void FormDialog::setContent(QWidget* content) { m_column->addWidget(content, 1); }

void FormDialog::setButtons(const platform::Ref<controls::Button>& ok,
                            const platform::Ref<controls::Button>& cancel) {
  m_cancel = cancel;
  auto* row = new QDialogButtonBox(this);
  auto* okButton = new ButtonWidget(ok, row);
  okButton->setObjectName("Ok");
  okButton->setDefault(true);
  row->addButton(okButton, QDialogButtonBox::AcceptRole);
  if (cancel) {
    auto* cancelButton = new ButtonWidget(cancel, row);
    cancelButton->setObjectName("Cancel");
    row->addButton(cancelButton, QDialogButtonBox::RejectRole);
  }
  m_column->addWidget(row);
}

void FormDialog::run() {
  m_form->Visible(true);
  follow();
  enterFields();
  exec();
}

void FormDialog::follow() {
  setWindowTitle(toQt(m_form->Caption()));
  if (!m_form->Visible() && isVisible()) done(QDialog::Accepted);
}

void FormDialog::reject() {
  const platform::Ref<editors::Form> held = m_form;
  if (m_cancel) {
    m_cancel->Click();
  } else {
    held->Hide();
  }
}

}  // namespace brisel::qt
