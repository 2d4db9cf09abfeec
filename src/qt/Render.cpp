#include "qt/Render.h"

#include <QMarginsF>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <algorithm>
#include <cmath>
#include <vector>

#include "canvas/Scene.h"
#include "canvas/ScenePainter.h"
#include "canvas/SvgExport.h"
#include "qt/QtPainter.h"

namespace brisel::qt {

using platform::kTwipsPerInch;
using platform::kTwipsPerPixel;
using platform::kTwipsPerPoint;
using platform::Rect;

namespace {

/// The largest side of a page that PDF readers accept (ISO 32000, annex C).
constexpr double kLargestPage = 14400 * kTwipsPerPoint;

void paintAll(const canvas::Scene& scene, QPainter& painter, double scale, QPoint offset,
              const Rect& area) {
  std::vector<const canvas::Node*> nodes;
  std::vector<const canvas::Link*> links;
  scene.itemsIn(area, nodes, links);
  FixedFonts fonts;
  QtPainter target(painter, fonts, scale, offset);
  canvas::ScenePainter scenePainter(scene, target, scale);
  scenePainter.paintGround(area);
  scenePainter.paintItems(nodes, links);
}

QPoint offsetOf(const Rect& area, double scale) {
  return {static_cast<int>(std::floor(area.left * scale)),
          static_cast<int>(std::floor(area.top * scale))};
}

}  // namespace

QImage renderToImage(const canvas::Scene& scene, double scale, double maxPixels) {
  const Rect area = canvas::pictureArea(scene);
  double pixelsPerTwip = scale / kTwipsPerPixel;
  const double pixels = area.width * area.height * pixelsPerTwip * pixelsPerTwip;
  if (pixels > maxPixels) pixelsPerTwip *= std::sqrt(maxPixels / pixels);
  const QSize size(std::max(1, static_cast<int>(std::ceil(area.width * pixelsPerTwip))),
                   std::max(1, static_cast<int>(std::ceil(area.height * pixelsPerTwip))));
  QImage image(size, QImage::Format_RGB32);
  if (image.isNull()) return image;
  QPainter painter(&image);
  paintAll(scene, painter, pixelsPerTwip, offsetOf(area, pixelsPerTwip),
           area.grownBy(2 / pixelsPerTwip));
  return image;
}

bool renderToPdf(const canvas::Scene& scene, QIODevice& device) {
  const Rect area = canvas::pictureArea(scene);
  const double scale = std::min(1.0, kLargestPage / std::max(area.width, area.height));
  QPdfWriter writer(&device);
  writer.setResolution(static_cast<int>(kTwipsPerInch));
  const QSizeF page(area.width * scale / kTwipsPerPoint, area.height * scale / kTwipsPerPoint);
  writer.setPageSize(QPageSize(page, QPageSize::Point, QString(), QPageSize::ExactMatch));
  writer.setPageMargins(QMarginsF());
  QPainter painter;
  if (!painter.begin(&writer)) return false;
  paintAll(scene, painter, scale, offsetOf(area, scale), area);
  return painter.end();
}

void renderPart(const canvas::Scene& scene, QPainter& painter, double scale, const Rect& area,
                QPoint at) {
  paintAll(scene, painter, scale, offsetOf(area, scale) - at, area);
}

}  // namespace brisel::qt
