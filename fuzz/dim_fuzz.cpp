#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "interchange/DimReader.h"
#include "interchange/DimWriter.h"
#include "platform/ComponentRegistry.h"
#include "platform/Error.h"
#include "platform/Shell.h"
#include "store/components.h"

/// Whatever the bytes: an Error of a bad file or a model, and what is written of a model reads as
/// the same again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brisel;
  static platform::ComponentRegistry registry(nullptr);
  static const bool isReady = (store::registerComponents(registry), true);
  if (!isReady) std::abort();

  interchange::DimReader reader(registry);
  platform::Ref<platform::MetaRepository> model;
  try {
    model = reader.readText("fuzz.dim", {reinterpret_cast<const char*>(data), size});
  } catch (const platform::Error& error) {
    if (error.number() != static_cast<int>(platform::ErrorNumber::badFile)) std::abort();
    return 0;
  }
  const std::string first = interchange::DimWriter::text(*model);
  if (interchange::DimWriter::text(*reader.readText("again.dim", first)) != first) std::abort();
  return 0;
}
