#pragma once

#include <string>
#include <vector>

#include "repository/CLSRepository.h"

namespace brisel::editor {

/// What a demo model added to a repository, by identifier.
struct DemoModel {
  std::vector<std::string> classes;
  std::vector<std::string> relationships;
};

/// Adds a small shop to the model: classes of every category, members, and relationships of every
/// kind. Whatever is there stays; data types and stereotypes of the same names are used again. Each
/// call makes another shop.
DemoModel makeDemoModel(repository::CLSRepository& model);

}  // namespace brisel::editor
