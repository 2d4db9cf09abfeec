#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <vector>

#include "controls/ListView.h"

namespace brisel::qt {

/// The rows and columns of a list, read from the list whenever they are asked for.
class ListModel : public QAbstractTableModel {
 public:
  explicit ListModel(platform::Ref<controls::ListView> list, QObject* parent = nullptr);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  /// Ticks and unticks.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  /// While views hear of rows that came or went; what is selected meanwhile is their own affair.
  [[nodiscard]] bool isChanging() const { return m_isChanging; }

 private:
  void reset();
  void followLook();
  void rowCame(std::size_t row);
  void rowWent(std::size_t row);
  void showRows(int first, int last);

  platform::Ref<controls::ListView> m_list;
  // What views were told last: the list tells of a change after it was made.
  int m_rows = 0;
  int m_columns = 0;
  QIcon m_icon;
  std::string m_iconFile;
  bool m_isChanging = false;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
