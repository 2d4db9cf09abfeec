#include "qt/HelpWindow.h"

#include <QFileInfo>
#include <QImage>
#include <QKeyEvent>
#include <QSettings>
#include <QTextDocument>
#include <QUrl>

namespace brisel::qt {

namespace {

constexpr const char* kGeometry = "help/geometry";
constexpr qreal kMargin = 20;  // pixels around the text

constexpr const char* kStyle =
    "h1 { font-size: xx-large; } h2 { margin-top: 24px; } li { margin-bottom: 4px; }";

/// The sharper of two pictures where the screen has more points than pixels.
QString pictureFor(const QString& file, qreal ratio) {
  const QFileInfo info(file);
  const QString sharp = info.path() + '/' + info.completeBaseName() + "@2x." + info.suffix();
  return ratio > 1 && QFileInfo::exists(sharp) ? sharp : file;
}

}  // namespace

HelpWindow::HelpWindow(const QString& folder, QWidget* parent)
    : QTextBrowser(parent), m_folder(folder) {
  setObjectName("HelpWindow");
  setWindowFlag(Qt::Window);
  setWindowTitle(tr("Help"));  // Qt adds the name of the program
  setOpenExternalLinks(true);
  setFrameShape(QFrame::NoFrame);
  takeColours();
  document()->setDocumentMargin(kMargin);
  resize(760, 720);
  restoreGeometry(QSettings().value(kGeometry).toByteArray());
}

/// Desktops seldom say what links look like on dark grounds.
void HelpWindow::takeColours() {
  const bool dark = palette().base().color().lightness() < 128;
  document()->setDefaultStyleSheet(kStyle +
                                   QString("a { color: %1; }").arg(dark ? "#7db4f0" : "#1f5fa6"));
}

void HelpWindow::showPage(const QString& page) {
  setSource(QUrl::fromLocalFile(m_folder + '/' + page));
  show();
  raise();
  activateWindow();
}

QVariant HelpWindow::loadResource(int type, const QUrl& name) {
  if (type != QTextDocument::ImageResource) return QTextBrowser::loadResource(type, name);
  const QUrl url = source().resolved(name);
  const QString file = pictureFor(url.toLocalFile(), devicePixelRatioF());
  QImage picture(file);
  if (file != url.toLocalFile()) picture.setDevicePixelRatio(2);
  return picture;
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QTextBrowser::keyPressEvent(event);
  }
}

void HelpWindow::changeEvent(QEvent* event) {
  QTextBrowser::changeEvent(event);
  if (event->type() != QEvent::PaletteChange || source().isEmpty()) return;
  takeColours();
  reload();
}

void HelpWindow::hideEvent(QHideEvent* event) {
  QSettings().setValue(kGeometry, saveGeometry());
  QTextBrowser::hideEvent(event);
}

}  // namespace brisel::qt
