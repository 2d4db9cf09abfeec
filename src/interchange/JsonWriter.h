#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace brisel::interchange {

/// Puts JSON together in a string of its own. Commas come by themselves; that brackets and keys
/// match is the caller's business. Text is taken as UTF-8 and not checked.
class JsonWriter {
 public:
  /// Valid until something is written.
  [[nodiscard]] std::string_view text() const { return {m_buffer.get(), m_size}; }
  /// Forgets the text; its memory stays for what comes next.
  void clear() { m_size = 0; }

  void openObject() { open('{'); }
  void closeObject() { close('}'); }
  void openArray() { open('['); }
  void closeArray() { close(']'); }
  void key(std::string_view key);
  /// A key that is known to need no escapes.
  void plainKey(std::string_view key);

  void value(std::string_view text);
  void value(const char* text) { value(std::string_view(text)); }
  void value(bool value);
  void value(std::int64_t value);
  /// A whole number keeps a decimal point, so that it reads as a double again. Not for infinities
  /// and what is no number: JSON has none.
  void value(double value);

  /// Breaks the line behind an element that another follows.
  void newLine() {
    append(m_comma ? ",\n" : "\n");
    m_comma = false;
  }
  /// Ends the last line.
  void endText() {
    m_comma = false;
    newLine();
  }

 private:
  void open(char bracket) {
    separate();
    append({&bracket, 1});
    m_comma = false;
  }
  void close(char bracket) {
    append({&bracket, 1});
    m_comma = true;
  }
  void separate() {
    if (m_comma) append(",");
    m_comma = true;
  }
  void quote(std::string_view text);
  void quoteSpecial(std::string_view text);
  void append(std::string_view bytes);
  /// Makes room for so many more bytes and returns where they go.
  char* room(std::size_t count) {
    if (m_capacity - m_size < count) grow(count);
    return m_buffer.get() + m_size;
  }
  void grow(std::size_t count);

  std::unique_ptr<char[]> m_buffer;
  std::size_t m_size = 0;
  std::size_t m_capacity = 0;
  bool m_comma = false;  ///< something stands before that a next element is parted from
};

}  // namespace brisel::interchange
