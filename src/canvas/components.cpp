#include "canvas/components.h"

#include "canvas/DiagramControl.h"
#include "platform/ComponentRegistry.h"

namespace brisel::canvas {

void registerComponents(platform::ComponentRegistry& registry) {
  registry.add("BriselDiagram.diagramControl", [](platform::ComponentRegistry& made) {
    return platform::make<DiagramControl>(made);
  });
}

}  // namespace brisel::canvas
