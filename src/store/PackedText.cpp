#include "store/PackedText.h"

#include <algorithm>
#include <cstring>

namespace brisel::store {

namespace {

constexpr std::size_t kUuidLength = 36;
constexpr std::size_t kUuidDigits = 32;

// Eight hexadecimal digits at a time, a digit in each byte of a word, the first in the lowest.
constexpr std::uint64_t everyByte(std::uint64_t byte) { return byte * 0x0101010101010101U; }

std::uint64_t readWord(const char* bytes) {
  std::uint64_t word = 0;
  for (unsigned i = 0; i < 8; ++i) {
    word |= std::uint64_t{static_cast<std::uint8_t>(bytes[i])} << (8 * i);
  }
  return word;
}

void writeWord(std::uint64_t word, unsigned count, char* bytes) {
  for (unsigned i = 0; i < count; ++i) bytes[i] = static_cast<char>(word >> (8 * i));
}

/// The characters of digits below 16: those from 10 on are letters.
std::uint64_t charactersOf(std::uint64_t digits) {
  const std::uint64_t letters = (digits + everyByte(6)) >> 4 & everyByte(1);
  return digits + everyByte('0') + letters * ('a' - '0' - 10);
}

/// The digits of characters, one of them above 15 when a character is no lower-case digit.
std::uint64_t digitsOf(std::uint64_t characters) {
  const std::uint64_t letters = characters >> 6 & everyByte(1);
  const std::uint64_t digits = (characters & everyByte(15)) + letters * 9;
  const bool fits = (digits & everyByte(0xF0)) == 0 && charactersOf(digits) == characters;
  return fits ? digits : everyByte(0xFF);
}

/// Eight digits as four bytes, and back.
std::uint64_t packDigits(std::uint64_t digits) {
  std::uint64_t bytes = (digits << 4 | digits >> 8) & 0x00FF00FF00FF00FFU;
  bytes = (bytes | bytes >> 8) & 0x0000FFFF0000FFFFU;
  return (bytes | bytes >> 16) & 0xFFFFFFFFU;
}

std::uint64_t unpackDigits(std::uint64_t bytes) {
  bytes = (bytes | bytes << 16) & 0x0000FFFF0000FFFFU;
  bytes = (bytes | bytes << 8) & 0x00FF00FF00FF00FFU;
  return (bytes >> 4 & 0x000F000F000F000FU) | (bytes & 0x000F000F000F000FU) << 8;
}

std::uint64_t load(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

std::uint64_t mix(std::uint64_t hash, std::uint64_t word) {
  hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
  return hash ^ (hash >> 29);
}

std::uint32_t finish(std::uint64_t hash) {
  hash *= 0xBF58476D1CE4E5B9U;
  return static_cast<std::uint32_t>(hash >> 32);
}

std::uint32_t hashForm(const TextForm& form) {
  return finish(mix(mix(form.tag, load(form.bytes.data())), load(form.bytes.data() + 8)));
}

std::uint32_t hashLong(std::string_view text) {
  std::uint64_t hash = text.size();
  for (; text.size() >= 8; text.remove_prefix(8)) hash = mix(hash, load(text.data()));
  std::array<char, 8> rest{};
  std::copy(text.begin(), text.end(), rest.begin());
  return finish(mix(hash, load(rest.data())));
}

TextForm formOf(std::string_view text) {
  TextForm form;
  if (text.size() <= TextForm::kInlineLimit) {
    std::copy(text.begin(), text.end(), form.bytes.begin());
    form.tag = static_cast<std::uint8_t>(text.size());
  } else if (packUuid(text, form.bytes.data())) {
    form.tag = TextForm::kUuid;
  } else {
    form = {.bytes = {}, .tag = TextForm::kHeap};
  }
  return form;
}

}  // namespace

bool packUuid(std::string_view text, char* bytes) {
  if (text.size() != kUuidLength) return false;
  if (text[8] != '-' || text[13] != '-' || text[18] != '-' || text[23] != '-') return false;
  std::array<char, kUuidDigits> characters;
  std::memcpy(characters.data(), text.data(), 8);
  std::memcpy(characters.data() + 8, text.data() + 9, 4);
  std::memcpy(characters.data() + 12, text.data() + 14, 4);
  std::memcpy(characters.data() + 16, text.data() + 19, 4);
  std::memcpy(characters.data() + 20, text.data() + 24, 12);
  std::uint64_t seen = 0;
  for (std::size_t i = 0; i < kUuidDigits; i += 8) {
    const std::uint64_t digits = digitsOf(readWord(characters.data() + i));
    seen |= digits;
    writeWord(packDigits(digits), 4, bytes + i / 2);
  }
  return (seen & everyByte(0xF0)) == 0;
}

void unpackUuid(const char* bytes, char* text) {
  std::array<char, kUuidDigits> characters;
  for (std::size_t i = 0; i < kUuidDigits; i += 8) {
    std::uint64_t packed = 0;
    for (unsigned k = 0; k < 4; ++k) {
      packed |= std::uint64_t{static_cast<std::uint8_t>(bytes[i / 2 + k])} << (8 * k);
    }
    writeWord(charactersOf(unpackDigits(packed)), 8, characters.data() + i);
  }
  std::memcpy(text, characters.data(), 8);
  std::memcpy(text + 9, characters.data() + 8, 4);
  std::memcpy(text + 14, characters.data() + 12, 4);
  std::memcpy(text + 19, characters.data() + 16, 4);
  std::memcpy(text + 24, characters.data() + 20, 12);
  text[8] = text[13] = text[18] = text[23] = '-';
}

TextKey::TextKey(std::string_view text)
    : m_text(text),
      m_form(formOf(text)),
      m_hash(m_form.tag == TextForm::kHeap ? hashLong(text) : hashForm(m_form)) {}

PackedText::PackedText(std::string_view text) : m_form(formOf(text)) {
  if (m_form.tag == TextForm::kHeap) makeHeap(text);
}

PackedText::PackedText(const TextKey& key) : m_form(key.form()) {
  if (m_form.tag == TextForm::kHeap) makeHeap(key.text());
}

PackedText PackedText::composed() {
  PackedText text;
  text.m_form.tag = TextForm::kComposed;
  return text;
}

void PackedText::makeHeap(std::string_view text) {
  char* block = new char[text.size()];
  std::copy(text.begin(), text.end(), block);
  const std::uint64_t size = text.size();
  std::memcpy(m_form.bytes.data(), &block, sizeof block);
  std::memcpy(m_form.bytes.data() + 8, &size, sizeof size);
}

std::string_view PackedText::heapText() const {
  const char* block = nullptr;
  std::memcpy(&block, m_form.bytes.data(), sizeof block);
  return {block, static_cast<std::size_t>(load(m_form.bytes.data() + 8))};
}

void PackedText::freeHeap() noexcept { delete[] heapText().data(); }

std::size_t PackedText::size() const {
  switch (m_form.tag) {
    case TextForm::kUuid:
      return kUuidLength;
    case TextForm::kHeap:
      return heapText().size();
    case TextForm::kComposed:
      return 0;
    default:
      return m_form.tag;
  }
}

char* PackedText::copyTo(char* out) const {
  if (m_form.tag == TextForm::kUuid) {
    unpackUuid(m_form.bytes.data(), out);
    return out + kUuidLength;
  }
  const std::string_view text =
      m_form.tag == TextForm::kHeap ? heapText() : std::string_view(m_form.bytes.data(), size());
  return std::copy(text.begin(), text.end(), out);
}

std::string PackedText::str() const {
  std::string text(size(), '\0');
  copyTo(text.data());
  return text;
}

bool PackedText::equals(const TextKey& key) const {
  if (m_form.tag != key.form().tag) return false;
  if (m_form.tag == TextForm::kHeap) return heapText() == key.text();
  return m_form.bytes == key.form().bytes;
}

bool PackedText::equals(std::string_view text) const {
  if (m_form.tag == TextForm::kComposed || text.size() != size()) return false;
  if (m_form.tag == TextForm::kHeap) return heapText() == text;
  if (m_form.tag != TextForm::kUuid) {
    return std::string_view(m_form.bytes.data(), text.size()) == text;
  }
  std::array<char, kUuidLength> unpacked;
  unpackUuid(m_form.bytes.data(), unpacked.data());
  return std::string_view(unpacked.data(), unpacked.size()) == text;
}

std::uint32_t PackedText::hash() const {
  return m_form.tag == TextForm::kHeap ? hashLong(heapText()) : hashForm(m_form);
}

}  // namespace brisel::store
