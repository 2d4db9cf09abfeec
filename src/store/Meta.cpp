#include "store/Meta.h"

#include <algorithm>

#include "platform/Error.h"
#include "store/Conventions.h"
#include "store/Views.h"

namespace brisel::store {

using platform::Change;
using platform::Error;
using platform::ErrorNumber;
using platform::make;
using platform::Ref;

namespace {

[[noreturn]] void failCall(const std::string& description) {
  throw Error(ErrorNumber::invalidCall, description);
}

std::string quoted(std::string_view text) { return std::string("'").append(text).append("'"); }

}  // namespace

template <class Type>
Type* Meta::Types<Type>::find(std::string_view name) const {
  if (m_last && m_last->typeName() == name) return m_last;
  const auto found = m_byName.find(name);
  if (found == m_byName.end()) return nullptr;
  return m_last = found->second;
}

template <class Type>
Type& Meta::Types<Type>::add(Ref<Type> type) {
  m_byName.emplace(type->typeName(), type.get());
  return *m_all.emplace_back(std::move(type));
}

template <class Type>
void Meta::Types<Type>::forget() {
  for (const Ref<Type>& type : m_all) type->forgetRepository();
  *this = {};
}

Meta::~Meta() {
  m_listeners.reset();  // nobody is told of the end
  clear();
}

void Meta::Init() {
  requireOpen();
  clear();
  for (const NodeConvention& convention : nodeConventions()) {
    NodeType& type = nodeType(convention.type);
    for (const std::string_view key : convention.keys) type.declare(key);
  }
  for (const std::string_view name : linkConventions()) linkType(name);
}

/// What a listener made meanwhile would be lost: it is refused.
void Meta::clear() {
  struct Clearing {
    bool& is;
    ~Clearing() { is = false; }
  } const clearing{m_isClearing = true};
  for (const Ref<LinkType>& type : m_linkTypes.all()) type->extension()->Clear();
  for (const Ref<NodeType>& type : m_nodeTypes.all()) type->extension()->Clear();
  m_linkTypes.forget();
  m_nodeTypes.forget();
}

Ref<platform::MetaType> Meta::MetaNodes(std::string_view type) const {
  if (NodeType* found = findNodeType(type)) return found;
  throw Error(ErrorNumber::notFound, "Unknown node type: " + quoted(type));
}

Ref<platform::MetaType> Meta::MetaLinks(std::string_view type) const {
  if (LinkType* found = findLinkType(type)) return found;
  throw Error(ErrorNumber::notFound, "Unknown link type: " + quoted(type));
}

Ref<platform::Collection> Meta::nodeTypes() const {
  return make<FixedView<NodeType>>(*this, m_nodeTypes.all());
}

Ref<platform::Collection> Meta::linkTypes() const {
  return make<FixedView<LinkType>>(*this, m_linkTypes.all());
}

NodeType* Meta::findNodeType(std::string_view name) const { return m_nodeTypes.find(name); }
LinkType* Meta::findLinkType(std::string_view name) const { return m_linkTypes.find(name); }

NodeType& Meta::nodeType(std::string_view name) {
  if (NodeType* known = findNodeType(name)) return *known;
  if (name.empty() || name.find('.') != std::string_view::npos) {
    failCall("No name for a node type: " + quoted(name));
  }
  return m_nodeTypes.add(make<NodeType>(*this, name));
}

/// The name must be of three words; the first and the last must be known node types.
LinkType& Meta::linkType(std::string_view name) {
  if (m_linkTypes.all().size() > 0xFFFE) failCall("Too many link types");
  const auto number = static_cast<std::uint16_t>(m_linkTypes.all().size());
  LinkType& type = m_linkTypes.add(make<LinkType>(*this, name, number));
  findNodeType(type.sourceType())->addLinkType(type, Direction::outgoing);
  findNodeType(type.targetType())->addLinkType(type, Direction::incoming);
  return type;
}

LinkType& Meta::linkTypeBetween(std::string_view name, const StoredNode& source,
                                const StoredNode& target) {
  const std::string_view from = source.type().typeName();
  const std::string_view to = target.type().typeName();
  LinkType* known = findLinkType(name);
  if (known && known->sourceType() == from && known->targetType() == to) return *known;
  const bool isOfThreeWords =
      std::count(name.begin(), name.end(), '.') == 2 && name.find("..") == std::string_view::npos;
  const bool fits = isOfThreeWords && name.substr(0, name.find('.')) == from &&
                    name.substr(name.rfind('.') + 1) == to;
  if (!fits) {
    failCall("No link of type " + quoted(name) + " joins a " + std::string(from) + " with a " +
             std::string(to));
  }
  return linkType(name);
}

StoredNode& Meta::ownNode(platform::Node& node) const {
  auto* stored = dynamic_cast<StoredNode*>(&node);
  if (!stored || !stored->isStored() || stored->type().repository() != this) {
    failCall("The node " + quoted(node.identifier()) + " is not in the repository");
  }
  return *stored;
}

void Meta::requireOpen() const {
  if (m_isClearing) failCall("Nothing can be made while the repository is being emptied");
}

Ref<platform::Node> Meta::MakeNode(std::string_view type, std::string_view name,
                                   std::string_view identifier) {
  requireOpen();
  NodeType& parent = nodeType(type);
  const TextKey key(identifier);
  parent.requireFree(key);
  auto node = make<StoredNode>(parent, name, key);
  parent.instances().add(node);
  tell(Change::Kind::nodeMade, *node);
  return node;
}

Ref<platform::Link> Meta::MakeLink(std::string_view type, std::string_view name,
                                   std::string_view identifier, platform::Node& source,
                                   platform::Node& target) {
  requireOpen();
  StoredNode& from = ownNode(source);
  StoredNode& to = ownNode(target);
  LinkType& parent = linkTypeBetween(type, from, to);
  const TextKey key(identifier);
  parent.requireFree(key);
  auto link = make<StoredLink>(parent, name, key, from, to);
  parent.instances().add(link);
  link->attach();
  tell(Change::Kind::linkMade, *link);
  return link;
}

void Meta::RemoveAssoc(platform::Link& link) {
  auto* stored = dynamic_cast<StoredLink*>(&link);
  if (stored && stored->type().repository() == this) remove(*stored);
}

void Meta::remove(StoredLink& link) {
  if (!link.isStored()) return;
  const Ref<StoredLink> held = link.type().instances().take(link);
  link.detach();
  tell(Change::Kind::linkRemoved, link);
}

void Meta::remove(StoredNode& node) {
  const Ref<StoredNode> held = &node;
  const auto leaves = [](const LinkList& list) { return list.direction == Direction::outgoing; };
  for (;;) {
    const LinkList* list = std::find_if(node.links().begin(), node.links().end(), leaves);
    if (list == node.links().end()) break;
    remove(*list->first);
  }
  if (!node.isStored()) return;
  node.type().instances().take(node);
  tell(Change::Kind::nodeRemoved, node);
}

platform::Connection Meta::onChange(std::function<void(const Change&)> listener) {
  return m_changed.connect([held = m_listeners, listener = std::move(listener)](
                               const Change& change) { listener(change); });
}

void Meta::tell(Change::Kind kind, platform::Element& element, std::string_view key,
                const Value& before, const Value& after) {
  const std::uint64_t number = ++m_changes;
  if (isListenedTo()) m_changed(Change{kind, number, element, key, before, after});
}

void Meta::reserveNodes(std::string_view type, std::size_t more) {
  nodeType(type).instances().reserve(more);
}

void Meta::reserveLinks(std::string_view type, std::size_t more) {
  if (LinkType* known = findLinkType(type)) known->instances().reserve(more);
}

}  // namespace brisel::store
