#include "interchange/ModelImport.h"

#include <memory>

#include "interchange/EcoreReader.h"
#include "interchange/ModelBuilder.h"
#include "interchange/XmiReader.h"

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

  const auto repository = registry.create<platform::MetaRepository>("BriselCLS.Meta");
  repository->Init();
  const platform::Ref<platform::Object> generator = registry.create("BriselUtility.UUIDGenerator");
  generator->call("Init", {"ModelImport"});
  const auto model = platform::make<repository::CLSRepository>();
  model->Create(generator.get());
  model->SetRepository(repository.get());
  return {repository, importModel(std::move(files), *model)};
}

}  // namespace brisel::interchange
