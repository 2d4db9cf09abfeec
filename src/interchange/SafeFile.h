#pragma once

#include <string>
#include <string_view>

namespace brisel::interchange {

/// Writes a file so that there is, at every moment, either the whole old or the whole new one: to
/// a temporary file beside it, flushed to disk, then renamed. A link is followed and stays one;
/// the permissions of the old file stay. What is not a plain file (a pipe, a device) is written
/// to as it is. Errors (fileAccess) name the path and the cause.
class SafeFile {
 public:
  /// Raises an Error when the file cannot be written.
  explicit SafeFile(std::string path);
  /// Without `commit` the old file is as it was, and nothing is left behind.
  ~SafeFile();
  SafeFile(const SafeFile&) = delete;
  SafeFile& operator=(const SafeFile&) = delete;

  void write(std::string_view bytes);
  /// Puts the new file in the place of the old one.
  void commit();

 private:
  void openTemporary();
  void keepAttributes(int oldMode) const;
  void close();
  [[noreturn]] void fail() const;

  std::string m_path;       ///< as the caller gave it
  std::string m_target;     ///< where links lead to
  std::string m_temporary;  ///< empty when the target is written to directly
  int m_file = -1;
};

}  // namespace brisel::interchange
