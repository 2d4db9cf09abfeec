#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "interchange/DimReader.h"
#include "interchange/DimWriter.h"
#include "interchange/ModelImport.h"
#include "platform/ComponentRegistry.h"
#include "platform/Error.h"
#include "platform/Shell.h"
#include "repository/CLSRepository.h"
#include "store/components.h"

/// Whatever the bytes: an Error of a bad file or a model, and that model can be written and read.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brisel;
  static platform::ComponentRegistry registry(nullptr);
  static const bool isReady = (store::registerComponents(registry), true);
  if (!isReady) std::abort();

  const auto repository = registry.create<platform::MetaRepository>("BriselCLS.Meta");
  repository->Init();
  const auto generator = registry.create("BriselUtility.UUIDGenerator");
  generator->call("Init", {"fuzz"});
  const auto model = platform::make<repository::CLSRepository>();
  model->Create(generator.get());
  model->SetRepository(repository.get());
  try {
    interchange::importModel({{"fuzz.xmi", {reinterpret_cast<const char*>(data), size}}}, *model);
  } catch (const platform::Error& error) {
    if (error.number() != static_cast<int>(platform::ErrorNumber::badFile)) std::abort();
    return 0;
  }
  const std::string written = interchange::DimWriter::text(*repository);
  interchange::DimReader(registry).readText("written.dim", written);
  return 0;
}
