#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/Ref.h"
#include "store/IdentifierIndex.h"
#include "store/NameIndex.h"

namespace brisel::store {

/// All instances of one type in the order in which they were made, and the look-ups among them.
/// Owns them. A removed instance leaves a hole behind; holes are swept when they are many. The
/// place of an instance (`slot`) only ever changes so that the order stays.
template <class T>
class Extension {
 public:
  [[nodiscard]] std::size_t count() const { return m_identifiers.size(); }
  [[nodiscard]] T* find(std::string_view identifier) const {
    return m_identifiers.find(TextKey(identifier));
  }
  [[nodiscard]] T* find(const TextKey& key) const { return m_identifiers.find(key); }

  /// The first in order of that name. The index of names is built when it is first asked for.
  [[nodiscard]] T* findByName(std::string_view name) const {
    if (!m_names) {
      m_names = std::make_unique<NameIndex<T>>();
      for (T* each = next(nullptr); each; each = next(each)) m_names->insert(each->name(), *each);
    }
    return m_names->first(name);
  }

  /// The instance behind the one given, the first one for none; nothing at the end.
  [[nodiscard]] T* next(const T* after) const {
    std::size_t slot = after ? after->slot() + std::size_t{1} : m_firstSlot;
    while (slot < m_slots.size() && !m_slots[slot]) ++slot;
    return slot < m_slots.size() ? m_slots[slot].get() : nullptr;
  }

  /// The instance at a position from 0, which must be below `count`. Cheap near the position that
  /// was asked for last and near both ends.
  [[nodiscard]] T* at(std::size_t position) const;

  void add(platform::Ref<T> element) {
    element->slot(static_cast<std::uint32_t>(m_slots.size()));
    m_identifiers.insert(*element);
    if (m_names) m_names->insert(element->name(), *element);
    m_slots.push_back(std::move(element));
  }
  /// The element must be in the extension; hands its ownership back.
  platform::Ref<T> take(T& element);

  /// Around a change of name or identifier of an instance.
  template <class Change>
  void rename(T& element, Change change) {
    if (m_names) m_names->erase(element.name(), element);
    change();
    if (m_names) m_names->insert(element.name(), element);
  }
  template <class Change>
  void identify(T& element, Change change) {
    m_identifiers.erase(element);
    change();
    m_identifiers.insert(element);
  }

  void reserve(std::size_t more) {
    m_slots.reserve(m_slots.size() + more);
    m_identifiers.reserve(count() + more);
  }

 private:
  void sweep();

  /// A place that is known: so many instances stand before the slot.
  struct Mark {
    std::size_t position = 0;
    std::size_t slot = 0;
  };

  std::vector<platform::Ref<T>> m_slots;
  std::size_t m_firstSlot = 0;  ///< there is no instance before it
  mutable Mark m_mark;
  IdentifierIndex<T> m_identifiers;
  mutable std::unique_ptr<NameIndex<T>> m_names;
};

template <class T>
T* Extension<T>::at(std::size_t position) const {
  const std::size_t fromMark =
      position > m_mark.position ? position - m_mark.position : m_mark.position - position;
  const std::size_t fromEnd = count() - position;
  if (std::min(position, fromEnd) < fromMark) {
    m_mark = position < fromEnd ? Mark{0, m_firstSlot} : Mark{count(), m_slots.size()};
  }

  while (m_mark.position > position) {
    --m_mark.slot;
    if (m_slots[m_mark.slot]) --m_mark.position;
  }
  while (m_mark.position < position || !m_slots[m_mark.slot]) {
    if (m_slots[m_mark.slot]) ++m_mark.position;
    ++m_mark.slot;
  }
  return m_slots[m_mark.slot].get();
}

template <class T>
platform::Ref<T> Extension<T>::take(T& element) {
  if (m_names) m_names->erase(element.name(), element);
  m_identifiers.erase(element);
  const std::size_t slot = element.slot();
  platform::Ref<T> taken = std::move(m_slots[slot]);
  if (slot < m_mark.slot) --m_mark.position;
  if (slot == m_firstSlot) ++m_firstSlot;
  element.slot(T::kNoSlot);
  sweep();
  return taken;
}

template <class T>
void Extension<T>::sweep() {
  while (!m_slots.empty() && !m_slots.back()) m_slots.pop_back();
  while (m_firstSlot < m_slots.size() && !m_slots[m_firstSlot]) ++m_firstSlot;
  if (m_slots.size() < 32 || count() * 2 > m_slots.size()) {
    if (m_slots.empty()) m_firstSlot = 0;
    if (m_mark.slot > m_slots.size()) m_mark = {.position = count(), .slot = m_slots.size()};
    return;
  }
  std::erase(m_slots, platform::Ref<T>());
  for (std::size_t i = 0; i < m_slots.size(); ++i) {
    m_slots[i]->slot(static_cast<std::uint32_t>(i));
  }
  m_firstSlot = 0;
  m_mark = {};
}

}  // namespace brisel::store
