#include "controls/components.h"

#include "controls/Combo.h"
#include "controls/ListEditor.h"
#include "controls/ListView.h"
#include "controls/Property.h"
#include "controls/ToolBarControl.h"

namespace brisel::controls {

using platform::ComponentRegistry;
using platform::make;

void registerComponents(ComponentRegistry& registry) {
  registry.add("BriselControls.ActiveBar",
               [](ComponentRegistry& made) { return make<ToolBarControl>(made); });
  registry.add("BriselControls.ListView", [](ComponentRegistry&) { return make<ListView>(); });
  registry.add("BriselControls.Combo", [](ComponentRegistry&) { return make<Combo>(); });
  registry.add("BriselControls.Property", [](ComponentRegistry&) { return make<Property>(); });
  registry.add("BriselControls.ListEditor",
               [](ComponentRegistry& made) { return make<ListEditor>(made); });
}

}  // namespace brisel::controls
