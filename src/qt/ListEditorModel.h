#pragma once

#include <QAbstractListModel>
#include <vector>

#include "controls/ListEditor.h"

namespace brisel::qt {

/// The rows of a list editor and, while one is being typed, a further row that is not a node yet.
class ListEditorModel : public QAbstractListModel {
 public:
  explicit ListEditorModel(platform::Ref<controls::ListEditor> list, QObject* parent = nullptr);

  /// A row for a name that is to be typed, at the end; the one that is there already.
  QModelIndex draft();
  /// Without a name, the row goes again.
  void dropDraft();

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
  /// Adds or renames a node.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  /// Asks first where the node is in use.
  void remove(int row);

  /// Why a name was not taken; empty once one was.
  platform::Event<QString> Refused;

 private:
  void reset();
  void rowCame(std::size_t row);
  void rowWent(std::size_t row);
  void store(int row, const std::string& name);

  platform::Ref<controls::ListEditor> m_list;
  int m_rows = 0;  ///< of nodes, as views were told last
  bool m_hasDraft = false;
  bool m_isAdding = false;  ///< the node of the draft is being made
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
