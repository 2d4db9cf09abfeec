#include <QApplication>
#include <QDir>
#include <QImage>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QTextBlock>

#include <gtest/gtest.h>

#include "qt/HelpWindow.h"

namespace brisel::qt {
namespace {

constexpr const char* kFolder = BRISEL_BINARY_DIR "/share/brisel/help";
constexpr const char* kPage = "UML class diagram.html";

/// Where the links of the page lead to, and the pictures in it.
struct Contents {
  explicit Contents(const QTextDocument& document) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
      for (auto part = block.begin(); !part.atEnd(); ++part) {
        const QTextCharFormat format = part.fragment().charFormat();
        if (format.isImageFormat()) pictures += format.toImageFormat().name();
        if (!format.anchorHref().isEmpty()) links += format.anchorHref();
        anchors += format.anchorNames();
      }
    }
  }
  QStringList links, anchors, pictures;
};

TEST(HelpWindow, closesOnEscape) {
  HelpWindow window(kFolder);
  window.showPage(kPage);
  EXPECT_FALSE(window.toPlainText().isEmpty());
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QApplication::sendEvent(&window, &escape);
  EXPECT_FALSE(window.isVisible());
}

TEST(HelpWindow, everyLinkAndPictureIsThere) {
  HelpWindow window(kFolder);
  window.showPage(kPage);
  const Contents contents(*window.document());
  EXPECT_GT(contents.links.size(), 5);
  for (const QString& link : contents.links) {
    EXPECT_TRUE(link.startsWith('#') && contents.anchors.contains(link.mid(1)))
        << link.toStdString();
  }
  EXPECT_GT(contents.pictures.size(), 2);
  QStringList left = QDir(kFolder).entryList({"*.png"});
  for (const QString& name : contents.pictures) {
    const QString path = QString(kFolder) + '/' + name;
    const QImage picture(path);
    const QImage sharp(QString(path).replace(".png", "@2x.png"));
    ASSERT_FALSE(picture.isNull()) << name.toStdString();
    EXPECT_EQ(sharp.size(), picture.size() * 2) << name.toStdString();
    EXPECT_LE(picture.width(), 700) << "fits in the window";
    left.removeAll(name);
    left.removeAll(QString(name).replace(".png", "@2x.png"));
    const auto shown = window.document()->resource(QTextDocument::ImageResource, name);
    const QImage image = shown.value<QImage>();
    EXPECT_EQ(image.deviceIndependentSize().toSize(), picture.size()) << "one size on all screens";
    EXPECT_EQ(image.devicePixelRatio(), window.devicePixelRatioF() > 1 ? 2 : 1);
  }
  EXPECT_TRUE(left.isEmpty()) << left.join(' ').toStdString() << " is shown nowhere";
}

TEST(HelpWindow, goesWhereALinkLeads) {
  HelpWindow window(kFolder);
  window.resize(700, 400);
  window.showPage(kPage);
  QApplication::processEvents();
  window.setSource(QUrl("#keys"));
  QApplication::processEvents();
  const QString seen = window.cursorForPosition(QPoint(30, 10)).block().text();
  EXPECT_TRUE(seen.contains("Keys and mouse")) << seen.toStdString();
}

/// The text follows the desktop's colours: the page sets none.
TEST(HelpWindow, setsNoColours) {
  QFile page(QString(kFolder) + '/' + kPage);
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  EXPECT_FALSE(
      QString::fromUtf8(page.readAll())
          .contains(QRegularExpression("color|style=", QRegularExpression::CaseInsensitiveOption)));
}

}  // namespace
}  // namespace brisel::qt
