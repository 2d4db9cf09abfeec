#include "interchange/components.h"

#include "interchange/DIMExport.h"
#include "interchange/DIMImport.h"
#include "interchange/FileList.h"

namespace brisel::interchange {

using platform::ComponentRegistry;
using platform::make;

void registerComponents(ComponentRegistry& registry) {
  registry.add("BriselImporter.DIMImport",
               [](ComponentRegistry& all) { return make<DIMImport>(all); });
  registry.add("BriselImporter.FileList", [](ComponentRegistry&) { return make<FileList>(); });
  registry.add("BriselExporter.DIMExport", [](ComponentRegistry&) { return make<DIMExport>(); });
}

}  // namespace brisel::interchange
