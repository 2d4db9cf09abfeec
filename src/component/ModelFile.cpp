#include "component/ModelFile.h"

#include <algorithm>
#include <filesystem>

#include "interchange/DimReader.h"
#include "interchange/ModelImport.h"
#include "platform/Error.h"
#include "platform/Text.h"

namespace brisel::component {

using interchange::ImportReport;
using platform::Error;
using platform::ErrorNumber;

namespace {

bool isDim(const std::string& file) {
  return platform::equalsIgnoringCase(std::filesystem::path(file).extension().string(), ".dim");
}

std::vector<std::string> notesOf(const ImportReport& report) {
  std::vector<std::string> notes;
  for (const ImportReport::Skipped& skipped : report.skipped) {
    notes.push_back("Left out: " + skipped.kind + " " + skipped.id + ": " + skipped.reason);
  }
  for (const ImportReport::Stub& stub : report.stubs) {
    notes.push_back("Stands for a class of another file: " + stub.name);
  }
  for (const ImportReport::Note& note : report.notes) {
    notes.push_back("Made in part: " + note.kind + " " + note.id + ": " + note.text);
  }
  return notes;
}

}  // namespace

ModelFile readModel(platform::ComponentRegistry& registry, const std::vector<std::string>& files) {
  if (files.empty()) throw Error(ErrorNumber::invalidCall, "No file was named");
  const auto diagrams = std::count_if(files.begin(), files.end(), isDim);
  if (diagrams == 0) {
    interchange::ImportResult imported = interchange::readModel(files, registry);
    return {imported.repository, false, notesOf(imported.report)};
  }
  if (static_cast<std::size_t>(diagrams) < files.size()) {
    throw Error(ErrorNumber::badFile,
                "DIM files and files of other tools cannot be read as one model");
  }
  return {interchange::DimReader(registry).read(files), files.size() == 1, {}};
}

}  // namespace brisel::component
