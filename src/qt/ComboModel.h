#pragma once

#include <QAbstractListModel>
#include <optional>
#include <vector>

#include "controls/Combo.h"

namespace brisel::qt {

/// The entries of a combo, or those of them that match a text, best first.
class ComboModel : public QAbstractListModel {
 public:
  explicit ComboModel(platform::Ref<controls::Combo> combo, QObject* parent = nullptr);

  void showAll();
  void showMatches(const QString& text);
  /// The combo's entry that stands in a row, which must be there.
  [[nodiscard]] std::size_t entry(int row) const;
  /// The row of the selected entry; -1 for none that is shown.
  [[nodiscard]] int selectedRow() const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;

 private:
  void reset();

  platform::Ref<controls::Combo> m_combo;
  std::optional<std::string> m_wanted;  ///< nothing while all entries are shown
  std::vector<std::size_t> m_matches;
  int m_rows = 0;  ///< as views were told last
  platform::Connection m_entriesChanged;
};

}  // namespace brisel::qt
