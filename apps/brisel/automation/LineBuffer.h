#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace brisel::automation {

/// Cuts a stream of bytes into lines. A line beyond the limit is dropped while it comes in, so that
/// no sender can make the buffer grow without end.
class LineBuffer {
 public:
  static constexpr std::size_t kLongestLine = std::size_t{512} * 1024 * 1024;

  struct Line {
    std::string text;  ///< without its end; empty when it was too long
    bool tooLong = false;
  };

  explicit LineBuffer(std::size_t longest = kLongestLine) : m_longest(longest) {}

  void append(std::string_view bytes);
  /// The next line, or nothing until its end has come.
  [[nodiscard]] std::optional<Line> next();
  /// What is left when the input ended in the middle of a line.
  [[nodiscard]] std::optional<Line> rest();

 private:
  [[nodiscard]] Line take(std::size_t length);
  void dropTooLong();

  std::size_t m_longest;
  std::string m_bytes;
  std::size_t m_start = 0;     ///< of the line that is being read
  std::size_t m_searched = 0;  ///< no line end before this
  bool m_tooLong = false;      ///< the line's beginning was dropped
};

}  // namespace brisel::automation
