#include "qt/PictureFile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QSaveFile>

#include "canvas/SvgExport.h"
#include "platform/Error.h"
#include "qt/Render.h"
#include "qt/Text.h"

namespace brisel::qt {

using platform::Error;
using platform::ErrorNumber;

namespace {

constexpr double kPictureScale = 1;
constexpr double kMostPixels = 120e6;

QByteArray pictureBytes(const canvas::Scene& scene, const QString& kind) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (kind == "svg") {
    bytes = QByteArray::fromStdString(canvas::toSvg(scene));
  } else if (kind == "png") {
    renderToImage(scene, kPictureScale, kMostPixels).save(&buffer, "PNG");
  } else if (kind == "pdf") {
    if (!renderToPdf(scene, buffer)) bytes.clear();
  }
  return bytes;
}

}  // namespace

void writePicture(const canvas::Scene& scene, const std::string& path) {
  const QString kind = QFileInfo(toQt(path)).suffix().toLower();
  const QByteArray bytes = pictureBytes(scene, kind);
  if (bytes.isEmpty()) {
    throw Error(ErrorNumber::invalidCall, path + ": not a kind of picture that can be written; " +
                                              "the name must end in .svg, .png or .pdf");
  }
  QSaveFile file(toQt(path));
  const bool written = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
  if (!written || !file.commit()) {
    throw Error(ErrorNumber::fileAccess, path + ": " + fromQt(file.errorString()));
  }
}

}  // namespace brisel::qt
