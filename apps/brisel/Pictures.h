#pragma once

#include <string>

namespace brisel::canvas {
class Scene;
}

namespace brisel::app {

/// The diagram as a PNG file at a scale of which 1 is 100 %. Needs no display. An Error in a
/// program that was built without Qt.
[[nodiscard]] std::string drawPng(const canvas::Scene& scene, double scale);
/// The diagram as a PDF file of one page.
[[nodiscard]] std::string drawPdf(const canvas::Scene& scene);

}  // namespace brisel::app
