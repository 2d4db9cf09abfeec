#include "store/PackedText.h"

#include <algorithm>
#include <cstring>

namespace brisel::store {

namespace {

constexpr std::size_t kUuidLength = 36;
constexpr std::array<std::uint8_t, 16> kHexAt = {0,  2,  4,  6,  9,  11, 14, 16,
                                                 19, 21, 24, 26, 28, 30, 32, 34};
constexpr std::uint8_t kNoDigit = 0xFF;

constexpr std::array<std::uint8_t, 256> makeDigits() {
  std::array<std::uint8_t, 256> digits{};
  for (auto& digit : digits) digit = kNoDigit;
  for (std::uint8_t i = 0; i < 10; ++i) digits[std::size_t{'0'} + i] = i;
  for (std::uint8_t i = 0; i < 6; ++i) {
    digits[std::size_t{'a'} + i] = static_cast<std::uint8_t>(10 + i);
  }
  return digits;
}
constexpr std::array<std::uint8_t, 256> kDigits = makeDigits();

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
  const auto digit = [&](std::size_t at) { return kDigits[static_cast<std::uint8_t>(text[at])]; };
  std::uint8_t seen = 0;
  for (std::size_t i = 0; i < kHexAt.size(); ++i) {
    const std::uint8_t high = digit(kHexAt[i]);
    const std::uint8_t low = digit(kHexAt[i] + std::size_t{1});
    seen |= high | low;
    bytes[i] = static_cast<char>(high << 4 | low);
  }
  return (seen & 0xF0U) == 0;
}

void unpackUuid(const char* bytes, char* text) {
  static constexpr std::string_view kHex = "0123456789abcdef";
  text[8] = text[13] = text[18] = text[23] = '-';
  for (std::size_t i = 0; i < kHexAt.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(bytes[i]);
    text[kHexAt[i]] = kHex[byte >> 4];
    text[kHexAt[i] + 1] = kHex[byte & 15U];
  }
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
