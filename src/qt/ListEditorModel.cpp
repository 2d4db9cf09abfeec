#include "qt/ListEditorModel.h"

#include <QScopedValueRollback>

#include "qt/Text.h"

namespace brisel::qt {

ListEditorModel::ListEditorModel(platform::Ref<controls::ListEditor> list, QObject* parent)
    : QAbstractListModel(parent), m_list(std::move(list)) {
  m_connections.push_back(m_list->RowsReset.connect([this] { reset(); }));
  m_connections.push_back(m_list->RowInserted.connect([this](std::size_t row) { rowCame(row); }));
  m_connections.push_back(m_list->RowRemoved.connect([this](std::size_t row) { rowWent(row); }));
  m_connections.push_back(m_list->RowChanged.connect([this](std::size_t row) {
    const QModelIndex changed = index(static_cast<int>(row));
    dataChanged(changed, changed);
  }));
  reset();
}

// ---- the row that is being typed ----------------------------------------------------------------

QModelIndex ListEditorModel::draft() {
  if (!m_hasDraft) {
    beginInsertRows({}, m_rows, m_rows);
    m_hasDraft = true;
    endInsertRows();
  }
  return index(m_rows);
}

void ListEditorModel::dropDraft() {
  if (!m_hasDraft) return;
  beginRemoveRows({}, m_rows, m_rows);
  m_hasDraft = false;
  endRemoveRows();
}

// ---- following the list -------------------------------------------------------------------------

void ListEditorModel::reset() {
  beginResetModel();
  m_rows = static_cast<int>(m_list->rowCount());
  m_hasDraft = false;
  endResetModel();
}

void ListEditorModel::rowCame(std::size_t row) {
  const int at = static_cast<int>(row);
  if (m_isAdding && m_hasDraft && at == m_rows) {  // what was typed is a node now
    m_hasDraft = false;
    ++m_rows;
    dataChanged(index(at), index(at));
    return;
  }
  beginInsertRows({}, at, at);
  ++m_rows;
  endInsertRows();
}

void ListEditorModel::rowWent(std::size_t row) {
  beginRemoveRows({}, static_cast<int>(row), static_cast<int>(row));
  --m_rows;
  endRemoveRows();
}

// ---- what views ask -----------------------------------------------------------------------------

int ListEditorModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_rows + (m_hasDraft ? 1 : 0);
}

QVariant ListEditorModel::data(const QModelIndex& index, int role) const {
  const auto row = static_cast<std::size_t>(index.row());
  if (!index.isValid() || row >= m_list->rowCount()) return {};
  return role == Qt::DisplayRole || role == Qt::EditRole ? toQt(m_list->name(row)) : QVariant();
}

Qt::ItemFlags ListEditorModel::flags(const QModelIndex& index) const {
  return QAbstractListModel::flags(index) | Qt::ItemIsEditable;
}

bool ListEditorModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !index.isValid() || index.row() >= rowCount()) return false;
  const std::string name = fromQt(value.toString());
  const bool isDraft = index.row() == m_rows;
  if (isDraft && name.empty()) return false;
  if (!isDraft && name == m_list->name(static_cast<std::size_t>(index.row()))) return true;
  try {
    store(index.row(), name);
    Refused(QString());
    return true;
  } catch (const std::exception& error) {
    Refused(QString::fromUtf8(error.what()));
    return false;
  }
}

void ListEditorModel::store(int row, const std::string& name) {
  const platform::Ref<controls::ListEditor> held = m_list;
  if (row < m_rows) return held->Rename(row + 1, name);
  const QScopedValueRollback adding(m_isAdding, true);
  held->Add(name);
}

void ListEditorModel::remove(int row) {
  if (row < 0 || row >= m_rows) return;
  const platform::Ref<controls::ListEditor> held = m_list;
  try {
    held->Remove(row + 1);
    Refused(QString());
  } catch (const std::exception& error) {
    Refused(QString::fromUtf8(error.what()));
  }
}

}  // namespace brisel::qt
