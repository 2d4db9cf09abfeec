#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/Ref.h"

namespace brisel::canvas {

/// Items in the order of their creation, removed at once without moving the others: a removed one
/// leaves a gap, and gaps are closed when they outnumber the items.
template <class T>
class ItemList {
 public:
  /// The items must be added in the order of `order()`.
  void add(platform::Ref<T> item) {
    m_items.push_back(std::move(item));
    ++m_count;
  }
  void remove(const T& item) {
    const auto found = std::lower_bound(
        m_items.begin(), m_items.end(), item.order(),
        [](const Entry& entry, std::uint64_t order) { return entry.order < order; });
    found->item = nullptr;
    --m_count;
    if (m_items.size() > 32 && m_count < m_items.size() / 2) {
      std::erase_if(m_items, [](const Entry& entry) { return !entry.item; });
    }
  }
  void clear() {
    m_items.clear();
    m_count = 0;
  }
  [[nodiscard]] std::size_t size() const { return m_count; }
  [[nodiscard]] bool empty() const { return m_count == 0; }

  /// Walks the items; nothing may be removed meanwhile (`copy` first).
  class Iterator {
   public:
    Iterator(const ItemList* list, std::size_t at) : m_list(list), m_at(at) { skip(); }
    T& operator*() const { return *m_list->m_items[m_at].item; }
    Iterator& operator++() {
      ++m_at;
      skip();
      return *this;
    }
    bool operator==(const Iterator& other) const { return m_at == other.m_at; }

   private:
    void skip() {
      while (m_at < m_list->m_items.size() && !m_list->m_items[m_at].item) ++m_at;
    }
    const ItemList* m_list;
    std::size_t m_at;
  };
  [[nodiscard]] Iterator begin() const { return {this, 0}; }
  [[nodiscard]] Iterator end() const { return {this, m_items.size()}; }

  [[nodiscard]] std::vector<platform::Ref<T>> copy() const {
    std::vector<platform::Ref<T>> all;
    all.reserve(m_count);
    for (T& item : *this) all.emplace_back(&item);
    return all;
  }

 private:
  struct Entry {
    Entry(platform::Ref<T> added) : order(added->order()), item(std::move(added)) {}
    std::uint64_t order;
    platform::Ref<T> item;
  };
  std::vector<Entry> m_items;
  std::size_t m_count = 0;
};

}  // namespace brisel::canvas
