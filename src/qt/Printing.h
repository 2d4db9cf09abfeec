#pragma once

#include "canvas/Pages.h"

class QPrinter;
class QWidget;

namespace brisel::canvas {
class Scene;
}

namespace brisel::qt {

/// Asks for a printer and prints the diagram, or shows the preview of that first. A person chooses
/// there whether it is fitted on one page or tiled over several; the choice is kept for next time.
void printDiagram(const canvas::Scene& scene, bool preview, QWidget* parent);

/// Turns the paper as suits the diagram.
void turnPaper(const canvas::Scene& scene, QPrinter& printer, canvas::PageFit fit);
/// Paints the pages that the printer was told to print, which is all of them unless a range was
/// set. Tiles carry a mark "row/column" and lines to cut along. False when the printer cannot be
/// written to.
bool paintPages(const canvas::Scene& scene, QPrinter& printer, canvas::PageFit fit);

}  // namespace brisel::qt
