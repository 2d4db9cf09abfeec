#include "qt/ListViewWidget.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <algorithm>

#include "platform/Geometry.h"
#include "qt/ControlState.h"
#include "qt/ListModel.h"
#include "qt/TickStyle.h"

namespace brisel::qt {

ListViewWidget::ListViewWidget(platform::Ref<controls::ListView> list, QWidget* parent)
    : QTreeView(parent), m_list(std::move(list)), m_model(new ListModel(m_list, this)) {
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerPixel);
  header()->setStretchLastSection(false);
  setStyle(&tickStyle());
  setModel(m_model);
  m_reveal.setSingleShot(true);
  m_reveal.setInterval(0);
  connect(&m_reveal, &QTimer::timeout, this, &QAbstractItemView::scrollToBottom);
  connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
    placeColumns();
    followCurrent();
  });
  connect(m_model, &QAbstractItemModel::rowsRemoved, this, [this] { followCurrent(); });
  connect(m_model, &QAbstractItemModel::rowsInserted, this, [this] {
    followCurrent();
    m_reveal.start();
  });
  m_connections.push_back(m_list->CurrentChanged.connect([this] { followCurrent(); }));
  m_connections.push_back(m_list->Changed.connect([this] { follow(); }));
  placeColumns();
  followCurrent();
  follow();
}

void ListViewWidget::follow() { showState(*this, *m_list); }

void ListViewWidget::followCurrent() {
  const QScopedValueRollback following(m_following, true);
  const auto current = m_list->currentRow();
  const int row = current ? static_cast<int>(*current) : -1;
  if (row < 0 || row >= m_model->rowCount()) {
    clearSelection();
    return;
  }
  const QModelIndex index = m_model->index(row, 0);
  if (selectionModel()->isRowSelected(row)) return;
  selectionModel()->setCurrentIndex(
      index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

/// The first column takes the room that the others leave.
void ListViewWidget::placeColumns() {
  for (int column = 0; column < m_model->columnCount(); ++column) {
    const auto& shown = m_list->columns()[static_cast<std::size_t>(column)];
    const auto wanted = static_cast<int>(shown.width / platform::kTwipsPerPixel);
    header()->setSectionResizeMode(column,
                                   column == 0 ? QHeaderView::Stretch : QHeaderView::Interactive);
    if (column > 0) {
      header()->resizeSection(column, std::max(wanted, header()->sectionSizeHint(column) + 8));
    }
  }
}

// ---- what a person does -------------------------------------------------------------------------

void ListViewWidget::select(int row) {
  m_told = true;
  const platform::Ref<controls::ListView> held = m_list;
  held->Select(row + 1);
}

void ListViewWidget::open(const QModelIndex& index) {
  if (!index.isValid()) return;
  const platform::Ref<controls::ListView> held = m_list;
  held->Open(index.row() + 1);
}

void ListViewWidget::selectionChanged(const QItemSelection& selected,
                                      const QItemSelection& before) {
  QTreeView::selectionChanged(selected, before);
  if (m_following || m_model->isChanging() || selected.isEmpty()) return;
  select(selected.first().top());
}

void ListViewWidget::mousePressEvent(QMouseEvent* event) {
  m_told = false;
  QTreeView::mousePressEvent(event);
  const QModelIndex at = indexAt(event->position().toPoint());
  // A click on the row that is selected already tells of it as well.
  if (at.isValid() && !m_told && event->button() == Qt::LeftButton) select(at.row());
}

void ListViewWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  QTreeView::mouseDoubleClickEvent(event);
  if (event->button() == Qt::LeftButton) open(indexAt(event->position().toPoint()));
}

bool ListViewWidget::entersBy(int key) const {
  if (!currentIndex().isValid() || selectionModel()->hasSelection()) return false;
  const bool staysThere = key == Qt::Key_Home && currentIndex().row() == 0;
  return key == Qt::Key_Down || key == Qt::Key_Up || staysThere;
}

void ListViewWidget::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (selectionModel()->hasSelection()) open(currentIndex());
  } else if (event->key() == Qt::Key_Delete) {
    if (selectionModel()->hasSelection()) DeleteAsked();
  } else if (entersBy(event->key())) {
    select(currentIndex().row());
  } else {
    QTreeView::keyPressEvent(event);
    return;
  }
  event->accept();
}

}  // namespace brisel::qt
