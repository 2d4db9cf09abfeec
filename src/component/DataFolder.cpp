#include "component/DataFolder.h"

#include <filesystem>

#include <dlfcn.h>
#include <link.h>

namespace brisel::component {

namespace {

namespace fs = std::filesystem;

/// Has an address in the file that this code was loaded from.
constexpr char kHere = 0;

fs::path loadedFile() {
  Dl_info file{};
  link_map* loaded = nullptr;
  std::error_code ignored;
  const bool known =
      dladdr1(&kHere, &file, reinterpret_cast<void**>(&loaded), RTLD_DL_LINKMAP) != 0;
  // The loader has no name for the program itself.
  if (known && loaded && loaded->l_name[0] != '\0') return fs::canonical(loaded->l_name, ignored);
  return fs::read_symlink("/proc/self/exe", ignored);
}

}  // namespace

std::string dataFolder() {
  fs::path folder = loadedFile();
  while (folder.has_relative_path()) {
    folder = folder.parent_path();
    const fs::path data = folder / BRISEL_DATA_FOLDER;
    std::error_code ignored;
    if (fs::is_directory(data, ignored)) return data.string();
  }
  return {};
}

}  // namespace brisel::component
