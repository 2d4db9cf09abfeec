#include "interchange/ModelImport.h"

#include <memory>

#include "interchange/EcoreReader.h"
#include "interchange/ModelBuilder.h"
#include "interchange/XmiReader.h"
#include "repository/NewModel.h"

namespace brisel::interchange {

ImportReport importModel(std::vector<ModelFile> files, repository::CLSRepository& repository) {
  std::vector<std::unique_ptr<XmlFile>> parsed;
  std::vector<const XmlFile*> uml;
  std::vector<const XmlFile*> ecore;
  for (ModelFile& file : files) {
    parsed.push_back(std::make_unique<XmlFile>(std::move(file.path), std::move(file.bytes)));
    (parsed.back()->dialect() == Dialect::uml ? uml : ecore).push_back(parsed.back().get());
  }
  ModelDescription description;
  XmiReader(uml, description).read();
  EcoreReader(ecore, description).read();
  ModelBuilder(repository, description).build();
  return std::move(description.report);
}

ImportResult readModel(const std::vector<std::string>& paths,
                       platform::ComponentRegistry& registry) {
  std::vector<ModelFile> files;
  for (const std::string& path : paths) files.push_back({path, XmlFile::bytesOf(path)});
  return readModel(std::move(files), registry);
}

ImportResult readModel(std::vector<ModelFile> files, platform::ComponentRegistry& registry) {
  const auto model = repository::newModel(registry, "ModelImport");
  ImportReport report = importModel(std::move(files), *model);
  return {model->GetRepository(), std::move(report)};
}

}  // namespace brisel::interchange
