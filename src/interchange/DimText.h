#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace brisel::interchange {

/// The text of one file, handed out in pieces that each are a JSON array: cut between two elements
/// where a line ends, the comma and the line break there replaced by the brackets that the pieces
/// lack. So reading takes little memory, whatever the size of the file. A file that is laid out
/// otherwise comes as one piece.
class DimText {
 public:
  /// Opens the file; an Error (fileNotFound, fileAccess) with the path when it cannot be read.
  explicit DimText(std::string path);
  /// Text in memory, which must outlive this; the name is what errors call it.
  DimText(std::string name, std::string_view bytes);
  ~DimText();
  DimText(const DimText&) = delete;
  DimText& operator=(const DimText&) = delete;

  [[nodiscard]] const std::string& name() const { return m_name; }

  /// The next piece, valid until the one after it is asked for; nothing behind the last. As many
  /// bytes as `kPadding` may be read behind its end.
  [[nodiscard]] std::optional<std::string_view> next();
  static constexpr std::size_t kPadding = 64;

  /// Whether the current piece reaches the end of the file.
  [[nodiscard]] bool isLast() const { return m_isLast; }
  /// The line of the file, from 1, that a place in the current piece stands in.
  [[nodiscard]] std::size_t lineOf(const char* place) const;
  /// The first line of the whole text that holds the words, read anew; 0 without one.
  [[nodiscard]] std::size_t firstLineWith(std::string_view words) const;
  /// Raises the Error (badFile) "name:line: cause" for a place in the current piece.
  [[noreturn]] void fail(const char* place, std::string_view cause) const;

 private:
  void dropPiece();
  void fill(std::size_t wanted);
  std::size_t readSome(char* to, std::size_t room);
  void reserve(std::size_t capacity);
  [[nodiscard]] std::size_t lastCut() const;

  std::string m_name;
  int m_file = -1;
  bool m_inMemory = false;
  std::string_view m_memory;
  std::size_t m_memoryRead = 0;

  std::unique_ptr<char[]> m_buffer;  ///< begins with the current piece
  std::size_t m_capacity = 0;        ///< without the padding
  std::size_t m_size = 0;            ///< bytes in the buffer
  std::size_t m_piece = 0;           ///< of these in the current piece
  std::size_t m_linesBefore = 0;     ///< line breaks before the buffer
  bool m_breakReplaced = false;      ///< the first byte of the buffer stands for a line break
  bool m_atEnd = false;              ///< nothing is left to read
  bool m_isLast = false;
};

}  // namespace brisel::interchange
