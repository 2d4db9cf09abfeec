#pragma once

#include <cstdint>

namespace brisel::store {

class StoredLink;

/// Which end of a link a node is.
enum class Direction : std::uint8_t { outgoing, incoming };

/// The links of one type that leave or enter one node: a ring through the links themselves, in the
/// order in which they were made. Never empty.
struct LinkList {
  StoredLink* first;
  std::uint32_t count;
  std::uint16_t type;  ///< the number of the link type
  Direction direction;
};

/// The link lists of one node. Two fit without a block of their own: most nodes have no more.
class LinkLists {
 public:
  LinkLists() {}
  LinkLists(const LinkLists&) = delete;
  LinkLists& operator=(const LinkLists&) = delete;
  ~LinkLists();

  [[nodiscard]] const LinkList* begin() const { return m_capacity ? m_block : m_own; }
  [[nodiscard]] const LinkList* end() const { return begin() + m_size; }
  [[nodiscard]] const LinkList* find(std::uint16_t type, Direction direction) const;

  /// Both keep the order of the list; `remove` must be given a link that is in the list.
  void append(std::uint16_t type, Direction direction, StoredLink& link);
  void remove(std::uint16_t type, Direction direction, StoredLink& link);

 private:
  static constexpr std::uint16_t kOwn = 2;

  LinkList* findList(std::uint16_t type, Direction direction);
  LinkList& add(const LinkList& list);

  std::uint16_t m_size = 0;
  std::uint16_t m_capacity = 0;  ///< of the block; 0 while the lists are in `m_own`
  union {
    LinkList m_own[kOwn];
    LinkList* m_block;
  };
};

}  // namespace brisel::store
