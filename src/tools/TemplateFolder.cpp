#include "tools/TemplateFolder.h"

#include <cstdlib>
#include <filesystem>
#include <set>
#include <system_error>

#include <unistd.h>

#include "platform/Error.h"
#include "platform/Text.h"

namespace brisel::tools {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kEnding = ".tml";

bool isFile(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

void addNames(const std::string& folder, std::set<std::string>& names) {
  std::error_code ignored;
  if (folder.empty()) return;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    const std::string name = entry.path().filename().string();
    if (name.ends_with(kEnding) && name[0] != '.' && isFile(entry.path())) names.insert(name);
  }
}

std::string withEnding(std::string_view name) {
  return std::string(name) + (name.ends_with(kEnding) ? "" : std::string(kEnding));
}

}  // namespace

std::vector<std::string> TemplateFolder::list() const {
  std::set<std::string> names;
  addNames(m_installed, names);
  addNames(m_own, names);
  return {names.begin(), names.end()};
}

std::string TemplateFolder::find(std::string_view name) const {
  const std::string path = platform::nativePath(name);
  if (path.find('/') != std::string::npos) return path;
  for (const std::string& folder : {m_own, m_installed}) {
    const fs::path file = fs::path(folder) / withEnding(name);
    if (!folder.empty() && isFile(file)) return file.string();
  }
  if (path.ends_with(kEnding) && isFile(path)) return path;
  std::string known;
  for (const std::string& other : list()) known.append(known.empty() ? "" : ", ").append(other);
  throw platform::Error(platform::ErrorNumber::fileNotFound,
                        "There is no template \"" + std::string(name) +
                            "\"; there are: " + (known.empty() ? "none" : known));
}

std::string TemplateFolder::pathToSave(std::string_view name) const {
  const std::string path = platform::nativePath(name);
  if (path.find('/') != std::string::npos) return path;
  const fs::path own = fs::path(m_own) / withEnding(name);
  const fs::path installed = fs::path(m_installed) / withEnding(name);
  const bool writable =
      ::access(installed.c_str(), W_OK) == 0 && ::access(m_installed.c_str(), W_OK) == 0;
  return !isFile(own) && isFile(installed) && writable ? installed.string() : own.string();
}

std::string ownTemplateFolder() {
  const auto variable = [](const char* name) -> std::string {
    const char* value = std::getenv(name);
    return value ? value : "";
  };
  std::string data = variable("XDG_DATA_HOME");
  if (data.empty() || data[0] != '/') {
    const std::string home = variable("HOME");
    if (home.empty()) return {};
    data = home + "/.local/share";
  }
  return data + "/brisel/Template";
}

}  // namespace brisel::tools
