#include "store/PropertyBag.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string>

#include "platform/Object.h"
#include "store/PackedText.h"

namespace brisel::store {

using platform::Object;
using platform::Ref;
using platform::Value;

namespace {

enum Kind : std::uint8_t {
  kFalse,
  kTrue,
  kInteger32,
  kInteger64,
  kDouble,
  kObject,    // a pointer that is retained
  kUuidText,  // 16 bytes
  kLongText,  // a pointer to a string that is owned
  kShortText  // and all above: the length is what lies above
};
constexpr std::size_t kShortLimit = 0xFF - kShortText;
constexpr std::uint8_t kWideKey = 0xFF;
constexpr std::uint32_t kHeader = 4;

constexpr std::uint32_t payloadSize(std::uint8_t kind) {
  constexpr std::array<std::uint8_t, kShortText> kSizes = {0, 0, 4, 8, 8, 8, 16, 8};
  return kind < kShortText ? kSizes[kind] : std::uint32_t{kind} - kShortText;
}

template <class T>
T read(const char* at) {
  T value;
  std::memcpy(&value, at, sizeof value);
  return value;
}

/// What is written for a value: its kind and where its bytes are.
struct Payload {
  std::uint8_t kind = kFalse;
  std::array<char, 16> own{};
  const char* bytes = own.data();

  explicit Payload(const Value& value);
  template <class T>
  void put(Kind as, const T& what) {
    kind = as;
    std::memcpy(own.data(), &what, sizeof what);
  }
};

Payload::Payload(const Value& value) {
  if (value.isBoolean()) {
    kind = value.boolean() ? kTrue : kFalse;
  } else if (value.isInteger()) {
    const std::int64_t wide = value.integer();
    const auto narrow = static_cast<std::int32_t>(wide);
    if (narrow == wide) {
      put(kInteger32, narrow);
    } else {
      put(kInteger64, wide);
    }
  } else if (value.isDouble()) {
    put(kDouble, value.number());
  } else if (value.isObject()) {
    put(kObject, value.object().get());
  } else {
    const std::string& text = value.string();
    if (packUuid(text, own.data())) {
      kind = kUuidText;
    } else if (text.size() <= kShortLimit) {
      kind = static_cast<std::uint8_t>(kShortText + text.size());
      bytes = text.data();
    } else {
      kind = kLongText;  // the string is made when it is written
    }
  }
}

/// Blocks are as large as the heap's own steps, so that no room is lost beside them.
constexpr std::size_t roomFor(std::uint32_t size) {
  return std::max<std::size_t>(24, (kHeader + size + 8 + 15) / 16 * 16 - 8);
}

}  // namespace

struct PropertyBag::Record {
  char* start = nullptr;
  char* payload = nullptr;
  std::uint8_t kind = kFalse;

  [[nodiscard]] char* end() const { return payload + payloadSize(kind); }
  [[nodiscard]] bool holds(const Value& value) const;
  void free() const {
    if (kind == kObject) platform::release(read<Object*>(payload));
    if (kind == kLongText) delete read<std::string*>(payload);
  }
};

bool PropertyBag::Record::holds(const Value& value) const {
  if (value.isEmpty()) return false;
  const Payload other(value);
  if (other.kind != kind) return false;
  if (kind == kLongText) return *read<const std::string*>(payload) == value.string();
  if (kind == kDouble) return read<double>(payload) == value.number();
  return std::memcmp(payload, other.bytes, payloadSize(kind)) == 0;
}

PropertyBag::~PropertyBag() {
  if (!m_block) return;
  const char* end = m_block + kHeader + size();
  for (char* at = m_block + kHeader; at != end;) {
    Record record;
    record.start = at;
    at += static_cast<std::uint8_t>(*at) == kWideKey ? 3 : 1;
    record.kind = static_cast<std::uint8_t>(*at);
    record.payload = at + 1;
    record.free();
    at = record.end();
  }
  std::free(m_block);
}

std::uint32_t PropertyBag::size() const { return m_block ? read<std::uint32_t>(m_block) : 0; }

bool PropertyBag::find(std::uint16_t key, Record& record) const {
  if (!m_block) return false;
  const char* end = m_block + kHeader + size();
  for (char* at = m_block + kHeader; at != end; at = record.end()) {
    record.start = at;
    std::uint16_t here = static_cast<std::uint8_t>(*at++);
    if (here == kWideKey) {
      here = read<std::uint16_t>(at);
      at += 2;
    }
    record.kind = static_cast<std::uint8_t>(*at);
    record.payload = at + 1;
    if (here == key) return true;
  }
  return false;
}

Value PropertyBag::get(std::uint16_t key) const {
  Record record;
  if (!find(key, record)) return {};
  const char* bytes = record.payload;
  switch (record.kind) {
    case kFalse:
      return false;
    case kTrue:
      return true;
    case kInteger32:
      return read<std::int32_t>(bytes);
    case kInteger64:
      return read<std::int64_t>(bytes);
    case kDouble:
      return read<double>(bytes);
    case kObject:
      return Ref<Object>(read<Object*>(bytes));
    case kUuidText: {
      std::string text(36, '\0');
      unpackUuid(bytes, text.data());
      return text;
    }
    case kLongText:
      return *read<const std::string*>(bytes);
    default:
      return std::string_view(bytes, payloadSize(record.kind));
  }
}

bool PropertyBag::set(std::uint16_t key, const Value& value) {
  Record old;
  const bool isKnown = find(key, old);
  if (isKnown ? old.holds(value) : value.isEmpty()) return false;
  const Ref<Object> object = value.isObject() ? value.object() : nullptr;
  if (isKnown) erase(old);
  if (value.isEmpty()) return true;

  Payload payload(value);
  if (payload.kind == kLongText) payload.put(kLongText, new std::string(value.string()));
  if (object) platform::retain(object.get());
  const std::uint32_t bytes = payloadSize(payload.kind);
  const bool wide = key >= kWideKey;
  char* at = grow(bytes + (wide ? 4 : 2));
  if (wide) {
    *at++ = static_cast<char>(kWideKey);
    std::memcpy(at, &key, sizeof key);
    at += sizeof key;
  } else {
    *at++ = static_cast<char>(key);
  }
  *at++ = static_cast<char>(payload.kind);
  std::memcpy(at, payload.bytes, bytes);
  return true;
}

void PropertyBag::erase(const Record& record) {
  record.free();
  const char* end = m_block + kHeader + size();
  const auto length = static_cast<std::uint32_t>(record.end() - record.start);
  std::memmove(record.start, record.end(), static_cast<std::size_t>(end - record.end()));
  resize(size() - length);
}

/// Makes room behind the last record and returns where it begins.
char* PropertyBag::grow(std::uint32_t more) {
  const std::uint32_t before = size();
  resize(before + more);
  return m_block + kHeader + before;
}

void PropertyBag::resize(std::uint32_t size) {
  if (!m_block || roomFor(size) != roomFor(this->size())) {
    void* block = std::realloc(m_block, roomFor(size));
    if (!block) throw std::bad_alloc();
    m_block = static_cast<char*>(block);
  }
  std::memcpy(m_block, &size, sizeof size);
}

}  // namespace brisel::store
