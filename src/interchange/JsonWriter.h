#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brisel::interchange {

/// Puts JSON together in a string of its own. Commas come by themselves; that brackets and keys
/// match is the caller's business. Text is taken as UTF-8 and not checked.
class JsonWriter {
 public:
  [[nodiscard]] const std::string& text() const { return m_text; }
  /// Forgets the text; its memory stays for what comes next.
  void clear() { m_text.clear(); }

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
    if (m_comma) m_text += ',';
    m_comma = false;
    m_text += '\n';
  }
  /// Ends the last line.
  void endText() {
    m_text += '\n';
    m_comma = false;
  }

 private:
  void open(char bracket) {
    separate();
    m_text += bracket;
    m_comma = false;
  }
  void close(char bracket) {
    m_text += bracket;
    m_comma = true;
  }
  void separate() {
    if (m_comma) m_text += ',';
    m_comma = true;
  }
  void quote(std::string_view text);

  std::string m_text;
  bool m_comma = false;  ///< something stands before that a next element is parted from
};

}  // namespace brisel::interchange
