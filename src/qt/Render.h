#pragma once

#include <QImage>

class QIODevice;
class QPainter;
class QPoint;

namespace brisel::canvas {
class Scene;
}
namespace brisel::platform {
struct Rect;
}

namespace brisel::qt {

/// The whole diagram without any sign of what is selected, at a scale of which 1 is 100 %; smaller
/// when the picture would have more pixels than the limit. Needs a QGuiApplication, on whatever
/// platform, for its fonts.
[[nodiscard]] QImage renderToImage(const canvas::Scene& scene, double scale, double maxPixels);

/// The same on one page of a PDF that fits the diagram, with the text as text. False when the
/// device cannot be written.
[[nodiscard]] bool renderToPdf(const canvas::Scene& scene, QIODevice& device);

/// A part of the diagram, in twips, with its upper left corner at a point of the painter's device,
/// at so many pixels of the device to a twip.
void renderPart(const canvas::Scene& scene, QPainter& painter, double scale,
                const platform::Rect& area, QPoint at);

}  // namespace brisel::qt
