// The control's boxes and lines: making, finding, deleting, selecting and marking them.

#include <algorithm>
#include <unordered_set>

#include "canvas/DiagramControl.h"
#include "canvas/Interaction.h"

namespace brisel::canvas {

using platform::Collection;
using platform::DiagramLink;
using platform::DiagramNode;
using platform::make;
using platform::ObjectList;
using platform::Rect;
using platform::Ref;
using platform::Value;

namespace {

template <class Items>
Ref<Collection> listOf(const Items& items) {
  auto list = make<ObjectList>();
  list->reserve(items.size());
  for (const auto& item : items) list->add(item.get());
  return list;
}

template <class T>
Ref<Collection> listOf(const ItemList<T>& items) {
  auto list = make<ObjectList>();
  list->reserve(items.size());
  for (T& item : items) list->add(&item);
  return list;
}

Ref<Collection> linksAt(const Node* node, bool outgoing) {
  std::vector<Ref<Link>> links;
  if (node) {
    for (const Node::Attached& end : node->attached()) {
      if (end.atSource == outgoing) links.emplace_back(end.link);
    }
  }
  std::sort(links.begin(), links.end(),
            [](const auto& a, const auto& b) { return a->order() < b->order(); });
  return listOf(links);
}

}  // namespace

Node* DiagramControl::nodeOf(const Value& keyOrNode) const {
  if (keyOrNode.isString()) return m_scene.node(keyOrNode.string());
  if (!keyOrNode.isObject()) return nullptr;
  auto* node = dynamic_cast<Node*>(keyOrNode.object().get());
  return node && node->scene() == &m_scene ? node : nullptr;
}

Link* DiagramControl::linkOf(const Value& keyOrLink) const {
  if (keyOrLink.isString()) return m_scene.link(keyOrLink.string());
  if (!keyOrLink.isObject()) return nullptr;
  auto* link = dynamic_cast<Link*>(keyOrLink.object().get());
  return link && link->scene() == &m_scene ? link : nullptr;
}

std::string DiagramControl::newKey(std::string_view wanted) const {
  if (!wanted.empty() || !m_generator) return std::string(wanted);
  return m_generator->call("GetUUID").text();
}

bool DiagramControl::createNode(std::string_view key, std::string_view text, double left,
                                double top, double width, double height, std::int64_t style) {
  const Ref<DiagramControl> self(this);
  const std::string unique = newKey(key);
  if (unique.empty() || m_scene.node(unique)) return false;
  // What is no number is neither: it is refused below.
  const Rect bounds{left, top, width <= 0 ? m_newNodeSize.width : width,
                    height <= 0 ? m_newNodeSize.height : height};
  const auto node = make<Node>(unique, text, bounds, style, m_sections);
  m_scene.addNode(node);
  NodeCreated(unique);
  return node->scene() != nullptr;
}

bool DiagramControl::createLink(std::string_view key, std::string_view text,
                                std::string_view source, std::string_view target) {
  const Ref<DiagramControl> self(this);
  const std::string unique = newKey(key);
  Node* from = m_scene.node(source);
  Node* to = m_scene.node(target);
  if (unique.empty() || !from || !to || m_scene.link(unique)) return false;
  const auto link = make<Link>(unique, text, *from, *to);
  link->beginArrow(m_linkBeginArrow);
  link->endArrow(m_linkEndArrow);
  m_scene.addLink(link);
  LinkCreated(unique);
  return link->scene() != nullptr;
}

Node* DiagramControl::drawNode(const Rect& bounds) {
  const Ref<DiagramControl> self(this);
  const std::string key = newKey("");
  if (key.empty() || !createNode(key, kNewNodeText, bounds.left, bounds.top, bounds.width,
                                 bounds.height, Node::kClassBox)) {
    return nullptr;
  }
  Node* node = m_scene.node(key);
  if (node) selection().selectOnly(*node);
  return m_scene.node(key);
}

Link* DiagramControl::drawLink(const Node& source, const Node& target) {
  const Ref<DiagramControl> self(this);
  const std::string key = newKey("");
  if (key.empty() || !createLink(key, "", source.itemKey(), target.itemKey())) return nullptr;
  Link* link = m_scene.link(key);
  if (link) selection().selectOnly(*link);
  return m_scene.link(key);
}

Ref<DiagramNode> DiagramControl::getNode(std::string_view key) { return m_scene.node(key); }

Ref<DiagramLink> DiagramControl::getLink(std::string_view key) { return m_scene.link(key); }

void DiagramControl::take(const std::vector<Ref<Node>>& nodes,
                          const std::vector<Ref<Link>>& links) {
  const Ref<DiagramControl> self(this);
  std::vector<Ref<Link>> going = links;
  std::unordered_set<const Link*> known;
  for (const auto& link : links) known.insert(link.get());
  for (const auto& node : nodes) {
    for (const Node::Attached& end : node->attached()) {
      if (known.insert(end.link).second) going.emplace_back(end.link);
    }
  }
  bool wasInHand = false;
  const auto hovered = m_interaction->hovered();
  {
    const Scene::Update update(&m_scene);
    for (const auto& link : going) wasInHand |= m_interaction->forget(*link);
    for (const auto& node : nodes) wasInHand |= m_interaction->forget(*node);
    for (const auto& link : going) m_scene.remove(*link);
    for (const auto& node : nodes) m_scene.remove(*node);
  }
  for (const auto& link : going) {
    if (link == hovered) LinkLeave(link->key());
    LinkDeleted(link->key());
  }
  for (const auto& node : nodes) {
    if (node == hovered) NodeLeave(node->key());
    NodeDeleted(node->key());
  }
  for (const auto& link : going) link->dropStored();
  for (const auto& node : nodes) node->dropStored();
  if (wasInHand) m_interaction->refresh();
}

bool DiagramControl::deleteNode(const Value& keyOrNode) {
  Node* node = nodeOf(keyOrNode);
  if (node) take({node}, {});
  return node != nullptr;
}

bool DiagramControl::deleteLink(const Value& keyOrLink) {
  Link* link = linkOf(keyOrLink);
  if (link) take({}, {link});
  return link != nullptr;
}

bool DiagramControl::deleteItems(const std::vector<Item*>& items) {
  std::vector<Ref<Node>> nodes;
  std::vector<Ref<Link>> links;
  for (Item* item : items) {
    if (item->isLink()) {
      links.emplace_back(static_cast<Link*>(item));
    } else {
      nodes.emplace_back(static_cast<Node*>(item));
    }
  }
  take(nodes, links);
  return !items.empty();
}

bool DiagramControl::deleteSelectedItems() {
  m_interaction->cancel();
  const std::vector<Item*> items = m_scene.selection().selectedItems();
  m_scene.selection().clear();
  return deleteItems(items);
}

bool DiagramControl::deleteMarkedItems() {
  const std::vector<Item*> items = m_scene.selection().markedItems();
  m_scene.selection().clearMarks();
  return deleteItems(items);
}

void DiagramControl::Clear() {
  const Ref<DiagramControl> self(this);
  m_interaction->cancel();
  m_interaction->pointerLeave();
  m_scene.clear();
  Cleared();
}

Ref<Collection> DiagramControl::getAllNodes() { return listOf(m_scene.nodes()); }

Ref<Collection> DiagramControl::getAllLinks() { return listOf(m_scene.links()); }

Ref<Collection> DiagramControl::getSelectedNodes() { return listOf(selection().nodes()); }

Ref<Collection> DiagramControl::getSelectedLinks() { return listOf(selection().links()); }

Ref<Collection> DiagramControl::getIncomingLinks(const Value& node) {
  return linksAt(nodeOf(node), false);
}

Ref<Collection> DiagramControl::getOutgoingLinks(const Value& node) {
  return linksAt(nodeOf(node), true);
}

bool DiagramControl::selNode(const Value& node) {
  Node* found = nodeOf(node);
  if (found) selection().select(*found, true);
  return found != nullptr;
}

bool DiagramControl::selLink(const Value& link) {
  Link* found = linkOf(link);
  if (found) selection().select(*found, true);
  return found != nullptr;
}

bool DiagramControl::unselectAll() { return selection().clear(); }

bool DiagramControl::markNode(const Value& node) {
  Node* found = nodeOf(node);
  if (found) selection().mark(*found);
  return found != nullptr;
}

bool DiagramControl::markLink(const Value& link) {
  Link* found = linkOf(link);
  if (found) selection().mark(*found);
  return found != nullptr;
}

bool DiagramControl::unmarkAll() { return selection().clearMarks(); }

}  // namespace brisel::canvas
