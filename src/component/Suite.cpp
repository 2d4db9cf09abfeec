#include "component/Suite.h"

#include "canvas/components.h"
#include "component/DataFolder.h"
#include "component/DiagramWindow.h"
#include "component/HostObject.h"
#include "controls/components.h"
#include "editor/CLSEditor.h"
#include "editors/CLSAssociationControl.h"
#include "editors/CLSClassControl.h"
#include "editors/CLSSelectStereotype.h"
#include "interchange/components.h"
#include "repository/CLSRepository.h"
#include "store/components.h"
#include "tools/MatrixBrowser.h"
#include "tools/Template.h"

namespace brisel::component {

using platform::ComponentRegistry;
using platform::make;

void registerSuite(ComponentRegistry& registry) {
  if (registry.installationFolder().empty()) registry.installationFolder(dataFolder());
  store::registerComponents(registry);
  canvas::registerComponents(registry);
  controls::registerComponents(registry);
  interchange::registerComponents(registry);
  registry.add("BriselCLS.CLSRepository",
               [](ComponentRegistry&) { return make<repository::CLSRepository>(); });
  registry.add("BriselCLS.CLSEditor",
               [](ComponentRegistry& made) { return make<editor::CLSEditor>(made); });
  registry.add("BriselCLS.DiagramWindow",
               [](ComponentRegistry& made) { return make<DiagramWindow>(made); });
  registry.add("BriselCLS.CLSClassControl",
               [](ComponentRegistry& made) { return make<editors::CLSClassControl>(made); });
  registry.add("BriselCLS.CLSAssociationControl", [](ComponentRegistry& made) {
    return make<editors::CLSAssociationControl>(made);
  });
  registry.add("BriselCLS.CLSSelectStereotype",
               [](ComponentRegistry&) { return make<editors::CLSSelectStereotype>(); });
  registry.add("BriselUtility.MatrixBrowser",
               [](ComponentRegistry& made) { return make<tools::MatrixBrowser>(made); });
  registry.add("BriselTemplateEditor.Template",
               [](ComponentRegistry& made) { return make<tools::Template>(made); });
  registry.add("Brisel.HostObject", [](ComponentRegistry&) { return make<HostObject>(); });
}

}  // namespace brisel::component
