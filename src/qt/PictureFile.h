#pragma once

#include <string>

namespace brisel::canvas {
class Scene;
}

namespace brisel::qt {

/// The kinds of picture that can be written, as the shell's dialogs take them.
inline constexpr const char* kPictureFilter =
    "SVG drawing (*.svg)|*.svg|PNG picture (*.png)|*.png|PDF page (*.pdf)|*.pdf";

/// Writes the whole diagram to a file whose ending tells the kind: ".svg", ".png", ".pdf". An Error
/// names the file and the cause; an old file is then as it was. Needs a QGuiApplication.
void writePicture(const canvas::Scene& scene, const std::string& path);

}  // namespace brisel::qt
