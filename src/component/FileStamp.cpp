#include "component/FileStamp.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string_view>

#include <sys/stat.h>

namespace brisel::component {

namespace {

std::size_t contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  return std::hash<std::string_view>()(bytes);
}

}  // namespace

// The look is taken before the bytes are: a change in between is then noticed rather than missed.
FileStamp::FileStamp(const std::string& path) {
  if (!look(path, m_look)) return;
  std::error_code none;
  m_path = std::filesystem::absolute(path, none).string();
  m_content = contentOf(path);
}

bool FileStamp::isOf(const std::string& path) const {
  if (m_path.empty()) return false;
  std::error_code none;
  return std::filesystem::absolute(path, none) == m_path ||
         std::filesystem::equivalent(path, m_path, none);
}

FileStamp::Change FileStamp::change() const {
  if (m_path.empty()) return Change::none;
  Look now;
  if (!look(m_path, now)) return Change::vanished;
  if (now == m_look) return Change::none;
  if (now.size != m_look.size) return Change::changed;
  return contentOf(m_path) == m_content ? Change::none : Change::changed;
}

bool FileStamp::look(const std::string& path, Look& look) {
  struct stat found {};
  if (::stat(path.c_str(), &found) != 0 || !S_ISREG(found.st_mode)) return false;
  look = {found.st_mtim.tv_sec, found.st_mtim.tv_nsec, found.st_size, found.st_ino};
  return true;
}

}  // namespace brisel::component
