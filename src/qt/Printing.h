#pragma once

class QPrinter;
class QWidget;

namespace brisel::canvas {
class Scene;
}

namespace brisel::qt {

/// Asks for a printer and prints the whole diagram on one page, or shows the preview of that first.
void printDiagram(const canvas::Scene& scene, bool preview, QWidget* parent);

/// Paints the diagram on one page of the printer, as large as it fits, 100 % at most.
void paintPage(const canvas::Scene& scene, QPrinter& printer);

}  // namespace brisel::qt
