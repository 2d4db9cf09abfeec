#include <QBuffer>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <optional>

#include "Pictures.h"
#include "platform/Error.h"
#include "qt/Render.h"

namespace brisel::app {

namespace {

/// Beyond this a picture is drawn smaller; at four bytes each they take 400 MB.
constexpr double kMostPixels = 100e6;

/// The fonts of Qt, without a display. Qt gets a runtime folder of its own: it complains on
/// standard error about one that is missing or belongs to somebody else.
class Offscreen {
 public:
  Offscreen() {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_RUNTIME_DIR", m_runtimeFolder.path().toLocal8Bit());
    m_application.emplace(m_count, m_arguments);
  }

 private:
  QTemporaryDir m_runtimeFolder;
  char m_name[7] = "brisel";
  char* m_arguments[2] = {m_name, nullptr};
  int m_count = 1;
  std::optional<QGuiApplication> m_application;
};

[[noreturn]] void fail(const char* kind) {
  throw platform::Error(platform::ErrorNumber::fileAccess,
                        std::string("the diagram cannot be drawn as ") + kind);
}

}  // namespace

std::string drawPng(const canvas::Scene& scene, double scale) {
  const Offscreen offscreen;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!qt::renderToImage(scene, scale, kMostPixels).save(&buffer, "PNG")) fail("PNG");
  return bytes.toStdString();
}

std::string drawPdf(const canvas::Scene& scene) {
  const Offscreen offscreen;
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!qt::renderToPdf(scene, buffer)) fail("PDF");
  return bytes.toStdString();
}

}  // namespace brisel::app
