#include "interchange/DimText.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/Error.h"

namespace brisel::interchange {

namespace {

/// Small enough for a piece, its index and its strings to stay in the processor's cache.
constexpr std::size_t kPieceSize = std::size_t{256} << 10U;

[[noreturn]] void cannotRead(const std::string& path, int cause) {
  using platform::ErrorNumber;
  const auto number = cause == ENOENT ? ErrorNumber::fileNotFound : ErrorNumber::fileAccess;
  throw platform::Error(number,
                        "Cannot read " + path + ": " + std::system_category().message(cause));
}

/// Counted in blocks that a byte can count, which compilers turn into wide instructions.
std::size_t lineBreaks(const char* from, const char* to) {
  constexpr std::ptrdiff_t kBlock = 192;
  std::size_t count = 0;
  for (; to - from >= kBlock; from += kBlock) {
    std::uint8_t inBlock = 0;
    for (std::ptrdiff_t i = 0; i < kBlock; ++i) {
      inBlock = static_cast<std::uint8_t>(inBlock + (from[i] == '\n' ? 1 : 0));
    }
    count += inBlock;
  }
  return count + static_cast<std::size_t>(std::count(from, to, '\n'));
}

}  // namespace

DimText::DimText(std::string path)
    : m_name(std::move(path)), m_file(::open(m_name.c_str(), O_RDONLY | O_CLOEXEC)) {
  if (m_file < 0) cannotRead(m_name, errno);
}

DimText::DimText(std::string name, std::string_view bytes)
    : m_name(std::move(name)), m_inMemory(true), m_memory(bytes) {}

DimText::~DimText() {
  if (m_file >= 0) ::close(m_file);
}

std::optional<std::string_view> DimText::next() {
  if (m_isLast) return {};
  dropPiece();
  std::size_t wanted = kPieceSize;
  for (;;) {
    fill(wanted);
    m_isLast = m_atEnd;
    m_piece = m_isLast ? m_size : lastCut();
    if (m_piece > 0 || m_isLast) break;
    wanted = m_size * 2;
  }
  if (!m_isLast) m_buffer[m_piece - 1] = ']';
  return std::string_view(m_buffer.get(), m_piece);
}

/// Moves what follows the current piece to the front.
void DimText::dropPiece() {
  if (m_piece == 0) return;
  char* const begin = m_buffer.get();
  m_linesBefore += lineBreaks(begin, begin + m_piece) + (m_breakReplaced ? 1 : 0);
  m_size -= m_piece;
  std::memmove(begin, begin + m_piece, m_size);
  m_piece = 0;
  m_breakReplaced = begin[0] == '\n';
  begin[0] = '[';
}

void DimText::fill(std::size_t wanted) {
  reserve(std::max(wanted, m_size));
  while (!m_atEnd && m_size < wanted) {
    const std::size_t got = readSome(m_buffer.get() + m_size, m_capacity - m_size);
    m_size += got;
    m_atEnd = got == 0;
  }
  std::memset(m_buffer.get() + m_size, 0, kPadding);
}

std::size_t DimText::readSome(char* to, std::size_t room) {
  if (m_inMemory) {
    const std::string_view part = m_memory.substr(m_memoryRead, room);
    std::memcpy(to, part.data(), part.size());
    m_memoryRead += part.size();
    return part.size();
  }
  for (;;) {
    const ssize_t got = ::read(m_file, to, room);
    if (got >= 0) return static_cast<std::size_t>(got);
    if (errno != EINTR) cannotRead(m_name, errno);
  }
}

void DimText::reserve(std::size_t capacity) {
  if (capacity <= m_capacity) return;
  auto larger = std::make_unique_for_overwrite<char[]>(capacity + kPadding);
  if (m_size > 0) std::memcpy(larger.get(), m_buffer.get(), m_size);
  m_buffer = std::move(larger);
  m_capacity = capacity;
}

/// How many bytes the buffer has up to the last comma that parts two elements at the end of a line
/// and before another, the comma included; 0 without one. Text never holds a line break itself.
std::size_t DimText::lastCut() const {
  const std::string_view text(m_buffer.get(), m_size);
  for (std::size_t at = text.rfind("\n{"); at != std::string_view::npos && at > 1;
       at = text.rfind("\n{", at - 1)) {
    if (text[at - 1] == ',') return at;
    if (text[at - 1] == '\r' && text[at - 2] == ',') return at - 1;
  }
  return 0;
}

std::size_t DimText::lineOf(const char* place) const {
  const char* const begin = m_buffer.get();
  const char* const end = std::clamp<const char*>(place, begin, begin + m_size);
  const bool behindReplaced = m_breakReplaced && end > begin;
  return 1 + m_linesBefore + lineBreaks(begin, end) + (behindReplaced ? 1 : 0);
}

std::size_t DimText::firstLineWith(std::string_view words) const {
  struct stat about {};
  const bool once = !m_inMemory && (::fstat(m_file, &about) != 0 || !S_ISREG(about.st_mode));
  if (once) return 0;  // a pipe: what was read is gone
  const auto again =
      m_inMemory ? std::make_unique<DimText>(m_name, m_memory) : std::make_unique<DimText>(m_name);
  while (const auto piece = again->next()) {
    const auto at = piece->find(words);
    if (at != std::string_view::npos) return again->lineOf(piece->data() + at);
  }
  return 0;
}

void DimText::fail(const char* place, std::string_view cause) const {
  throw platform::Error(platform::ErrorNumber::badFile,
                        m_name + ":" + std::to_string(lineOf(place)) + ": " + std::string(cause));
}

}  // namespace brisel::interchange
