#include "qt/ListEditorWidget.h"

#include <QAbstractItemDelegate>
#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QPushButton>

#include "qt/ControlState.h"
#include "qt/ListEditorModel.h"
#include "qt/Looks.h"

namespace brisel::qt {

ListEditorWidget::ListEditorWidget(platform::Ref<controls::ListEditor> list, QWidget* parent)
    : QWidget(parent),
      m_list(std::move(list)),
      m_model(new ListEditorModel(m_list, this)),
      m_view(new QListView(this)),
      m_refusal(new QLabel(this)) {
  m_view->setModel(m_model);
  m_view->setUniformItemSizes(true);
  m_view->setEditTriggers(QAbstractItemView::DoubleClicked);
  m_refusal->setTextFormat(Qt::PlainText);
  m_refusal->setWordWrap(true);
  m_refusal->setPalette(refusalPalette(palette()));
  m_refusal->hide();
  build();
  setFocusProxy(m_view);
  connect(
      m_view->itemDelegate(), &QAbstractItemDelegate::closeEditor, this,
      [this] { m_model->dropDraft(); }, Qt::QueuedConnection);
  connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this,
          [this] { showCommands(); });
  connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
    m_view->setCurrentIndex(m_model->index(0));
    showCommands();
  });
  m_refused = m_model->Refused.connect([this](const QString& reason) { refuse(reason); });
  m_changed = m_list->Changed.connect([this] { showState(*this, *m_list); });
  m_view->setCurrentIndex(m_model->index(0));
  showState(*this, *m_list);
  showCommands();
}

void ListEditorWidget::build() {
  auto* buttons = new QVBoxLayout;
  buttons->addWidget(
      addCommand(tr("&Add"), "Add", QKeySequence(Qt::Key_Insert), &ListEditorWidget::add));
  m_rename =
      addCommand(tr("&Rename"), "Rename", QKeySequence(Qt::Key_F2), &ListEditorWidget::rename);
  m_remove =
      addCommand(tr("Re&move"), "Remove", QKeySequence(Qt::Key_Delete), &ListEditorWidget::remove);
  buttons->addWidget(m_rename);
  buttons->addWidget(m_remove);
  buttons->addStretch(1);
  auto* row = new QHBoxLayout;
  row->addWidget(m_view, 1);
  row->addLayout(buttons);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(row, 1);
  column->addWidget(m_refusal);
}

/// A button, and a key for it while the keyboard is in the list.
QPushButton* ListEditorWidget::addCommand(const QString& text, const char* name,
                                          const QKeySequence& key,
                                          void (ListEditorWidget::*command)()) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  button->setAutoDefault(false);
  button->setToolTip(QString(text).remove('&') + " (" + key.toString(QKeySequence::NativeText) +
                     ")");
  connect(button, &QPushButton::clicked, this, command);
  auto* action = new QAction(button->toolTip(), m_view);
  action->setStatusTip(button->toolTip());
  action->setShortcut(key);
  action->setShortcutContext(Qt::WidgetShortcut);
  connect(action, &QAction::triggered, this, command);
  m_view->addAction(action);
  return button;
}

void ListEditorWidget::add() {
  const QModelIndex draft = m_model->draft();
  m_view->setFocus();
  m_view->setCurrentIndex(draft);
  m_view->edit(draft);
}

void ListEditorWidget::rename() {
  if (!m_view->currentIndex().isValid()) return;
  m_view->setFocus();
  m_view->edit(m_view->currentIndex());
}

void ListEditorWidget::remove() {
  m_model->remove(m_view->currentIndex().row());
  m_view->setFocus();
}

void ListEditorWidget::showCommands() {
  const bool any = m_view->currentIndex().isValid();
  m_rename->setEnabled(any);
  m_remove->setEnabled(any);
}

void ListEditorWidget::refuse(const QString& reason) {
  m_refusal->setText(reason);
  m_refusal->setVisible(!reason.isEmpty());
}

QString ListEditorWidget::refusal() const { return m_refusal->text(); }

}  // namespace brisel::qt
