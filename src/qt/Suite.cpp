#include "qt/Suite.h"

#include "component/Suite.h"
#include "qt/ShownDiagramWindow.h"
#include "repository/NewModel.h"
#include "repository/ViewDefaults.h"

namespace brisel::qt {

void registerSuite(platform::ComponentRegistry& registry) {
  component::registerSuite(registry);
  registry.add("BriselCLS.DiagramWindow", [](platform::ComponentRegistry& made) {
    return platform::make<ShownDiagramWindow>(made, FormWindow::Modal::waits);
  });
}

Suite::Suite() { registerSuite(m_registry); }

Suite& Suite::instance() {
  static Suite suite;
  return suite;
}

platform::Ref<platform::MetaRepository> Suite::newModel() {
  const auto model = repository::newModel(m_registry, "Application");
  repository::makeLayoutNode(*model);
  return model->GetRepository();
}

}  // namespace brisel::qt
