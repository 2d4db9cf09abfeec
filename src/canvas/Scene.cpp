#include "canvas/Scene.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace brisel::canvas {

using platform::Rect;
using platform::Ref;

namespace {

/// Above this many areas one around all of them is told instead.
constexpr std::size_t kMostAreas = 1024;
constexpr double kEverywhere = 1e11;

template <class T>
void sortByOrder(std::vector<const T*>& items) {
  std::sort(items.begin(), items.end(),
            [](const T* a, const T* b) { return a->order() < b->order(); });
}

bool comesBefore(const Link* a, const Link* b) { return a->order() < b->order(); }

}  // namespace

Scene::Scene() = default;

Scene::~Scene() {
  for (Node& node : m_nodes) {
    node.m_scene = nullptr;
    node.dropStored();
  }
  for (Link& link : m_links) {
    link.m_scene = nullptr;
    link.dropStored();
  }
}

void Scene::collect(const Rect& area, std::vector<Item*>& found) const {
  settle();
  m_index.collect(area, found);
}

void Scene::itemsIn(const Rect& area, std::vector<const Node*>& nodes,
                    std::vector<const Link*>& links) const {
  nodes.clear();
  links.clear();
  if (area.contains(extent())) {
    for (const Node& node : m_nodes) nodes.push_back(&node);
    for (const Link& link : m_links) links.push_back(&link);
    return;
  }
  std::vector<Item*> found;
  collect(area, found);
  for (Item* item : found) {
    if (item->isLink()) {
      links.push_back(static_cast<Link*>(item));
    } else {
      nodes.push_back(static_cast<Node*>(item));
    }
  }
  sortByOrder(nodes);
  sortByOrder(links);
}

Rect Scene::extent() const {
  settle();
  return m_extents.all();
}

Node* Scene::node(std::string_view key) const {
  const auto found = m_nodeByKey.find(key);
  return found == m_nodeByKey.end() ? nullptr : found->second;
}

Link* Scene::link(std::string_view key) const {
  const auto found = m_linkByKey.find(key);
  return found == m_linkByKey.end() ? nullptr : found->second;
}

void Scene::titleFont(Font font) {
  if (font == m_titleFont) return;
  m_titleFont = std::move(font);
  fontsChanged();
}

void Scene::textFont(Font font) {
  if (font == m_textFont) return;
  m_textFont = std::move(font);
  fontsChanged();
}

void Scene::fontsChanged() {
  const Update update(this);
  for (Node& node : m_nodes) node.contentChanged();
  for (Link& link : m_links) link.geometryChanged();
}

void Scene::backColor(std::int64_t color) {
  if (color == m_backColor) return;
  m_backColor = color;
  damageAll();
}

Node* Scene::addNode(Ref<Node> node) {
  if (!m_nodeByKey.emplace(node->itemKey(), node.get()).second) return nullptr;
  adopt(*node);
  m_nodes.add(node);
  ++m_geometryRevision;
  node->contentChanged();
  return node.get();
}

Link* Scene::addLink(Ref<Link> link) {
  if (!m_linkByKey.emplace(link->itemKey(), link.get()).second) return nullptr;
  const Update update(this);
  adopt(*link);
  m_links.add(link);
  ++m_geometryRevision;
  attach(*link);
  link->geometryChanged();
  return link.get();
}

void Scene::remove(Node& node) {
  const Ref<Node> kept(&node);
  m_nodeByKey.erase(node.itemKey());
  m_nodes.remove(node);
  forget(node);
}

void Scene::remove(Link& link) {
  const Ref<Link> kept(&link);
  const Update update(this);
  static_cast<void>(link.points());  // what it answers from now on
  detach(link);
  m_linkByKey.erase(link.itemKey());
  m_links.remove(link);
  forget(link);
}

void Scene::clear() {
  const Update update(this);
  m_selection.clear();
  m_selection.clearMarks();
  for (Link& link : m_links) static_cast<void>(link.points());
  for (Item* item : m_pending) {
    if (item) item->m_pending = 0;
  }
  m_pending.clear();
  m_index.clear();
  m_labels.clear();
  m_extents.clear();
  ++m_geometryRevision;
  const auto nodes = m_nodes.copy();  // the last references may go here
  const auto links = m_links.copy();
  m_nodes.clear();
  m_links.clear();
  m_nodeByKey.clear();
  m_linkByKey.clear();
  m_pairs.clear();
  for (const auto& link : links) {
    link->m_scene = nullptr;
    link->m_extentSlot = ExtentTree::kNoSlot;
    link->dropStored();
  }
  for (const auto& node : nodes) {
    node->m_scene = nullptr;
    node->m_extentSlot = ExtentTree::kNoSlot;
    node->m_attached.clear();
    node->dropStored();
  }
  damageAll();
}

void Scene::adopt(Item& item) {
  item.m_scene = this;
  item.m_order = m_nextOrder++;
}

void Scene::forget(Item& item) {
  m_selection.forget(item);
  if (item.isLink()) {
    m_labels.forget(static_cast<Link&>(item));
  } else {
    m_labels.forget(static_cast<Node&>(item));
  }
  if (item.m_pending > 0) m_pending[item.m_pending - 1] = nullptr;
  item.m_pending = 0;
  item.m_scene = nullptr;
  ++m_geometryRevision;
  m_extents.remove(item.m_extentSlot);
  m_oldParts.clear();
  GridIndex::partsOf(item.m_place, m_oldParts);
  m_index.remove(item.m_place);
  if (m_oldParts.empty()) return;  // was never shown
  ++m_revision;
  for (const Rect& part : m_oldParts) addDamage(m_damage, part);
  if (m_updates == 0) tell();
}

void Scene::touched(Item& item) {
  ++m_revision;
  if (item.m_pending == 0) {
    m_pending.push_back(&item);
    item.m_pending = m_pending.size();
  }
  if (m_updates == 0) tell();
}

void Scene::settle() const {
  if (m_settling) return;
  m_settling = true;
  for (std::size_t i = 0; i < m_pending.size(); ++i) {
    if (!m_pending[i]) continue;
    m_pending[i]->m_pending = 0;
    enter(*m_pending[i]);
  }
  m_pending.clear();
  m_moved.clear();
  m_labels.settle(m_moved);
  enterMoved();
  m_settling = false;
}

/// Notes where lines lie of which texts moved.
void Scene::enterMoved() const {
  for (const Labels::Moved& moved : m_moved) {
    addDamage(m_damage, moved.before);
    addDamage(m_damage, moved.after);
  }
  std::sort(m_moved.begin(), m_moved.end(),
            [](const auto& a, const auto& b) { return a.link->order() < b.link->order(); });
  const Link* last = nullptr;
  for (const auto& [link, before, after] : m_moved) {
    if (std::exchange(last, link) == link) continue;
    m_extents.put(link->m_extentSlot, link->extent());
    m_newParts.clear();
    link->addParts(m_newParts);
    m_index.put(*link, link->m_place, m_newParts);
  }
}

/// Notes where the item lies and what of the picture is another for it.
void Scene::enter(Item& item) const {
  m_oldParts.clear();
  m_newParts.clear();
  GridIndex::partsOf(item.m_place, m_oldParts);
  const bool relabel =
      item.isLink() && std::exchange(static_cast<Link&>(item).m_textsStale, false);
  if (relabel) m_labels.changed(static_cast<Link&>(item));
  item.addParts(m_newParts);
  for (const Rect& part : m_oldParts) addDamage(m_damage, part);
  m_extents.put(item.m_extentSlot, item.extent());
  if (m_newParts == m_oldParts && !relabel) return;
  if (!item.isLink()) m_labels.changed(static_cast<Node&>(item));
  for (const Rect& part : m_newParts) addDamage(m_damage, part);
  m_index.put(item, item.m_place, m_newParts);
}

void Scene::addDamage(std::vector<Rect>& damage, const Rect& area) {
  if (damage.size() < kMostAreas) {
    damage.push_back(area);
    return;
  }
  Rect all = area;
  for (const Rect& one : damage) all = all.united(one);
  damage.assign(1, all);
}

void Scene::tell() {
  settle();
  if (m_damage.empty()) return;
  const std::vector<Rect> damaged = std::exchange(m_damage, {});
  Damaged(damaged);
}

void Scene::damage(const Rect& area) {
  ++m_revision;
  damageOverlay(area);
}

void Scene::damageOverlay(const Rect& area) {
  addDamage(m_damage, area);
  if (m_updates == 0) tell();
}

void Scene::damageAll() { damage({-kEverywhere, -kEverywhere, 2 * kEverywhere, 2 * kEverywhere}); }

void Scene::endUpdate() {
  if (m_updates == 0) return;
  if (--m_updates == 0) tell();
}

std::size_t Scene::PairHash::operator()(const Pair& pair) const {
  const std::hash<const void*> hash;
  return hash(pair.a) * 31 + hash(pair.b);
}

Scene::Pair Scene::pairOf(const Link& link) {
  const Node* a = &link.sourceNode();
  const Node* b = &link.targetNode();
  return a->order() <= b->order() ? Pair{a, b} : Pair{b, a};
}

void Scene::attachEnd(Link& link, bool atSource) {
  auto& attached = (atSource ? link.m_source : link.m_target)->m_attached;
  (atSource ? link.m_sourceSlot : link.m_targetSlot) = attached.size();
  attached.push_back({&link, atSource});
}

void Scene::detachEnd(Link& link, bool atSource) {
  auto& attached = (atSource ? link.m_source : link.m_target)->m_attached;
  const std::size_t slot = atSource ? link.m_sourceSlot : link.m_targetSlot;
  const Node::Attached moved = attached.back();
  (moved.atSource ? moved.link->m_sourceSlot : moved.link->m_targetSlot) = slot;
  attached[slot] = moved;
  attached.pop_back();
}

void Scene::attach(Link& link) {
  attachEnd(link, true);
  attachEnd(link, false);
  auto& pair = m_pairs[pairOf(link)];
  pair.insert(std::upper_bound(pair.begin(), pair.end(), &link, comesBefore), &link);
  pairChanged(link);
}

void Scene::detach(Link& link) {
  detachEnd(link, true);
  detachEnd(link, false);
  const auto pair = m_pairs.find(pairOf(link));
  std::erase(pair->second, &link);
  if (pair->second.empty()) {
    m_pairs.erase(pair);
  } else {
    pairChanged(*pair->second.front());
  }
}

void Scene::pairChanged(const Link& changed) {
  const auto found = m_pairs.find(pairOf(changed));
  if (found == m_pairs.end()) return;
  const auto& links = found->second;
  const auto isStraight = [](const Link* link) { return link->m_bends.empty(); };
  const auto count =
      static_cast<std::size_t>(std::count_if(links.begin(), links.end(), isStraight));
  const Update update(this);
  std::size_t index = 0;
  std::size_t place = 0;
  for (Link* link : links) {
    const bool reversed = &link->sourceNode() != found->first.a;
    const Rank labelRank{place++, links.size(), reversed};
    if (!link->itemText().empty() && labelRank != link->m_labelRank) link->geometryChanged();
    link->m_labelRank = labelRank;
    if (!isStraight(link)) continue;
    const Rank rank{index++, count, reversed};
    if (rank == link->m_rank) continue;
    link->m_rank = rank;
    link->geometryChanged();
  }
}

}  // namespace brisel::canvas
