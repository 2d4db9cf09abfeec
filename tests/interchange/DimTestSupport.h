#pragma once

#include <string>
#include <string_view>

#include "interchange/DimReader.h"
#include "interchange/DimWriter.h"
#include "interchange/components.h"
#include "platform/ComponentRegistry.h"
#include "platform/Error.h"
#include "platform/Shell.h"
#include "store/components.h"

namespace brisel::interchange {

using platform::Error;
using platform::ErrorNumber;
using platform::MetaRepository;
using platform::Node;
using platform::Ref;
using platform::Value;

/// A registry with the store and this room in it, and short words for what the tests do with them.
class DimKit {
 public:
  DimKit() {
    store::registerComponents(registry);
    registerComponents(registry);
  }

  [[nodiscard]] Ref<MetaRepository> empty() {
    auto repository = registry.create<MetaRepository>("BriselCLS.Meta");
    repository->Init();
    return repository;
  }
  [[nodiscard]] Ref<MetaRepository> read(std::string_view text) {
    return DimReader(registry).readText("model.dim", text);
  }
  [[nodiscard]] std::string again(std::string_view text) { return DimWriter::text(*read(text)); }

  platform::ComponentRegistry registry{nullptr};
};

/// A whole file around the lines, which end with a comma and a line break.
inline std::string dimFile(std::string_view lines) {
  return "[{\"format\":\"DIM\",\"version\":1,\"kind\":\"BriselCLS\"},\n" + std::string(lines) +
         "{\"end\":\"DIM\"}]\n";
}

/// The description and number of the Error that the call raises.
struct Failure {
  std::string text;
  ErrorNumber number{};
};
template <class Call>
Failure failureOf(Call call) {
  try {
    call();
  } catch (const Error& error) {
    return {error.what(), static_cast<ErrorNumber>(error.number())};
  }
  return {"no error", {}};
}

inline Ref<Node> nodeOf(const MetaRepository& repository, std::string_view type,
                        std::string_view identifier) {
  return platform::as<Node>(repository.MetaNodes(type)->find(identifier));
}

}  // namespace brisel::interchange
