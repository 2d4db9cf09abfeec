#include "store/Views.h"

#include <string>

#include "platform/Error.h"
#include "store/Meta.h"

namespace brisel::store {

using platform::Error;
using platform::ErrorNumber;
using platform::Object;
using platform::Ref;

void requireItem(std::int64_t index, std::int64_t count) {
  if (index >= 1 && index <= count) return;
  throw Error(ErrorNumber::subscript,
              "No item " + std::to_string(index) + " in a collection of " + std::to_string(count));
}

template <class Type, class T>
std::int64_t ExtensionView<Type, T>::Count() const {
  return static_cast<std::int64_t>(m_type->instances().count());
}

template <class Type, class T>
Ref<Object> ExtensionView<Type, T>::Item(std::int64_t index) const {
  requireItem(index, Count());
  return m_type->instances().at(static_cast<std::size_t>(index - 1));
}

template <class Type, class T>
void ExtensionView<Type, T>::Remove(std::string_view identifier, bool) {
  if (T* found = m_type->instances().find(identifier)) m_type->repository()->remove(*found);
}

template <class Type, class T>
void ExtensionView<Type, T>::Clear() {
  while (T* first = m_type->instances().next(nullptr)) m_type->repository()->remove(*first);
}

template <class Type, class T>
void ExtensionView<Type, T>::advance(Cursor& cursor) const {
  cursor.element = m_type->instances().next(static_cast<T*>(cursor.element));
}

template class ExtensionView<NodeType, StoredNode>;
template class ExtensionView<LinkType, StoredLink>;

LinkView::LinkView(const StoredNode& node, std::string_view linkType, Direction direction)
    : m_node(&node), m_direction(direction) {
  const Meta* repository = node.type().repository();
  m_type = repository ? repository->findLinkType(linkType) : nullptr;
  if (!m_type) m_typeName = linkType;
}

LinkType* LinkView::type() const {
  if (m_type) return m_type.get();
  const Meta* repository = m_node->type().repository();
  m_type = repository ? repository->findLinkType(m_typeName) : nullptr;
  return m_type.get();
}

const LinkList* LinkView::list() const {
  const LinkType* known = type();
  return known ? m_node->links().find(known->number(), m_direction) : nullptr;
}

std::int64_t LinkView::Count() const {
  const LinkList* links = list();
  return links ? links->count : 0;
}

Ref<Object> LinkView::Item(std::int64_t index) const {
  const LinkList* links = list();
  requireItem(index, links ? links->count : 0);
  return &m_type->linkAt(*links, static_cast<std::size_t>(index - 1));
}

void LinkView::Remove(std::string_view identifier, bool) {
  LinkType* known = type();
  StoredLink* found = known ? known->instances().find(identifier) : nullptr;
  if (found && found->end(m_direction) == m_node) known->repository()->remove(*found);
}

void LinkView::Clear() {
  while (const LinkList* links = list()) m_type->repository()->remove(*links->first);
}

void LinkView::advance(Cursor& cursor) const {
  const LinkList* links = list();
  if (!links) {
    cursor.element = nullptr;
    return;
  }
  if (!cursor.element) {
    cursor.element = links->first;
    return;
  }
  StoredLink* next = static_cast<StoredLink*>(cursor.element)->hook(m_direction).next;
  cursor.element = next == links->first ? nullptr : next;
}

template <class T>
void FixedView<T>::refuse() {
  throw Error(ErrorNumber::invalidCall, "Types and property definitions cannot be removed");
}

template class FixedView<NodeType>;
template class FixedView<LinkType>;
template class FixedView<platform::PropertyDefinition>;

}  // namespace brisel::store
