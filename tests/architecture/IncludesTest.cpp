#include <cctype>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;

using Rooms = std::set<std::string>;

/// Which rooms the files of a room may include: the arrows of the picture in docs/architecture.md.
const std::map<std::string, Rooms>& arrows() {
  static const Rooms kToolkitFree = {"platform",   "store",   "layout", "controls",    "canvas",
                                     "repository", "editors", "editor", "interchange", "tools"};
  static const auto kArrows = [] {
    Rooms shell = kToolkitFree;
    shell.insert("component");
    Rooms all = shell;
    all.insert("qt");
    return std::map<std::string, Rooms>{
        {"platform", {}},
        {"store", {"platform"}},
        {"layout", {"platform"}},
        {"controls", {"platform"}},
        {"canvas", {"platform", "layout"}},
        {"repository", {"platform"}},
        {"editors", {"repository", "controls", "platform"}},
        {"editor", {"editors", "repository", "controls", "platform"}},
        {"interchange", {"repository", "platform"}},
        {"tools", {"repository", "platform"}},
        {"component", kToolkitFree},
        {"qt", shell},
        {"apps", all},
    };
  }();
  return kArrows;
}

struct Include {
  std::string file;
  std::size_t line;
  std::string room;    ///< of the file
  std::string target;  ///< as written between the quotes or brackets
  bool quoted;

  [[nodiscard]] std::string targetRoom() const { return target.substr(0, target.find('/')); }
  [[nodiscard]] std::string place() const { return file + ":" + std::to_string(line); }
};

bool isSource(const fs::path& path) {
  return path.extension() == ".h" || path.extension() == ".cpp";
}

/// The target of an #include line, with its opening quote or bracket; empty for other lines.
std::string includeIn(const std::string& line) {
  const auto skipBlanks = [&](std::size_t at) { return line.find_first_not_of(" \t", at); };
  std::size_t at = skipBlanks(0);
  if (at == std::string::npos || line[at] != '#') return {};
  at = skipBlanks(at + 1);
  if (at == std::string::npos || line.compare(at, 7, "include") != 0) return {};
  at = skipBlanks(at + 7);
  if (at == std::string::npos || (line[at] != '"' && line[at] != '<')) return {};
  const std::size_t end = line.find_first_of("\">", at + 1);
  return end == std::string::npos ? std::string() : line.substr(at, end - at);
}

void readFile(const fs::path& root, const fs::path& path, std::vector<Include>& into) {
  const fs::path relative = fs::relative(path, root);
  auto part = relative.begin();
  const std::string room = *part == "src" ? (++part)->string() : part->string();
  std::ifstream stream(path);
  std::string line;
  for (std::size_t number = 1; std::getline(stream, line); ++number) {
    const std::string found = includeIn(line);
    if (found.empty()) continue;
    into.push_back({relative.generic_string(), number, room, found.substr(1), found[0] == '"'});
  }
}

const std::vector<Include>& includes() {
  static const std::vector<Include> kIncludes = [] {
    const fs::path root = BRISEL_SOURCE_DIR;
    std::vector<Include> found;
    for (const char* folder : {"src", "apps"}) {
      for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
        if (isSource(entry.path())) readFile(root, entry.path(), found);
      }
    }
    return found;
  }();
  return kIncludes;
}

/// Qt's own headers are named after its classes and modules: QWidget, QtMath, QtGui/QImage.
bool isQtHeader(const Include& include) {
  const auto capital = [&](std::size_t at) {
    return at < include.target.size() &&
           std::isupper(static_cast<unsigned char>(include.target[at])) != 0;
  };
  const bool afterQt = include.target.starts_with("Qt") && capital(2);
  return !include.quoted && include.target.starts_with('Q') && (capital(1) || afterQt);
}

/// An include in quotes whose first part is no room is one of the file's own folder, as
/// applications have them.
bool isOurs(const Include& include) {
  return include.quoted && arrows().contains(include.targetRoom());
}

TEST(Includes, followTheArrowsOfTheArchitecture) {
  ASSERT_GT(includes().size(), 100U) << "the check reads no files";
  for (const Include& include : includes()) {
    const auto allowed = arrows().find(include.room);
    ASSERT_NE(allowed, arrows().end()) << include.file << " lies in a room without a place";
    if (!isOurs(include) || include.targetRoom() == include.room) continue;
    EXPECT_TRUE(allowed->second.contains(include.targetRoom()))
        << include.place() << " includes " << include.target << ", an arrow from " << include.room
        << " to " << include.targetRoom() << " that the picture does not have";
  }
}

TEST(Includes, nameTheirRoom) {
  for (const Include& include : includes()) {
    if (!include.quoted || include.room == "apps") continue;
    EXPECT_TRUE(isOurs(include)) << include.place() << " includes " << include.target;
    EXPECT_TRUE(fs::exists(fs::path(BRISEL_SOURCE_DIR) / "src" / include.target))
        << include.place() << " includes " << include.target << ", which does not exist";
  }
}

TEST(Includes, keepQtInItsRoom) {
  std::size_t inItsRoom = 0;
  for (const Include& include : includes()) {
    if (!isQtHeader(include)) continue;
    const bool allowed = include.room == "qt" || include.room == "apps";
    EXPECT_TRUE(allowed) << include.place() << " includes <" << include.target << ">";
    inItsRoom += include.room == "qt" ? 1 : 0;
  }
  EXPECT_GT(inItsRoom, 0U) << "the check does not recognise Qt's headers";
}

TEST(Includes, makeNoCircles) {
  std::map<std::string, Rooms> files;
  for (const Include& include : includes()) {
    if (isOurs(include)) files["src/" + include.target];
    if (isOurs(include)) files[include.file].insert("src/" + include.target);
  }
  std::map<std::string, int> state;  // 1 while it is walked, 2 when done
  const std::function<void(const std::string&)> walk = [&](const std::string& file) {
    state[file] = 1;
    for (const std::string& next : files[file]) {
      EXPECT_NE(state[next], 1) << file << " and " << next << " include each other";
      if (state[next] == 0) walk(next);
    }
    state[file] = 2;
  };
  for (const auto& [file, targets] : std::map(files)) {
    if (state[file] == 0) walk(file);
  }
}

}  // namespace
