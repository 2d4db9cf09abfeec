#include "tools/OutputFolder.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

#include <stdlib.h>

#include "platform/Error.h"

namespace brisel::tools {

namespace fs = std::filesystem;
using platform::Error;
using platform::ErrorNumber;

namespace {

[[noreturn]] void fail(const fs::path& path, const std::string& cause) {
  throw Error(ErrorNumber::fileAccess, "Cannot write " + path.string() + ": " + cause);
}

void check(const std::error_code& error, const fs::path& path) {
  if (error) fail(path, error.message());
}

/// What is on the way from the folder to the file must be folders, as far as it is there.
void checkParents(const fs::path& folder, const fs::path& file) {
  for (fs::path parent = file.parent_path();; parent = parent.parent_path()) {
    std::error_code error;
    const auto status = fs::status(parent, error);
    if (fs::exists(status) && !fs::is_directory(status))
      fail(file, parent.string() + " is no folder");
    if (parent == folder || parent.empty() || parent == parent.parent_path()) return;
  }
}

std::string joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
  return text;
}

/// A folder beside what is to be written, for the files until all of them are there. Takes itself
/// away, and so does a folder that was made for it alone.
class Stage {
 public:
  explicit Stage(const fs::path& folder) : m_folder(folder) {
    std::error_code error;
    for (fs::path made = fs::absolute(folder); !fs::exists(made, error);) {
      m_made = made;
      if (made == made.parent_path()) break;
      made = made.parent_path();
    }
    fs::create_directories(folder, error);
    if (error) {
      const std::string cause = error.message();
      removeMade();
      fail(folder, cause);
    }
    std::string name = (folder / ".brisel-XXXXXX").string();
    if (!::mkdtemp(name.data())) {
      const std::string cause = std::system_category().message(errno);
      removeMade();
      fail(folder, cause);
    }
    m_path = name;
  }
  ~Stage() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
    if (!m_isKept) removeMade();
  }
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  [[nodiscard]] fs::path pathOf(std::size_t number) const {
    return m_path / std::to_string(number);
  }
  void keep() { m_isKept = true; }

  void write(std::size_t number, const std::string& text, const fs::path& target) const {
    errno = 0;
    std::ofstream file(pathOf(number), std::ios::binary);
    file.write(text.data(), static_cast<std::streamsize>(text.size()));
    file.close();
    if (!file) fail(target, std::system_category().message(errno));
    std::error_code error;
    const auto old = fs::status(target, error);
    if (fs::exists(old)) fs::permissions(pathOf(number), old.permissions(), error);
  }

 private:
  void removeMade() const {
    std::error_code ignored;
    if (!m_made.empty()) fs::remove_all(m_made, ignored);
  }

  fs::path m_folder;
  fs::path m_path;
  fs::path m_made;  ///< the outermost folder that was not there before
  bool m_isKept = false;
};

}  // namespace

OutputPlan planOutput(const std::string& folder, const std::vector<GeneratedFile>& files) {
  OutputPlan plan;
  for (const GeneratedFile& file : files) {
    const fs::path path = fs::path(folder) / file.name;
    checkParents(folder, path);
    std::error_code error;
    const auto status = fs::status(path, error);
    if (!fs::exists(status)) {
      plan.made.push_back(file.name);
    } else if (!fs::is_regular_file(status)) {
      fail(path, "it is no file");
    } else if (fs::file_size(path, error) == file.text.size() &&
               readTextFile(path.string()) == file.text) {
      plan.same.push_back(file.name);
    } else {
      plan.differing.push_back(file.name);
    }
  }
  return plan;
}

OutputPlan writeOutput(const std::string& folder, const std::vector<GeneratedFile>& files,
                       bool force) {
  OutputPlan plan = planOutput(folder, files);
  if (!force && !plan.differing.empty()) {
    throw Error(ErrorNumber::fileAccess,
                "Nothing was written, since these files in " + folder +
                    " differ from what would be written: " + joined(plan.differing));
  }
  if (plan.same.size() == files.size()) return plan;
  Stage stage{fs::path(folder)};
  std::vector<bool> isSame(files.size());
  for (std::size_t i = 0, same = 0; i < files.size(); ++i) {
    isSame[i] = same < plan.same.size() && plan.same[same] == files[i].name;
    same += isSame[i] ? 1 : 0;
    if (!isSame[i]) stage.write(i, files[i].text, fs::path(folder) / files[i].name);
  }
  std::error_code error;
  for (const GeneratedFile& file : files) {
    const fs::path parent = (fs::path(folder) / file.name).parent_path();
    fs::create_directories(parent, error);
    check(error, parent);
  }
  stage.keep();
  for (std::size_t i = 0; i < files.size(); ++i) {
    if (isSame[i]) continue;
    const fs::path path = fs::path(folder) / files[i].name;
    fs::rename(stage.pathOf(i), path, error);
    check(error, path);
  }
  return plan;
}

std::string readTextFile(const std::string& path) {
  std::error_code error;
  const auto cannot = [&path](ErrorNumber number, const std::string& cause) {
    throw Error(number, path + ": " + cause);
  };
  if (fs::is_directory(path, error)) cannot(ErrorNumber::fileAccess, "it is a folder");
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  if (!file) cannot(ErrorNumber::fileNotFound, std::system_category().message(errno));
  std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (file.bad()) cannot(ErrorNumber::fileAccess, "it cannot be read");
  return text;
}

void writeTextFile(const std::string& path, const std::string& text) {
  const fs::path target = fs::absolute(path);
  writeOutput(target.parent_path().string(), {{target.filename().string(), text}}, true);
}

}  // namespace brisel::tools
