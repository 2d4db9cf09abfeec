#include "canvas/ExtentTree.h"

#include <algorithm>

namespace brisel::canvas {

using platform::Rect;

void ExtentTree::put(std::size_t& slot, const Rect& extent) {
  if (slot == kNoSlot) {
    if (m_free.empty()) {
      slot = m_used++;
      if (m_used > leaves()) grow();
    } else {
      slot = m_free.back();
      m_free.pop_back();
    }
  }
  set(slot, extent);
}

void ExtentTree::remove(std::size_t& slot) {
  if (slot == kNoSlot) return;
  set(slot, {});
  m_free.push_back(slot);
  slot = kNoSlot;
}

void ExtentTree::set(std::size_t slot, const Rect& extent) {
  std::size_t node = leaves() + slot;
  m_nodes[node] = extent;
  while (node > 1) {
    node /= 2;
    const Rect all = around(node);
    if (m_nodes[node] == all) return;
    m_nodes[node] = all;
  }
}

void ExtentTree::grow() {
  std::vector<Rect> nodes(m_nodes.size() * 2);
  std::copy(m_nodes.begin() + static_cast<std::ptrdiff_t>(leaves()), m_nodes.end(),
            nodes.begin() + static_cast<std::ptrdiff_t>(m_nodes.size()));
  m_nodes = std::move(nodes);
  for (std::size_t node = leaves() - 1; node > 0; --node) m_nodes[node] = around(node);
}

}  // namespace brisel::canvas
