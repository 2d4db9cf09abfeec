#include "Models.h"

#include <iostream>

#include "Files.h"

namespace brisel::app {

component::ModelFile readModelFiles(const std::vector<std::string>& paths,
                                    platform::ComponentRegistry& registry) {
  if (paths.size() != 1 || paths[0] != kStandard) return component::readModel(registry, paths);
  return component::readModel(registry, "standard input", readBytes(paths[0]));
}

void tellOfReport(const interchange::ImportReport& report) {
  std::string text;
  const auto add = [&text](std::size_t count, const char* one, const char* many) {
    if (count == 0) return;
    if (!text.empty()) text += ", ";
    text += std::to_string(count) + " " + (count == 1 ? one : many);
  };
  add(report.skipped.size(), "element left out", "elements left out");
  add(report.stubs.size(), "class of another file stands as a stub",
      "classes of other files stand as stubs");
  add(report.notes.size(), "element made in part", "elements made in part");
  if (!text.empty()) std::cerr << "brisel: " << text << "; brisel info lists them\n";
}

}  // namespace brisel::app
