#pragma once

#include <string>
#include <vector>

#include "interchange/ImportReport.h"
#include "platform/ComponentRegistry.h"
#include "platform/Repository.h"
#include "repository/CLSRepository.h"

/// The way in for models of other tools: Eclipse UML2, XMI 2.x with UML 2, and Ecore. Which of them
/// a file is, is told by what it holds, not by its name. docs/import.md has the mapping.
namespace brisel::interchange {

/// A file in memory; the path is how messages and the references of other files call it.
struct ModelFile {
  std::string path;
  std::string bytes;
};

struct ImportResult {
  platform::Ref<platform::MetaRepository> repository;
  ImportReport report;
};

/// Reads the files of one model, which may refer to each other, into a new repository. All of them
/// are read before anything is made. An Error with one line "path:line: cause" when a file cannot
/// be read as a model; nothing has been made then.
[[nodiscard]] ImportResult readModel(const std::vector<std::string>& paths,
                                     platform::ComponentRegistry& registry);

/// The same from memory.
[[nodiscard]] ImportResult readModel(std::vector<ModelFile> files,
                                     platform::ComponentRegistry& registry);

/// The same into a repository that is set up.
ImportReport importModel(std::vector<ModelFile> files, repository::CLSRepository& repository);

}  // namespace brisel::interchange
