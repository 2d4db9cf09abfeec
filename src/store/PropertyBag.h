#pragma once

#include <cstdint>

#include "platform/Value.h"

namespace brisel::store {

/// The properties of one node that are not empty, in as few bytes as they need: one block of
/// records (key, kind, payload) in no particular order. A Boolean or an empty text takes two
/// bytes, a short text its length and two. Keys are numbers given out by the node's type.
class PropertyBag {
 public:
  PropertyBag() = default;
  PropertyBag(const PropertyBag&) = delete;
  PropertyBag& operator=(const PropertyBag&) = delete;
  ~PropertyBag();

  /// The value of the key; empty without one.
  [[nodiscard]] platform::Value get(std::uint16_t key) const;
  /// False when the key had that value already. An empty value takes the key away.
  bool set(std::uint16_t key, const platform::Value& value);

 private:
  struct Record;
  [[nodiscard]] std::uint32_t size() const;
  [[nodiscard]] bool find(std::uint16_t key, Record& record) const;
  void erase(const Record& record);
  char* grow(std::uint32_t more);
  void resize(std::uint32_t size);

  char* m_block = nullptr;  ///< the size of the records in four bytes, then the records
};

}  // namespace brisel::store
