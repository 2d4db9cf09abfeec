#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "interchange/ImportReport.h"
#include "platform/Repository.h"

namespace brisel::interchange {

/// How many nodes and links a repository holds, by type, in the order in which the types became
/// known; types without instances are there with 0.
struct ModelInfo {
  std::vector<std::pair<std::string, std::int64_t>> nodes;
  std::vector<std::pair<std::string, std::int64_t>> links;
};

[[nodiscard]] ModelInfo modelInfo(const platform::MetaRepository& repository);

/// {"nodes":{type:count},"links":{type:count},"skipped":[{"kind","id","reason"}],
/// "stubs":[{"id","name"}],"notes":[{"kind","id","text"}]}, an entry a line, with a line feed at
/// its end.
[[nodiscard]] std::string infoAsJson(const ModelInfo& info, const ImportReport& report);

/// The same for a reader: counts of what is there, then a line for each entry of the report.
[[nodiscard]] std::string infoAsText(const ModelInfo& info, const ImportReport& report);

}  // namespace brisel::interchange
