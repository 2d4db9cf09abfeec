#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Model.h"
#include "tools/Generation.h"
#include "tools/OutputFolder.h"

namespace brisel::tools {

/// A folder that goes with the test.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "brisel-XXXXXX").string();
    m_path = ::mkdtemp(name.data());
  }
  ~TemporaryFolder() { std::filesystem::remove_all(m_path); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  [[nodiscard]] std::string path() const { return m_path.string(); }
  [[nodiscard]] std::string path(const std::string& name) const { return (m_path / name).string(); }

 private:
  std::filesystem::path m_path;
};

inline std::string installedTemplate(const std::string& name) {
  return readTextFile(BRISEL_SOURCE_DIR "/data/templates/" + name);
}

/// A run of a template over all classes of a model, or over those of the names.
inline std::unique_ptr<Generation> generate(platform::MetaRepository& store,
                                            const std::string& text,
                                            const std::vector<std::string>& names = {}) {
  auto model = std::make_shared<CodeModel>(store);
  TemplateRoot root{"test", {}};
  for (const std::string& name : names) {
    for (const CodeClass* cls : model->find(name)) root.selected.push_back(cls);
  }
  if (names.empty()) {
    for (const auto& cls : model->classes()) root.selected.push_back(cls.get());
  }
  auto generation = std::make_unique<Generation>("test.tml", text, model, std::move(root));
  generation->run();
  return generation;
}

/// What a template makes in its one file; its fault as "line: cause".
inline std::string output(platform::MetaRepository& store, const std::string& text,
                          const std::vector<std::string>& names = {}) {
  const auto generation = generate(store, text, names);
  if (const auto& fault = generation->fault()) {
    return std::to_string(fault->line) + ": " + fault->cause;
  }
  return generation->files().empty() ? "" : generation->files().front().text;
}

/// What a command writes to standard output and error, and whether it succeeded.
struct CommandResult {
  bool succeeded;
  std::string said;
};
inline CommandResult runCommand(const std::string& command) {
  const TemporaryFolder folder;
  const std::string log = folder.path("log");
  const int code = std::system(("(" + command + ") >'" + log + "' 2>&1").c_str());
  return {code == 0, readTextFile(log)};
}

/// Compiles every source in the folder: each alone, so that its header must stand alone too, or all
/// of them as one.
enum class Compile { alone, together };
inline void expectCompiles(const std::string& folder, Compile how) {
  const std::string compiler = "c++ -std=c++20 -Wall -Wextra -Werror -fsyntax-only ";
  const auto result =
      runCommand("cd '" + folder + "' && " +
                 (how == Compile::alone
                      ? "ls *.cpp | xargs -P2 -n8 " + compiler
                      : "printf '#include \"%s\"\\n' *.hpp *.cpp | " + compiler + "-I. -x c++ -"));
  EXPECT_TRUE(result.succeeded) << result.said.substr(0, 4000);
}

}  // namespace brisel::tools
