#include "qt/MemberView.h"

#include <QGridLayout>
#include <QLabel>

#include "qt/ComboWidget.h"
#include "qt/EnterField.h"
#include "qt/ListViewWidget.h"
#include "qt/OptionGroupWidget.h"
#include "qt/TextBoxWidget.h"
#include "qt/ToolRow.h"

namespace brisel::qt {

MemberView::MemberView(Controls controls, QWidget* parent)
    : QWidget(parent), m_controls(std::move(controls)) {
  build();
  m_deleteAsked = m_list->DeleteAsked.connect([this] { deleteSelected(); });
}

void MemberView::build() {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setColumnStretch(1, 1);
  m_name = new TextBoxWidget(m_controls.name, this);
  addField(*grid, "Name", tr("&Name:"), *m_name);
  if (m_controls.scope) {
    addField(*grid, "Scope", tr("Scope:"), *new OptionGroupWidget(m_controls.scope, this));
  }
  auto* type = new ComboWidget(m_controls.type, ComboWidget::Unknown::entered, this);
  addField(*grid, "Type", tr("&Type:"), *type);
  auto* tools = new ToolRow(m_controls.tools, m_controls.band, this);
  grid->addWidget(tools, grid->rowCount(), 0, 1, 2);
  m_list = new ListViewWidget(m_controls.list, this);
  m_list->setAccessibleName(m_controls.listName);
  m_list->setObjectName(m_controls.member + "s");
  const int row = grid->rowCount();
  grid->addWidget(m_list, row, 0, 1, 2);
  grid->setRowStretch(row, 1);
}

void MemberView::addField(QGridLayout& grid, const char* name, const QString& label,
                          QWidget& field) {
  auto* text = new QLabel(label, this);
  text->setBuddy(&field);
  field.setAccessibleName(QString(label).remove('&').remove(':'));
  field.setObjectName(m_controls.member + name);
  const int row = grid.rowCount();
  grid.addWidget(text, row, 0);
  grid.addWidget(&field, row, 1);
}

void MemberView::enterFields() { enterField(*m_name); }

void MemberView::enterList() { m_list->setFocus(Qt::TabFocusReason); }

void MemberView::deleteSelected() {
  const platform::Ref<controls::ListView> list = m_controls.list;
  const platform::Ref<controls::ToolBarControl> tools = m_controls.tools;
  const auto row = list->currentRow();
  if (!row) return;
  list->Select(static_cast<std::int64_t>(*row) + 1);  // its name stands in the field again
  tools->Click(m_controls.deleteTool);
}

}  // namespace brisel::qt
