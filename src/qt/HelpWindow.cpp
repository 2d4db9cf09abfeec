#include "qt/HelpWindow.h"

#include <QKeyEvent>
#include <QUrl>

namespace brisel::qt {

HelpWindow::HelpWindow(const QString& folder, QWidget* parent)
    : QTextBrowser(parent), m_folder(folder) {
  setObjectName("HelpWindow");
  setWindowFlag(Qt::Window);
  setWindowTitle(tr("Brisel Help"));
  setOpenExternalLinks(true);
  resize(720, 640);
}

void HelpWindow::showPage(const QString& page) {
  setSource(QUrl::fromLocalFile(m_folder + '/' + page));
  show();
  raise();
  activateWindow();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QTextBrowser::keyPressEvent(event);
  }
}

}  // namespace brisel::qt
