#pragma once

#include <QAbstractScrollArea>
#include <QTimer>
#include <map>
#include <utility>
#include <vector>

#include "qt/MatrixGlyphs.h"
#include "tools/MatrixBrowser.h"

class QMenu;

namespace brisel::qt {

/// The matrix of a browser: classes beside and above their cells, which scroll beneath those names.
/// Only what is seen is painted. Rows and columns count as the browser's: from 1, 0 for the names.
class MatrixView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  struct Cell {
    qint64 row = -1, column = -1;  ///< both -1 where there is none
    [[nodiscard]] bool isValid() const { return row >= 0; }
    friend bool operator==(const Cell&, const Cell&) = default;
  };

  explicit MatrixView(platform::Ref<tools::MatrixBrowser> browser, QWidget* parent = nullptr);

  [[nodiscard]] tools::MatrixBrowser& browser() const { return *m_browser; }
  [[nodiscard]] MatrixGlyphs& glyphs() { return m_glyphs; }
  /// Pixels of a cell's side.
  [[nodiscard]] int cellSize() const { return m_cell; }
  /// The next larger or smaller size, around a point of the viewport.
  void zoom(int steps, QPoint around);
  void zoom(int steps);
  void zoomTo(int cellSize, QPoint around);
  /// As large as shows all cells, at most the usual size.
  void zoomToFit();
  void resetZoom();

  [[nodiscard]] Cell cellAt(QPoint at) const;
  /// In the viewport; of row or column 0 the name.
  [[nodiscard]] QRect areaOf(Cell cell) const;
  /// The cell under the pointer, or else the current one.
  [[nodiscard]] Cell lookedAt();
  /// The menu of a cell: what can be made and deleted there. The caller owns it.
  [[nodiscard]] QMenu* menuOf(Cell cell);

  platform::Event<> LookedElsewhere;  ///< `lookedAt` or what it says

  [[nodiscard]] QSize sizeHint() const override { return {900, 640}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void changeEvent(QEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  /// What is seen of the cells, by places from 0; `last` is not seen any more.
  struct Span {
    qint64 first = 0, last = 0;
  };
  struct Look;
  static constexpr int kLeastName = 9;  ///< smaller rows and columns have no names

  void follow();
  void followCurrent();
  void measureNames();
  void findGroups();
  void placeBars();
  void hover(QPoint at);
  void openMenu(Cell cell, QPoint at);
  void tellCurrent();
  [[nodiscard]] qint64 count();
  [[nodiscard]] QRect body() const;
  [[nodiscard]] Span seenRows();
  [[nodiscard]] Span seenColumns();
  [[nodiscard]] bool hasNames() const { return m_cell >= kLeastName; }
  [[nodiscard]] QFont nameFont() const;
  [[nodiscard]] QRect blockOf(qint64 firstPlace, qint64 lastPlace) const;
  [[nodiscard]] QString emptyText();

  [[nodiscard]] const QPixmap& name(qint64 place, Qt::Orientation orientation);
  void paintGround(QPainter& painter, const Look& look);
  void paintMarks(QPainter& painter, const Look& look);
  void paintCell(QPainter& painter, const QRect& area, const tools::Matrix::Mark* marks,
                 std::size_t number);
  void paintCross(QPainter& painter, const Look& look);
  void paintRowNames(QPainter& painter, const Look& look);
  void paintColumnNames(QPainter& painter, const Look& look);

  platform::Ref<tools::MatrixBrowser> m_browser;
  MatrixGlyphs m_glyphs;
  int m_cell = 0;
  int m_left = 0;  ///< the room of the row's names
  int m_top = 0;
  Cell m_hovered;
  QPoint m_panned{-1, -1};  ///< where the pointer was last while it moves the view
  std::vector<std::pair<qint64, qint64>> m_groups;                ///< first and last place
  std::vector<tools::Matrix::Mark> m_marks;                       ///< of the row that is painted
  std::map<std::pair<qint64, Qt::Orientation>, QPixmap> m_names;  ///< made ready, by place
  double m_namesRatio = 0;  ///< of the screen that they were made for
  QTimer m_follow;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
