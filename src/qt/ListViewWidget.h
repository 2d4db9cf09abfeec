#pragma once

#include <QTimer>
#include <QTreeView>
#include <vector>

#include "controls/ListView.h"

namespace brisel::qt {

class ListModel;

/// A list with columns. The selected row is the list's current one, whoever chooses it; a double
/// click or Enter opens a row, the space bar ticks it. Rows that come are scrolled to.
class ListViewWidget : public QTreeView {
 public:
  explicit ListViewWidget(platform::Ref<controls::ListView> list, QWidget* parent = nullptr);

  platform::Event<> DeleteAsked;  ///< Del, while a row is selected

  [[nodiscard]] QSize sizeHint() const override { return {240, 120}; }

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& before) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void follow();
  void followCurrent();
  void placeColumns();
  void select(int row);
  void open(const QModelIndex& index);
  /// A key that goes to a row, where none is selected yet.
  [[nodiscard]] bool entersBy(int key) const;

  platform::Ref<controls::ListView> m_list;
  ListModel* m_model;
  bool m_following = false;
  bool m_told = false;  ///< the press of the mouse chose another row
  QTimer m_reveal;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
