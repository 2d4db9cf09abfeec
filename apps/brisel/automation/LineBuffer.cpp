#include "automation/LineBuffer.h"

namespace brisel::automation {

void LineBuffer::append(std::string_view bytes) {
  if (m_start > 0) {
    m_bytes.erase(0, m_start);
    m_searched -= m_start;
    m_start = 0;
  }
  m_bytes += bytes;
}

std::optional<LineBuffer::Line> LineBuffer::next() {
  const std::size_t end = m_bytes.find('\n', m_searched);
  if (end == std::string::npos) {
    m_searched = m_bytes.size();
    if (m_searched - m_start > m_longest) dropTooLong();
    return {};
  }
  Line line = take(end - m_start);
  m_start = m_searched = end + 1;
  return line;
}

std::optional<LineBuffer::Line> LineBuffer::rest() {
  if (m_start == m_bytes.size() && !m_tooLong) return {};
  Line line = take(m_bytes.size() - m_start);
  m_start = m_searched = m_bytes.size();
  return line;
}

LineBuffer::Line LineBuffer::take(std::size_t length) {
  const bool tooLong = m_tooLong || length > m_longest;
  m_tooLong = false;
  return tooLong ? Line{{}, true} : Line{m_bytes.substr(m_start, length), false};
}

void LineBuffer::dropTooLong() {
  m_tooLong = true;
  m_bytes = {};
  m_start = m_searched = 0;
}

}  // namespace brisel::automation
