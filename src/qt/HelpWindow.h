#pragma once

#include <QTextBrowser>

namespace brisel::qt {

/// A window of its own with the help pages of a folder, in the colours of the desktop. Of a picture
/// NAME.png that lies beside the page, NAME@2x.png is shown where the screen has the points for it,
/// in the same size.
class HelpWindow : public QTextBrowser {
 public:
  explicit HelpWindow(const QString& folder, QWidget* parent = nullptr);

  /// Shows a page by its file name and brings the window to the front.
  void showPage(const QString& page);

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  /// Escape closes the window, Alt and the left arrow go back.
  void keyPressEvent(QKeyEvent* event) override;
  /// A desktop that turns dark or light takes the page along.
  void changeEvent(QEvent* event) override;
  /// Size and place are those of last time.
  void hideEvent(QHideEvent* event) override;

 private:
  void takeColours();

  QString m_folder;
};

}  // namespace brisel::qt
