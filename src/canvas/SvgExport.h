#pragma once

#include <string>

#include "platform/Geometry.h"

namespace brisel::canvas {

class Scene;
class Selection;

/// Around the diagram with a margin, as pictures and pages show it.
[[nodiscard]] platform::Rect pictureArea(const Scene& scene);

/// The whole diagram as an SVG document, without any sign of what is selected.
[[nodiscard]] std::string toSvg(const Scene& scene);
/// Just what is selected; the whole diagram when nothing is.
[[nodiscard]] std::string toSvg(const Scene& scene, const Selection& selection);

}  // namespace brisel::canvas
