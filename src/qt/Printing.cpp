#include "qt/Printing.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QSettings>
#include <QToolBar>
#include <cmath>
#include <utility>

#include "canvas/SvgExport.h"
#include "qt/Render.h"

namespace brisel::qt {

using canvas::Page;
using canvas::PageFit;
using platform::kTwipsPerPoint;

namespace {

constexpr const char* kSetting = "print/tiled";
constexpr double kMarkSize = 9 * kTwipsPerPoint;
constexpr QRgb kMarkColor = 0xFF5A6470;
constexpr QRgb kCutColor = 0xFFB4BAC3;

QString inWords(const char* text) { return QCoreApplication::translate("Printing", text); }

PageFit keptFit() {
  return QSettings().value(kSetting, false).toBool() ? PageFit::tiles : PageFit::onePage;
}

/// Fit on one page, or tile.
QComboBox* makeChoice(QWidget* parent) {
  auto* choice = new QComboBox(parent);
  choice->setObjectName("PageFit");
  choice->addItem(inWords("Fit on one page"));
  choice->addItem(inWords("Tile at 100 %"));
  choice->setCurrentIndex(keptFit() == PageFit::tiles ? 1 : 0);
  choice->setToolTip(inWords("Whether a large diagram is made smaller or put on several pages"));
  return choice;
}

PageFit chosenIn(const QComboBox& choice) {
  const bool tiled = choice.currentIndex() == 1;
  QSettings().setValue(kSetting, tiled);
  return tiled ? PageFit::tiles : PageFit::onePage;
}

platform::Size paperOf(const QPrinter& printer) {
  const QRectF points = printer.pageLayout().paintRect(QPageLayout::Point);
  return {points.width() * kTwipsPerPoint, points.height() * kTwipsPerPoint};
}

/// `dots` is how many dots of the printer a twip of the paper has.
void paintMark(QPainter& painter, const Page& page, QRectF tile, double dots) {
  painter.save();
  painter.setPen(QPen(QColor::fromRgb(kCutColor), 0));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(tile);
  QFont font = painter.font();
  font.setPixelSize(std::max(1, static_cast<int>(std::lround(kMarkSize * dots))));
  painter.setFont(font);
  painter.setPen(QColor::fromRgb(kMarkColor));
  const QRectF strip(tile.left(), tile.bottom(), tile.width(), canvas::kPageMark * dots);
  painter.drawText(strip, Qt::AlignRight | Qt::AlignVCenter,
                   QString("%1/%2").arg(page.row).arg(page.column));
  painter.restore();
}

void paintPage(const canvas::Scene& scene, QPainter& painter, const Page& page, double dots,
               bool isTile) {
  const double scale = page.scale * dots;
  const QRectF paper = painter.viewport();
  QRectF place(0, 0, page.area.width * scale, page.area.height * scale);
  if (!isTile) place.moveLeft(std::max(0.0, (paper.width() - place.width()) / 2));
  painter.save();
  painter.setClipRect(place);
  renderPart(scene, painter, scale, page.area, place.topLeft().toPoint());
  painter.restore();
  if (isTile) paintMark(painter, page, place, dots);
}

void paintOrTell(const canvas::Scene& scene, QPrinter& printer, PageFit fit, QWidget* parent) {
  if (paintPages(scene, printer, fit)) return;
  const QString name = printer.outputFileName();
  QMessageBox::warning(parent, inWords("Print"),
                       inWords("The diagram could not be printed to %1.")
                           .arg(name.isEmpty() ? printer.printerName() : name));
}

void showPreview(const canvas::Scene& scene, QPrinter& printer, QWidget* parent) {
  QPrintPreviewDialog dialog(&printer, parent);
  dialog.resize(parent->window()->size() * 0.9);
  auto* choice = makeChoice(&dialog);
  QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, &dialog,
                   [&scene, &dialog, choice](QPrinter* pages) {
                     paintOrTell(scene, *pages, chosenIn(*choice), &dialog);
                   });
  auto* shown = dialog.findChild<QPrintPreviewWidget*>();
  QObject::connect(choice, &QComboBox::currentIndexChanged, &dialog, [&, shown, choice] {
    turnPaper(scene, printer, chosenIn(*choice));
    if (shown) shown->updatePreview();
  });
  if (auto* bar = dialog.findChild<QToolBar*>()) {
    bar->addSeparator();
    bar->addWidget(choice);
  }
  dialog.exec();
}

void askAndPrint(const canvas::Scene& scene, QPrinter& printer, QWidget* parent) {
  QPrintDialog dialog(&printer, parent);
  auto* tab = new QWidget(&dialog);
  tab->setWindowTitle(inWords("Diagram"));
  auto* form = new QFormLayout(tab);
  auto* choice = makeChoice(tab);
  form->addRow(inWords("Pages:"), choice);
  dialog.setOptionTabs({tab});
  const PageFit offered = keptFit();
  const QPageLayout::Orientation turned = printer.pageLayout().orientation();
  if (dialog.exec() != QDialog::Accepted) return;
  const PageFit fit = chosenIn(*choice);
  // Paper that the person turned stays so.
  if (fit != offered && printer.pageLayout().orientation() == turned) {
    turnPaper(scene, printer, fit);
  }
  paintOrTell(scene, printer, fit, parent);
}

}  // namespace

void turnPaper(const canvas::Scene& scene, QPrinter& printer, PageFit fit) {
  printer.setPageOrientation(QPageLayout::Portrait);
  if (isBetterLying(canvas::pictureArea(scene), paperOf(printer), fit)) {
    printer.setPageOrientation(QPageLayout::Landscape);
  }
}

bool paintPages(const canvas::Scene& scene, QPrinter& printer, PageFit fit) {
  const auto pages = pagesOf(canvas::pictureArea(scene), paperOf(printer), fit);
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  painter.setRenderHint(QPainter::Antialiasing);  // a preview makes hairlines thinner than a pixel
  const double dots = printer.resolution() / platform::kTwipsPerInch;
  const int last = printer.toPage() > 0 ? printer.toPage() : static_cast<int>(pages.size());
  bool first = true;
  for (int number = std::max(1, printer.fromPage()); number <= last; ++number) {
    if (number > static_cast<int>(pages.size())) break;
    if (!std::exchange(first, false)) printer.newPage();
    paintPage(scene, painter, pages[static_cast<std::size_t>(number - 1)], dots, pages.size() > 1);
  }
  return painter.end();
}

void printDiagram(const canvas::Scene& scene, bool preview, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  turnPaper(scene, printer, keptFit());
  if (preview) {
    showPreview(scene, printer, parent);
  } else {
    askAndPrint(scene, printer, parent);
  }
}

}  // namespace brisel::qt
