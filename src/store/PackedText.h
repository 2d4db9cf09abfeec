#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace brisel::store {

/// How a text is kept in 16 bytes and a tag: up to 16 characters as they are, a lower-case UUID as
/// its 16 raw bytes, everything else behind a pointer. The form follows from the text alone, so two
/// texts that are not behind a pointer are equal when their bytes are.
struct TextForm {
  static constexpr std::uint8_t kInlineLimit = 16;  ///< tags up to here are lengths
  static constexpr std::uint8_t kUuid = 17;
  static constexpr std::uint8_t kHeap = 18;
  static constexpr std::uint8_t kComposed = 19;  ///< not a text: the owner composes it

  std::array<char, 16> bytes{};
  std::uint8_t tag = 0;
};

/// The 16 bytes of a UUID in its canonical lower-case form; false when the text is none.
[[nodiscard]] bool packUuid(std::string_view text, char* bytes);
/// Writes the 36 characters of the UUID.
void unpackUuid(const char* bytes, char* text);

/// A text made ready for look-ups, with its hash. The view must outlive it.
class TextKey {
 public:
  explicit TextKey(std::string_view text);

  [[nodiscard]] std::string_view text() const { return m_text; }
  [[nodiscard]] const TextForm& form() const { return m_form; }
  [[nodiscard]] std::uint32_t hash() const { return m_hash; }

 private:
  std::string_view m_text;
  TextForm m_form;
  std::uint32_t m_hash;
};

/// A text in 17 bytes, as identifiers and names of stored elements are kept.
class PackedText {
 public:
  PackedText() = default;
  explicit PackedText(std::string_view text);
  explicit PackedText(const TextKey& key);
  PackedText(PackedText&& other) noexcept : m_form(other.m_form) { other.m_form = {}; }
  PackedText& operator=(PackedText&& other) noexcept {
    std::swap(m_form, other.m_form);
    return *this;
  }
  ~PackedText() {
    if (m_form.tag == TextForm::kHeap) freeHeap();
  }

  /// Stands for a text that the owner composes when asked.
  [[nodiscard]] static PackedText composed();
  [[nodiscard]] bool isComposed() const { return m_form.tag == TextForm::kComposed; }

  [[nodiscard]] std::size_t size() const;
  [[nodiscard]] std::string str() const;
  /// Writes `size()` characters and returns the end.
  char* copyTo(char* out) const;
  [[nodiscard]] bool equals(const TextKey& key) const;
  [[nodiscard]] bool equals(std::string_view text) const;
  [[nodiscard]] std::uint32_t hash() const;

 private:
  [[nodiscard]] std::string_view heapText() const;
  void makeHeap(std::string_view text);
  void freeHeap() noexcept;

  TextForm m_form;
};

static_assert(sizeof(PackedText) == 17);

}  // namespace brisel::store
