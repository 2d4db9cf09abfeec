#include "Models.h"

#include <algorithm>

#include "Files.h"
#include "UsageError.h"
#include "interchange/DimReader.h"

namespace brisel::app {

using interchange::DimReader;
using interchange::ImportResult;

namespace {

constexpr std::string_view kStandardInput = "standard input";

/// A DIM file is JSON; all the others are XML.
bool isJson(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && (bytes[first] == '{' || bytes[first] == '[');
}

ImportResult readStandardInput(platform::ComponentRegistry& registry) {
  std::string bytes = readBytes(std::string(kStandard));
  const std::string name(kStandardInput);
  if (isJson(bytes)) return {DimReader(registry).readText(name, bytes), {}};

  const auto repository = registry.create<platform::MetaRepository>("BriselCLS.Meta");
  repository->Init();
  const auto generator = registry.create("BriselUtility.UUIDGenerator");
  generator->call("Init", {name});
  const auto model = registry.create<repository::CLSRepository>("BriselCLS.CLSRepository");
  model->Create(generator.get());
  model->SetRepository(repository.get());
  return {repository, interchange::importModel({{name, std::move(bytes)}}, *model)};
}

}  // namespace

ImportResult readModelFiles(const std::vector<std::string>& paths,
                            platform::ComponentRegistry& registry) {
  if (paths.size() == 1 && paths[0] == kStandard) return readStandardInput(registry);
  const auto isDim = [](const std::string& path) { return endingOf(path) == ".dim"; };
  const auto dims = std::count_if(paths.begin(), paths.end(), isDim);
  if (dims == 0) return interchange::readModel(paths, registry);
  if (static_cast<std::size_t>(dims) < paths.size()) {
    throw UsageError("DIM files and files of other tools cannot be read as one model");
  }
  return {DimReader(registry).read(paths), {}};
}

}  // namespace brisel::app
