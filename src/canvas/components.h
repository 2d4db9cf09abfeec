#pragma once

namespace brisel::platform {
class ComponentRegistry;
}

namespace brisel::canvas {

/// "BriselDiagram.diagramControl".
void registerComponents(platform::ComponentRegistry& registry);

}  // namespace brisel::canvas
