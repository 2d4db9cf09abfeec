#include "canvas/Selection.h"

#include <algorithm>

#include "canvas/Scene.h"

namespace brisel::canvas {

using platform::Ref;

namespace {

template <class T>
std::vector<Ref<T>> onlyKind(const std::vector<Item*>& items, bool links) {
  std::vector<Ref<T>> kind;
  for (Item* item : items) {
    if (item->isLink() == links) kind.emplace_back(static_cast<T*>(item));
  }
  return kind;
}

}  // namespace

std::vector<Ref<Node>> Selection::nodes() const { return onlyKind<Node>(m_selected, false); }

std::vector<Ref<Link>> Selection::links() const { return onlyKind<Link>(m_selected, true); }

void Selection::select(Item& item, bool selected) {
  if (item.m_selected == selected) return;
  item.m_selected = selected;
  if (selected) {
    m_selected.push_back(&item);
  } else {
    std::erase(m_selected, &item);
  }
  m_scene.touched(item);
}

void Selection::set(const std::vector<Item*>& items) {
  const Scene::Update update(&m_scene);
  const std::vector<Item*> before = std::exchange(m_selected, {});
  for (Item* item : items) {
    if (!item->m_selected) m_scene.touched(*item);
  }
  for (Item* item : before) item->m_selected = false;
  for (Item* item : items) {
    if (std::exchange(item->m_selected, true)) continue;  // given twice
    m_selected.push_back(item);
  }
  for (Item* item : before) {
    if (!item->m_selected) m_scene.touched(*item);
  }
}

void Selection::selectOnly(Item& item) { set({&item}); }

void Selection::selectAll() {
  std::vector<Item*> all;
  all.reserve(m_scene.nodes().size() + m_scene.links().size());
  for (Node& node : m_scene.nodes()) all.push_back(&node);
  for (Link& link : m_scene.links()) all.push_back(&link);
  set(all);
}

bool Selection::clear() {
  if (m_selected.empty()) return false;
  set({});
  return true;
}

void Selection::mark(Item& item) {
  if (item.m_marked) return;
  item.m_marked = true;
  m_marked.push_back(&item);
}

bool Selection::clearMarks() {
  if (m_marked.empty()) return false;
  for (Item* item : m_marked) item->m_marked = false;
  m_marked.clear();
  return true;
}

void Selection::forget(Item& item) {
  if (item.m_selected) std::erase(m_selected, &item);
  if (item.m_marked) std::erase(m_marked, &item);
  item.m_selected = false;
  item.m_marked = false;
}

}  // namespace brisel::canvas
