#include "store/StoredType.h"

#include "platform/Error.h"
#include "platform/Text.h"
#include "store/Meta.h"
#include "store/Views.h"

namespace brisel::store {

using platform::Change;
using platform::Collection;
using platform::Element;
using platform::Error;
using platform::ErrorNumber;
using platform::make;
using platform::Ref;
using platform::Value;

template <class T, class Self>
Ref<Collection> StoredType<T, Self>::extension() const {
  // Constness is that of the border's interface; a collection changes what it looks at.
  return make<ExtensionView<Self, T>>(const_cast<Self&>(static_cast<const Self&>(*this)));
}

template <class T, class Self>
Ref<Element> StoredType<T, Self>::extension(std::string_view identifier) const {
  if (T* found = m_instances.find(identifier)) return found;
  throw Error(ErrorNumber::notFound,
              "No " + m_name + " has the identifier '" + std::string(identifier) + "'");
}

template <class T, class Self>
void StoredType<T, Self>::requireFree(const TextKey& identifier) const {
  if (!m_instances.find(identifier)) return;
  throw Error(ErrorNumber::duplicateKey, "There is a " + m_name + " with the identifier '" +
                                             std::string(identifier.text()) + "' already");
}

template <class T, class Self>
void StoredType<T, Self>::identify(T& element, PackedText& at, std::string_view identifier) {
  const TextKey key(identifier);
  if (at.equals(key)) return;
  if (!element.isStored()) {
    at = PackedText(key);
    return;
  }
  requireFree(key);
  const bool told = m_repository->isListenedTo();
  const Value before = told ? Value(at.str()) : Value();
  const Value after = told ? Value(identifier) : Value();
  m_instances.identify(element, [&] { at = PackedText(key); });
  m_repository->tell(Change::Kind::identified, element, {}, before, after);
}

template <class T, class Self>
void StoredType<T, Self>::tellRenamed(T& element, const std::string& before,
                                      std::string_view name) {
  if (!m_repository->isListenedTo()) return m_repository->tell(Change::Kind::renamed, element);
  m_repository->tell(Change::Kind::renamed, element, {}, before, name);
}

template class StoredType<StoredNode, NodeType>;
template class StoredType<StoredLink, LinkType>;

NodeType::NodeType(Meta& repository, std::string_view name) : StoredType(repository, name) {
  declare("Identifier");
  declare("Name");
}

Ref<Collection> NodeType::outgoing() const {
  return make<FixedView<LinkType>>(*this, m_linkTypes[0]);
}
Ref<Collection> NodeType::Incoming() const {
  return make<FixedView<LinkType>>(*this, m_linkTypes[1]);
}
Ref<Collection> NodeType::properties() const {
  return make<FixedView<platform::PropertyDefinition>>(*this, m_definitions);
}

void NodeType::addLinkType(LinkType& type, Direction direction) {
  m_linkTypes[static_cast<std::size_t>(direction)].push_back(&type);
}

std::uint16_t NodeType::property(std::string_view key) const {
  if (m_guess < m_keys.size() && m_keys[m_guess] == key) return m_guess++;
  for (std::size_t i = 0; i < m_keys.size(); ++i) {
    if (!platform::equalsIgnoringCase(m_keys[i], key)) continue;
    m_guess = static_cast<std::uint16_t>(i + 1);
    return static_cast<std::uint16_t>(i);
  }
  return kUnknown;
}

std::uint16_t NodeType::declare(std::string_view key) {
  const std::uint16_t known = property(key);
  if (known != kUnknown) return known;
  if (m_keys.size() == kUnknown) {
    throw Error(ErrorNumber::invalidCall, "Too many properties of type " + m_name);
  }
  m_keys.emplace_back(key);
  m_definitions.push_back(make<platform::PropertyDefinition>(std::string(key)));
  return static_cast<std::uint16_t>(m_keys.size() - 1);
}

LinkType::LinkType(Meta& repository, std::string_view name, std::uint16_t number)
    : StoredType(repository, name),
      m_number(number),
      m_first(name.find('.')),
      m_second(name.rfind('.')) {}

Ref<Collection> LinkType::outgoing() const { return make<platform::ObjectList>(); }
Ref<Collection> LinkType::Incoming() const { return make<platform::ObjectList>(); }
Ref<Collection> LinkType::properties() const { return make<platform::ObjectList>(); }

StoredLink& LinkType::linkAt(const LinkList& list, std::size_t position) {
  const auto away = [&](std::size_t from) {
    return from > position ? from - position : position - from;
  };
  Mark mark{.list = list.first, .direction = list.direction, .position = 0, .link = list.first};
  const bool isSameList = m_mark.list == list.first && m_mark.direction == list.direction;
  if (isSameList && away(m_mark.position) < away(0)) mark = m_mark;
  if (away(list.count) < away(mark.position)) {
    mark.position = list.count;  // the ring: one behind the last is the first again
    mark.link = list.first;
  }
  for (; mark.position < position; ++mark.position) {
    mark.link = mark.link->hook(list.direction).next;
  }
  for (; mark.position > position; --mark.position) {
    mark.link = mark.link->hook(list.direction).previous;
  }
  m_mark = mark;
  return *mark.link;
}

}  // namespace brisel::store
