#include "qt/ComboModel.h"

#include "qt/Text.h"

namespace brisel::qt {

ComboModel::ComboModel(platform::Ref<controls::Combo> combo, QObject* parent)
    : QAbstractListModel(parent), m_combo(std::move(combo)) {
  m_entriesChanged = m_combo->EntriesChanged.connect([this] { reset(); });
  reset();
}

void ComboModel::showAll() {
  m_wanted.reset();
  reset();
}

void ComboModel::showMatches(const QString& text) {
  m_wanted = fromQt(text);
  reset();
}

void ComboModel::reset() {
  beginResetModel();
  m_matches.clear();
  if (m_wanted) m_matches = m_combo->matches(*m_wanted, m_combo->entryCount());
  m_rows = static_cast<int>(m_wanted ? m_matches.size() : m_combo->entryCount());
  endResetModel();
}

std::size_t ComboModel::entry(int row) const {
  const auto at = static_cast<std::size_t>(row);
  return m_wanted ? m_matches[at] : at;
}

int ComboModel::selectedRow() const {
  const std::string text = m_combo->Text();
  for (int row = 0; row < m_rows; ++row) {
    if (m_combo->entryText(entry(row)) == text) return row;
  }
  return -1;
}

int ComboModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : m_rows; }

QVariant ComboModel::data(const QModelIndex& index, int role) const {
  if (role != Qt::DisplayRole || !index.isValid() || index.row() >= m_rows) return {};
  const std::size_t at = entry(index.row());
  return at < m_combo->entryCount() ? toQt(m_combo->entryText(at)) : QVariant();
}

}  // namespace brisel::qt
