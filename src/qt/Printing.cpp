#include "qt/Printing.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QSvgRenderer>
#include <algorithm>

#include "canvas/SvgExport.h"

namespace brisel::qt {

void paintPage(const canvas::Scene& scene, QPrinter& printer) {
  QSvgRenderer drawing(QByteArray::fromStdString(canvas::toSvg(scene)));
  QPainter painter(&printer);
  if (!painter.isActive() || !drawing.isValid()) return;
  const double dotsPerTwip = printer.resolution() / platform::kTwipsPerInch;
  const platform::Rect area = canvas::pictureArea(scene);
  QSizeF size(area.width * dotsPerTwip, area.height * dotsPerTwip);
  const QRectF page = painter.viewport();
  if (size.width() > page.width() || size.height() > page.height()) {
    size.scale(page.size(), Qt::KeepAspectRatio);
  }
  drawing.render(&painter, QRectF(page.topLeft(), size));
}

void printDiagram(const canvas::Scene& scene, bool preview, QWidget* parent) {
  QPrinter printer(QPrinter::HighResolution);
  const platform::Rect area = canvas::pictureArea(scene);
  const bool wide = area.width > area.height;
  printer.setPageOrientation(wide ? QPageLayout::Landscape : QPageLayout::Portrait);
  if (preview) {
    QPrintPreviewDialog dialog(&printer, parent);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, parent,
                     [&scene](QPrinter* page) { paintPage(scene, *page); });
    dialog.exec();
    return;
  }
  QPrintDialog dialog(&printer, parent);
  if (dialog.exec() == QDialog::Accepted) paintPage(scene, printer);
}

}  // namespace brisel::qt
