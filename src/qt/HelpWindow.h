#pragma once

#include <QTextBrowser>

namespace brisel::qt {

/// A window of its own with the help pages of a folder.
class HelpWindow : public QTextBrowser {
 public:
  explicit HelpWindow(const QString& folder, QWidget* parent = nullptr);

  /// Shows a page by its file name and brings the window to the front.
  void showPage(const QString& page);

 protected:
  /// Escape closes the window.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QString m_folder;
};

}  // namespace brisel::qt
