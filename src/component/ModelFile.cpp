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

/// A DIM file is JSON; all the others are XML.
bool isJson(std::string_view bytes) {
  const std::size_t first = bytes.find_first_not_of(" \t\r\n");
  return first != std::string_view::npos && (bytes[first] == '{' || bytes[first] == '[');
}

ModelFile fromOtherTool(interchange::ImportResult imported) {
  return {imported.repository, std::move(imported.report), false};
}

}  // namespace

ModelFile readModel(platform::ComponentRegistry& registry, const std::vector<std::string>& files) {
  if (files.empty()) throw Error(ErrorNumber::invalidCall, "No file was named");
  const auto diagrams = std::count_if(files.begin(), files.end(), isDim);
  if (diagrams == 0) return fromOtherTool(interchange::readModel(files, registry));
  if (static_cast<std::size_t>(diagrams) < files.size()) {
    throw Error(ErrorNumber::badFile,
                "DIM files and files of other tools cannot be read as one model");
  }
  return {interchange::DimReader(registry).read(files), {}, files.size() == 1};
}

ModelFile readModel(platform::ComponentRegistry& registry, const std::string& name,
                    std::string bytes) {
  if (isJson(bytes)) return {interchange::DimReader(registry).readText(name, bytes), {}, true};
  std::vector<interchange::ModelFile> files;
  files.push_back({name, std::move(bytes)});
  return fromOtherTool(interchange::readModel(std::move(files), registry));
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

}  // namespace brisel::component
