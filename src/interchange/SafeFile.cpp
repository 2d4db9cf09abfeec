#include "interchange/SafeFile.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Error.h"

namespace brisel::interchange {

namespace {

constexpr mode_t kNewFileMode = 0666;  // less what the user's mask takes away
constexpr int kMaxLinks = 40;

/// Where a chain of symbolic links ends, whether or not something is there.
std::string behindLinks(const std::string& path) {
  std::filesystem::path target = path;
  std::error_code none;
  for (int i = 0; i < kMaxLinks && std::filesystem::is_symlink(target, none); ++i) {
    const auto next = std::filesystem::read_symlink(target, none);
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  return target.string();
}

std::string folderOf(const std::string& path) {
  const auto slash = path.rfind('/');
  return slash == std::string::npos ? "./" : path.substr(0, slash + 1);
}

}  // namespace

SafeFile::SafeFile(std::string path) : m_path(std::move(path)), m_target(behindLinks(m_path)) {
  struct stat old {};
  const bool exists = ::stat(m_target.c_str(), &old) == 0;
  if (exists && S_ISDIR(old.st_mode)) {
    errno = EISDIR;
    fail();
  }
  if (exists && !S_ISREG(old.st_mode)) {
    m_file = ::open(m_target.c_str(), O_WRONLY | O_CLOEXEC);
    if (m_file < 0) fail();
    return;
  }
  if (exists && ::faccessat(AT_FDCWD, m_target.c_str(), W_OK, AT_EACCESS) != 0) fail();
  openTemporary();
  if (exists) keepAttributes(static_cast<int>(old.st_mode));
}

SafeFile::~SafeFile() {
  if (m_file >= 0) ::close(m_file);
  if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

void SafeFile::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(m_file, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) fail();
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void SafeFile::commit() {
  if (m_temporary.empty()) {
    close();
    return;
  }
  if (::fsync(m_file) != 0) fail();
  close();
  if (std::rename(m_temporary.c_str(), m_target.c_str()) != 0) fail();
  m_temporary.clear();
  // The new name itself; a file system that cannot flush a folder has the file all the same.
  const int folder = ::open(folderOf(m_target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder < 0) return;
  ::fsync(folder);
  ::close(folder);
}

void SafeFile::openTemporary() {
  const std::string stem = folderOf(m_target) + ".brisel-" + std::to_string(::getpid()) + "-";
  for (int i = 0; m_file < 0; ++i) {
    const std::string name = stem + std::to_string(i) + ".tmp";
    m_file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode);
    if (m_file >= 0) {
      m_temporary = name;
    } else if (errno != EEXIST) {
      fail();
    }
  }
}

void SafeFile::keepAttributes(int oldMode) const {
  // Not every file system has permissions; the text matters more than they do.
  static_cast<void>(::fchmod(m_file, static_cast<mode_t>(oldMode) & 07777U));
}

void SafeFile::close() {
  const int file = m_file;
  m_file = -1;
  if (::close(file) != 0) fail();
}

void SafeFile::fail() const {
  const std::string cause = std::system_category().message(errno);
  throw platform::Error(platform::ErrorNumber::fileAccess, "Cannot write " + m_path + ": " + cause);
}

}  // namespace brisel::interchange
