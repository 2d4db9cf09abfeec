#pragma once

#include <cstddef>
#include <vector>

#include "platform/Ref.h"

namespace brisel::canvas {

class Item;
class Link;
class Node;
class Scene;

/// What is selected and what is marked, each in the order in which it happened.
class Selection {
 public:
  explicit Selection(Scene& scene) : m_scene(scene) {}

  /// In the order of selecting.
  [[nodiscard]] std::vector<platform::Ref<Node>> nodes() const;
  [[nodiscard]] std::vector<platform::Ref<Link>> links() const;
  [[nodiscard]] bool empty() const { return m_selected.empty(); }
  [[nodiscard]] std::size_t size() const { return m_selected.size(); }

  void select(Item& item, bool selected);
  /// Exactly these, in this order; all of them stand in the scene.
  void set(const std::vector<Item*>& items);
  void selectOnly(Item& item);
  void selectAll();
  /// True when something was selected.
  bool clear();

  void mark(Item& item);
  bool clearMarks();
  [[nodiscard]] const std::vector<Item*>& selectedItems() const { return m_selected; }
  [[nodiscard]] const std::vector<Item*>& markedItems() const { return m_marked; }

  /// The item leaves the canvas.
  void forget(Item& item);

 private:
  Scene& m_scene;
  std::vector<Item*> m_selected;
  std::vector<Item*> m_marked;
};

}  // namespace brisel::canvas
