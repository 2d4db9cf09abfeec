#include "store/StoredLink.h"

#include "store/Meta.h"

namespace brisel::store {

using platform::Ref;

StoredLink::StoredLink(LinkType& type, std::string_view name, const TextKey& identifier,
                       StoredNode& source, StoredNode& target)
    : StoredElement(identifier), m_type(&type), m_source(&source), m_target(&target) {
  m_name = pack(name);
}

StoredLink::~StoredLink() = default;

Ref<platform::MetaType> StoredLink::Parent() const { return m_type; }
Ref<platform::Node> StoredLink::source() const { return m_source; }
Ref<platform::Node> StoredLink::Target() const { return m_target; }

void StoredLink::identifier(std::string_view identifier) {
  m_type->identify(*this, m_identifier, identifier);
}

std::string StoredLink::name() const { return m_name.isComposed() ? composedName() : m_name.str(); }

void StoredLink::name(std::string_view name) {
  m_type->rename(*this, m_name, name, [&] { return pack(name); });
}

std::size_t StoredLink::composedSize() const {
  return m_source->packedIdentifier().size() + m_type->dottedRelation().size() +
         m_target->packedIdentifier().size();
}

std::string StoredLink::composedName() const {
  const std::string_view relation = m_type->dottedRelation();
  std::string name(composedSize(), '\0');
  char* at = m_source->packedIdentifier().copyTo(name.data());
  at = std::copy(relation.begin(), relation.end(), at);
  m_target->packedIdentifier().copyTo(at);
  return name;
}

/// Compares piece by piece: every link that is made asks.
bool StoredLink::isComposed(std::string_view name) const {
  const PackedText& source = m_source->packedIdentifier();
  const PackedText& target = m_target->packedIdentifier();
  const std::string_view relation = m_type->dottedRelation();
  if (name.size() != composedSize()) return false;
  return name.substr(source.size(), relation.size()) == relation &&
         source.equals(name.substr(0, source.size())) &&
         target.equals(name.substr(source.size() + relation.size()));
}

PackedText StoredLink::pack(std::string_view name) const {
  return isComposed(name) ? PackedText::composed() : PackedText(name);
}

void StoredLink::keepName() {
  if (m_name.isComposed()) m_name = PackedText(composedName());
}

void StoredLink::attach() {
  m_source->links().append(m_type->number(), Direction::outgoing, *this);
  m_target->links().append(m_type->number(), Direction::incoming, *this);
}

void StoredLink::detach() {
  keepName();
  m_source->links().remove(m_type->number(), Direction::outgoing, *this);
  m_target->links().remove(m_type->number(), Direction::incoming, *this);
  m_type->forgetMark();
}

}  // namespace brisel::store
