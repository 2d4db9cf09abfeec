#include <QComboBox>
#include <QFile>
#include <QMessageBox>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QRegularExpression>
#include <QSettings>
#include <QTimer>

#include <gtest/gtest.h>

#include "WindowBench.h"
#include "canvas/SvgExport.h"
#include "qt/Printing.h"

namespace brisel::qt {
namespace {

using canvas::PageFit;
using platform::Rect;
using test::WindowBench;

class PrintingTest : public testing::Test {
 protected:
  PrintingTest() {
    bench.drawSample();
    bench.document->canvas().getNode("order")->bounds({0, 0, 3000, 1800});
    place(18000, 22000);
    QSettings().remove("print/tiled");
  }
  ~PrintingTest() override { QSettings().remove("print/tiled"); }

  void place(double x, double y) {
    bench.document->canvas().getNode("line")->bounds({x, y, 3000, 1800});
  }
  [[nodiscard]] const canvas::Scene& scene() const { return bench.document->canvas().scene(); }
  /// Prints to a file, which is kept for those who look at it, and tells how many pages it has.
  int printed(QPrinter& printer, PageFit fit) {
    // Of its own for each of the runs that CTest makes side by side.
    const QString file = BRISEL_BINARY_DIR "/printed-" + QGuiApplication::platformName() + '-' +
                         qEnvironmentVariable("QT_SCALE_FACTOR", "1") + ".pdf";
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    printer.setPageSize(QPageSize(QPageSize::A4));
    turnPaper(scene(), printer, fit);
    EXPECT_TRUE(paintPages(scene(), printer, fit));
    QFile pdf(file);
    EXPECT_TRUE(pdf.open(QIODevice::ReadOnly));
    content = QString::fromLatin1(pdf.readAll());
    return static_cast<int>(content.count(QRegularExpression("/Type\\s*/Page\\b")));
  }

  WindowBench bench;
  QString content;
};

TEST_F(PrintingTest, fitsOnOnePageOrTilesOverSeveral) {
  QPrinter printer(QPrinter::HighResolution);
  EXPECT_EQ(printed(printer, PageFit::onePage), 1);
  EXPECT_TRUE(content.contains("/FontFile")) << "text stays text";
  printer.setFromTo(2, 3);
  EXPECT_EQ(printed(printer, PageFit::tiles), 2) << "only the pages that were asked for";
  printer.setFromTo(0, 0);
  EXPECT_EQ(printed(printer, PageFit::tiles), 4);
}

TEST_F(PrintingTest, aSmallDiagramIsOnePageEitherWay) {
  QPrinter printer(QPrinter::HighResolution);
  place(4000, 3000);
  EXPECT_EQ(printed(printer, PageFit::tiles), 1);
  EXPECT_EQ(printed(printer, PageFit::onePage), 1);
}

TEST_F(PrintingTest, turnsThePaperAsSuits) {
  QPrinter printer;
  place(30000, 0);
  turnPaper(scene(), printer, PageFit::onePage);
  EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Landscape);
  place(0, 30000);
  turnPaper(scene(), printer, PageFit::onePage);
  EXPECT_EQ(printer.pageLayout().orientation(), QPageLayout::Portrait);
}

TEST_F(PrintingTest, theFileThatCannotBeWrittenIsTold) {
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(bench.folder.filePath("no/such/folder/out.pdf"));
  EXPECT_FALSE(paintPages(scene(), printer, PageFit::onePage));
}

TEST_F(PrintingTest, thePreviewOffersTheChoiceAndKeepsIt) {
  int fitted = 0;
  int tiled = 0;
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    auto* pages = dialog->findChild<QPrintPreviewWidget*>();
    auto* choice = dialog->findChild<QComboBox*>("PageFit");
    pages->updatePreview();
    fitted = pages->pageCount();
    choice->setCurrentIndex(1);
    tiled = pages->pageCount();
    dialog->grab().save(BRISEL_BINARY_DIR "/print-preview.png");
    dialog->close();
  });
  bench.button("PrintPreview").trigger();
  EXPECT_EQ(fitted, 1);
  EXPECT_EQ(tiled, 4);
  EXPECT_TRUE(QSettings().value("print/tiled").toBool());
}

TEST_F(PrintingTest, aPersonHearsOfPaperThatCannotBeReached) {
  const QString file = bench.folder.filePath("no/such/folder/out.pdf");
  QString told;
  QTimer::singleShot(0, [&] {
    auto* dialog = qobject_cast<QPrintPreviewDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    QTimer::singleShot(0, [&] {
      const auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (!box) return;
      told = box->text();
      QApplication::activeModalWidget()->close();
    });
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    Q_EMIT dialog->paintRequested(&printer);
    dialog->close();
  });
  bench.button("PrintPreview").trigger();
  EXPECT_TRUE(told.contains(file)) << told.toStdString();
}

TEST_F(PrintingTest, thePrintDialogOffersTheChoice) {
  bool offered = false;
  QTimer::singleShot(0, [&] {
    QWidget* dialog = QApplication::activeModalWidget();
    ASSERT_NE(dialog, nullptr);
    offered = dialog->findChild<QComboBox*>("PageFit") != nullptr;
    dialog->close();
  });
  bench.button("Print").trigger();
  EXPECT_TRUE(offered);
}

}  // namespace
}  // namespace brisel::qt
