#pragma once

#include <cstdint>
#include <vector>

#include "store/PackedText.h"

namespace brisel::store {

/// Finds the elements of one type by identifier: open addressing with linear probing over pointers
/// that it does not own. An element's identifier must not change while it is in the index.
template <class T>
class IdentifierIndex {
 public:
  [[nodiscard]] T* find(const TextKey& key) const {
    if (m_count == 0) return nullptr;
    for (std::size_t at = home(key.hash()); m_elements[at]; at = next(at)) {
      if (m_hashes[at] == key.hash() && m_elements[at]->packedIdentifier().equals(key)) {
        return m_elements[at];
      }
    }
    return nullptr;
  }

  /// The identifier must not be in the index yet.
  void insert(T& element) {
    if ((m_count + 1) * 5 > m_elements.size() * 4) rehash(m_elements.size() * 3 / 2 + 8);
    place(&element, element.packedIdentifier().hash());
    ++m_count;
  }

  /// The element must be in the index.
  void erase(const T& element) {
    std::size_t hole = home(element.packedIdentifier().hash());
    while (m_elements[hole] != &element) hole = next(hole);
    for (std::size_t at = next(hole); m_elements[at]; at = next(at)) {
      if (distance(home(m_hashes[at]), at) < distance(hole, at)) continue;
      m_elements[hole] = m_elements[at];
      m_hashes[hole] = m_hashes[at];
      hole = at;
    }
    m_elements[hole] = nullptr;
    --m_count;
  }

  void reserve(std::size_t count) {
    const std::size_t slots = count * 5 / 4 + 8;
    if (slots > m_elements.size()) rehash(slots);
  }
  void clear() { *this = {}; }
  [[nodiscard]] std::size_t size() const { return m_count; }

 private:
  /// Spreads hashes over any number of slots, so that the table may grow by half.
  [[nodiscard]] std::size_t home(std::uint32_t hash) const {
    return static_cast<std::size_t>((std::uint64_t{hash} * m_elements.size()) >> 32);
  }
  [[nodiscard]] std::size_t next(std::size_t at) const {
    return at + 1 == m_elements.size() ? 0 : at + 1;
  }
  [[nodiscard]] std::size_t distance(std::size_t from, std::size_t to) const {
    return to >= from ? to - from : to + m_elements.size() - from;
  }
  void place(T* element, std::uint32_t hash) {
    std::size_t at = home(hash);
    while (m_elements[at]) at = next(at);
    m_elements[at] = element;
    m_hashes[at] = hash;
  }
  void rehash(std::size_t slots) {
    std::vector<T*> elements(slots);
    std::vector<std::uint32_t> hashes(slots);
    m_elements.swap(elements);
    m_hashes.swap(hashes);
    for (std::size_t i = 0; i < elements.size(); ++i) {
      if (elements[i]) place(elements[i], hashes[i]);
    }
  }

  std::vector<T*> m_elements;
  std::vector<std::uint32_t> m_hashes;
  std::size_t m_count = 0;
};

}  // namespace brisel::store
