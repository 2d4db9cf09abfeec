#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"

namespace brisel::interchange {

/// Reads DIM files into a new repository ("BriselCLS.Meta" of the registry). Several files become
/// one model: their nodes and links in the order of the files, where a link may end at a node of
/// an earlier file; of several view settings the first count. All errors (badFile) name file, line
/// and cause; nothing comes back then.
class DimReader {
 public:
  explicit DimReader(platform::ComponentRegistry& registry);

  [[nodiscard]] platform::Ref<platform::MetaRepository> read(std::span<const std::string> files);
  [[nodiscard]] platform::Ref<platform::MetaRepository> read(const std::string& file) {
    return read(std::span(&file, 1));
  }
  /// Text in memory; the name is what errors call it.
  [[nodiscard]] platform::Ref<platform::MetaRepository> readText(const std::string& name,
                                                                 std::string_view text);

 private:
  platform::ComponentRegistry& m_registry;
};

}  // namespace brisel::interchange
