#include "qt/ClassDialog.h"

#include <QHBoxLayout>
#include <QLabel>

#include "qt/ButtonWidget.h"
#include "qt/ControlState.h"
#include "qt/EnterField.h"
#include "qt/LabelWidget.h"
#include "qt/ListViewWidget.h"
#include "qt/TextBoxWidget.h"

namespace brisel::qt {

ClassDialog::ClassDialog(const platform::Ref<editors::frmClass>& form, QWidget* parent)
    : FormDialog(form, parent) {
  auto* content = new QWidget(this);
  auto* column = new QVBoxLayout(content);
  column->setContentsMargins(0, 0, 0, 0);
  m_name = new TextBoxWidget(form->ClassName(), content);
  m_name->setObjectName("ClassName");
  column->addWidget(new LabelWidget(form->ClassNameLabel(), m_name, content));
  column->addWidget(m_name);
  auto* information = new LabelWidget(form->Information(), nullptr, content);
  information->setWordWrap(true);
  column->addWidget(information);
  addMembers(*column, tr("Attributes"), form->Attributes(), form->AllAttributes());
  addMembers(*column, tr("Operations"), form->Operations(), form->AllOperations());
  showState(*content, *form->ClassData());
  setContent(content);
  setButtons(form->Ok(), form->Cancel());
  resize(480, 520);
}

void ClassDialog::addMembers(QVBoxLayout& column, const QString& title,
                             const platform::Ref<controls::ListView>& list,
                             const platform::Ref<controls::Button>& all) {
  auto* button = new ButtonWidget(all, column.parentWidget());
  button->setAutoDefault(false);
  auto* members = new ListViewWidget(list, column.parentWidget());
  members->setAccessibleName(title);
  members->setObjectName(title);
  auto* heading = new QHBoxLayout;
  heading->addWidget(new QLabel(title, column.parentWidget()), 1);
  heading->addWidget(button);
  column.addLayout(heading);
  column.addWidget(members, 1);
}

void ClassDialog::enterFields() { enterField(*m_name); }

}  // namespace brisel::qt
