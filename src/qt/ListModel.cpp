#include "qt/ListModel.h"

#include <QScopedValueRollback>

#include "qt/Icon.h"
#include "qt/Text.h"

namespace brisel::qt {

ListModel::ListModel(platform::Ref<controls::ListView> list, QObject* parent)
    : QAbstractTableModel(parent), m_list(std::move(list)) {
  m_connections.push_back(m_list->Changed.connect([this] { followLook(); }));
  m_connections.push_back(m_list->RowsReset.connect([this] { reset(); }));
  m_connections.push_back(m_list->RowInserted.connect([this](std::size_t row) { rowCame(row); }));
  m_connections.push_back(m_list->RowRemoved.connect([this](std::size_t row) { rowWent(row); }));
  m_connections.push_back(m_list->RowChanged.connect(
      [this](std::size_t row) { showRows(static_cast<int>(row), static_cast<int>(row)); }));
  reset();
}

int ListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_rows; }

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_columns;
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  const auto column = static_cast<std::size_t>(index.column());
  if (!index.isValid() || row >= m_list->rowCount() || column >= m_list->columns().size()) {
    return {};
  }
  if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return toQt(m_list->cell(row, column));
  if (role == Qt::DecorationRole && column == 0) return m_icon;
  if (role == Qt::CheckStateRole && column == 0 && m_list->tickBoxes()) {
    return m_list->isTicked(row) ? Qt::Checked : Qt::Unchecked;
  }
  return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const auto column = static_cast<std::size_t>(section);
  const bool isCaption = orientation == Qt::Horizontal && role == Qt::DisplayRole;
  if (!isCaption || column >= m_list->columns().size()) return {};
  return toQt(m_list->columns()[column].caption);
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  const auto flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  return index.column() == 0 && m_list->tickBoxes() ? flags | Qt::ItemIsUserCheckable : flags;
}

bool ListModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::CheckStateRole || !index.isValid() || index.row() >= m_rows) return false;
  const platform::Ref<controls::ListView> held = m_list;
  if (value.toInt() == Qt::Checked) {
    held->Tick(index.row() + 1);
  } else {
    held->Untick(index.row() + 1);
  }
  return true;
}

void ListModel::reset() {
  const QScopedValueRollback changing(m_isChanging, true);
  beginResetModel();
  m_rows = static_cast<int>(m_list->rowCount());
  m_columns = static_cast<int>(m_list->columns().size());
  const auto& icon = m_list->icon();
  if (icon.file != m_iconFile) {
    m_iconFile = icon.file;
    m_icon = loadIcon(icon.file);
  }
  endResetModel();
}

/// Columns, icon or tick boxes: what stands in every row.
void ListModel::followLook() {
  const bool sameShape = m_columns == static_cast<int>(m_list->columns().size());
  if (!sameShape || m_iconFile != m_list->icon().file) return reset();
  if (m_rows > 0) showRows(0, m_rows - 1);
}

void ListModel::rowCame(std::size_t row) {
  const QScopedValueRollback changing(m_isChanging, true);
  beginInsertRows({}, static_cast<int>(row), static_cast<int>(row));
  ++m_rows;
  endInsertRows();
}

void ListModel::rowWent(std::size_t row) {
  const QScopedValueRollback changing(m_isChanging, true);
  beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
  --m_rows;
  endRemoveRows();
}

void ListModel::showRows(int first, int last) {
  if (m_columns > 0) dataChanged(index(first, 0), index(last, m_columns - 1));
}

}  // namespace brisel::qt
