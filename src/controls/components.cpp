#include "controls/components.h"

#include "controls/ToolBarControl.h"

namespace brisel::controls {

void registerComponents(platform::ComponentRegistry& registry) {
  registry.add("BriselControls.ActiveBar", [](platform::ComponentRegistry& made) {
    return platform::make<ToolBarControl>(made);
  });
}

}  // namespace brisel::controls
