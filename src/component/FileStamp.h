#pragma once

#include <cstdint>
#include <string>

namespace brisel::component {

/// What a file held when it was read or written last, so that a change by another program is
/// noticed. A file whose time differs and whose bytes do not is unchanged.
class FileStamp {
 public:
  enum class Change { none, changed, vanished };

  /// Of no file, which never changes.
  FileStamp() = default;
  /// Of the file as it is now; of no file where there is none that can be read.
  explicit FileStamp(const std::string& path);

  /// Whether the path leads to the file, by whichever folders and links.
  [[nodiscard]] bool isOf(const std::string& path) const;
  /// What became of the file since. Reads it only when its time, its size or what carries its name
  /// differs.
  [[nodiscard]] Change change() const;

 private:
  struct Look {
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    std::int64_t size = 0;
    std::uint64_t inode = 0;
    bool operator==(const Look&) const = default;
  };
  /// False for what is no plain file.
  [[nodiscard]] static bool look(const std::string& path, Look& look);

  std::string m_path;  ///< absolute; empty for the stamp of no file
  Look m_look;
  std::size_t m_content = 0;  ///< hash of the bytes
};

}  // namespace brisel::component
