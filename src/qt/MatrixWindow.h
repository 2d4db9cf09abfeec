#pragma once

#include <QWidget>
#include <array>

#include "qt/MatrixView.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QToolButton;

namespace brisel::qt {

/// The window of a matrix browser: what is asked for above, the matrix, what is looked at below.
/// Ends the browser when it is closed, and closes when the browser ends.
class MatrixWindow : public QWidget {
  Q_OBJECT

 public:
  explicit MatrixWindow(platform::Ref<tools::MatrixBrowser> browser);

  [[nodiscard]] MatrixView& view() const { return *m_view; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] QWidget* makeFilters();
  [[nodiscard]] QWidget* makeKinds();
  [[nodiscard]] QWidget* makeStatus();
  [[nodiscard]] QToolButton* makeButton(const QString& text, const QString& tip,
                                        const QKeySequence& key, void (MatrixWindow::*run)());
  void addShortcuts();
  void follow();
  void followStereotypes();
  void showLookedAt();
  void filterKinds();
  void zoomIn() { m_view->zoom(1); }
  void zoomOut() { m_view->zoom(-1); }
  void zoomToFit() { m_view->zoomToFit(); }
  void resetZoom() { m_view->resetZoom(); }
  void goToFilter();

  platform::Ref<tools::MatrixBrowser> m_browser;
  MatrixView* m_view;
  QLineEdit* m_name;
  QComboBox* m_stereotype;
  QComboBox* m_order;
  QCheckBox* m_neighbours;
  QCheckBox* m_related;
  std::array<QToolButton*, tools::Matrix::kKinds> m_kinds{};
  QLabel* m_looked;
  QLabel* m_counts;
  QTimer m_follow;
  std::vector<std::string> m_stereotypes;
  std::vector<platform::Connection> m_connections;
};

}  // namespace brisel::qt
