#include "store/LinkLists.h"

#include <algorithm>

#include "store/StoredLink.h"

namespace brisel::store {

LinkLists::~LinkLists() {
  if (m_capacity) delete[] m_block;
}

const LinkList* LinkLists::find(std::uint16_t type, Direction direction) const {
  const LinkList* found = std::find_if(begin(), end(), [&](const LinkList& list) {
    return list.type == type && list.direction == direction;
  });
  return found == end() ? nullptr : found;
}

LinkList* LinkLists::findList(std::uint16_t type, Direction direction) {
  return const_cast<LinkList*>(find(type, direction));
}

LinkList& LinkLists::add(const LinkList& list) {
  const std::uint16_t room = m_capacity ? m_capacity : kOwn;
  if (m_size == room) {
    auto* block = new LinkList[room * std::size_t{2}];
    std::copy(begin(), end(), block);
    if (m_capacity) delete[] m_block;
    m_block = block;
    m_capacity = static_cast<std::uint16_t>(room * 2);
  }
  LinkList* lists = m_capacity ? m_block : m_own;
  lists[m_size] = list;
  return lists[m_size++];
}

void LinkLists::append(std::uint16_t type, Direction direction, StoredLink& link) {
  StoredLink::Hook& hook = link.hook(direction);
  LinkList* list = findList(type, direction);
  if (!list) {
    hook = {.previous = &link, .next = &link};
    add({.first = &link, .count = 1, .type = type, .direction = direction});
    return;
  }
  StoredLink* last = list->first->hook(direction).previous;
  hook = {.previous = last, .next = list->first};
  last->hook(direction).next = &link;
  list->first->hook(direction).previous = &link;
  ++list->count;
}

void LinkLists::remove(std::uint16_t type, Direction direction, StoredLink& link) {
  LinkList* list = findList(type, direction);
  StoredLink::Hook& hook = link.hook(direction);
  if (--list->count == 0) {
    std::copy(const_cast<const LinkList*>(list) + 1, end(), list);
    --m_size;
  } else {
    hook.previous->hook(direction).next = hook.next;
    hook.next->hook(direction).previous = hook.previous;
    if (list->first == &link) list->first = hook.next;
  }
  hook = {};
}

}  // namespace brisel::store
