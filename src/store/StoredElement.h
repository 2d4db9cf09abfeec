#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/Repository.h"
#include "store/PackedText.h"

namespace brisel::store {

/// What stored nodes and links keep alike. `Base` is the interface that they implement.
template <class Base>
class StoredElement : public Base {
 public:
  /// The slot of an element that is in no extension: it is new, or was removed.
  static constexpr std::uint32_t kNoSlot = 0xFFFFFFFF;

  explicit StoredElement(const TextKey& identifier) : m_identifier(identifier) {}

  [[nodiscard]] std::uint32_t slot() const { return m_slot; }
  void slot(std::uint32_t slot) { m_slot = slot; }
  [[nodiscard]] bool isStored() const { return m_slot != kNoSlot; }
  [[nodiscard]] const PackedText& packedIdentifier() const { return m_identifier; }
  [[nodiscard]] const PackedText& packedName() const { return m_name; }

 protected:
  std::uint32_t m_slot = kNoSlot;
  PackedText m_identifier;
  PackedText m_name;
};

}  // namespace brisel::store
