#include "store/StoredNode.h"

#include "platform/Text.h"
#include "store/Meta.h"
#include "store/Views.h"

namespace brisel::store {

using platform::Change;
using platform::Collection;
using platform::Ref;
using platform::Value;

StoredNode::StoredNode(NodeType& type, std::string_view name, const TextKey& identifier)
    : StoredElement(identifier), m_type(&type) {
  m_name = PackedText(name);
}

StoredNode::~StoredNode() = default;

Ref<platform::MetaType> StoredNode::Parent() const { return m_type; }

void StoredNode::identifier(std::string_view identifier) {
  const TextKey key(identifier);
  if (m_identifier.equals(key)) return;
  if (isStored()) m_type->requireFree(key);
  keepLinkNames();
  m_type->identify(*this, m_identifier, identifier);
}

/// The names of its links that are composed of its identifier stay as they are.
void StoredNode::keepLinkNames() {
  for (const LinkList& list : m_links) {
    StoredLink* link = list.first;
    do {
      link->keepName();
      link = link->hook(list.direction).next;
    } while (link != list.first);
  }
}

void StoredNode::name(std::string_view name) {
  m_type->rename(*this, m_name, name, [&] { return PackedText(name); });
}

Ref<Collection> StoredNode::outgoing(std::string_view linkType) const {
  return platform::make<LinkView>(*this, linkType, Direction::outgoing);
}

Ref<Collection> StoredNode::Incoming(std::string_view linkType) const {
  return platform::make<LinkView>(*this, linkType, Direction::incoming);
}

Value StoredNode::Prop_(std::string_view name) const { return GetProperty(name); }

Value StoredNode::GetProperty(std::string_view key) const {
  const std::uint16_t number = m_type->property(key);
  if (number == NodeType::kName) return name();
  if (number == NodeType::kIdentifier) return identifier();
  return number == NodeType::kUnknown ? Value() : m_properties.get(number);
}

void StoredNode::SetProperty(std::string_view key, const Value& value) {
  const std::uint16_t number = value.isEmpty() ? m_type->property(key) : m_type->declare(key);
  if (number == NodeType::kName) return name(value.text());
  if (number == NodeType::kIdentifier) return identifier(value.text());
  if (number == NodeType::kUnknown) return;
  const bool told = isStored() && m_type->repository()->isListenedTo();
  const Value before = told ? m_properties.get(number) : Value();
  if (!m_properties.set(number, value) || !isStored()) return;
  const std::string asDeclared = told ? m_type->propertyName(number) : std::string();
  m_type->repository()->tell(Change::Kind::propertySet, *this, asDeclared, before, value);
}

}  // namespace brisel::store
