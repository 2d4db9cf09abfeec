#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "canvas/ExtentTree.h"
#include "canvas/GridIndex.h"
#include "platform/Diagram.h"

namespace brisel::canvas {

class Scene;

/// What boxes and lines have in common for the scene that they stand in. An item that left its
/// scene keeps what it had and still answers.
class Item {
 public:
  Item() = default;
  Item(const Item&) = delete;
  Item& operator=(const Item&) = delete;
  virtual ~Item() = default;

  /// The item as the object that hosts hold.
  [[nodiscard]] virtual platform::DiagramItem& object() = 0;
  [[nodiscard]] virtual bool isLink() const = 0;
  /// Around all that is painted of the item, its labels and decorations included, without handles.
  [[nodiscard]] virtual platform::Rect extent() const = 0;
  /// Adds rectangles that together cover all that is painted; by these the item is found.
  virtual void addParts(std::vector<platform::Rect>& parts) const { parts.push_back(extent()); }

  [[nodiscard]] const std::string& itemKey() const { return m_key; }
  [[nodiscard]] const std::string& itemText() const { return m_text; }
  [[nodiscard]] bool isSelected() const { return m_selected; }
  /// Marked: remembered by a host for `deleteMarkedItems`; not shown.
  [[nodiscard]] bool isMarked() const { return m_marked; }
  /// Nothing once the item left the canvas.
  [[nodiscard]] Scene* scene() const { return m_scene; }
  /// Grows with creation: among boxes, and among lines, later ones lie above earlier ones.
  [[nodiscard]] std::uint64_t order() const { return m_order; }

  [[nodiscard]] platform::Ref<platform::Object> stored(std::string_view name) const;
  void store(std::string_view name, platform::Object* object);
  /// Lets go of all stored objects. The canvas does so when it loses the item: what is stored on an
  /// item mostly holds that item, and neither would ever end.
  void dropStored();

 protected:
  std::string m_key;
  std::string m_text;

 private:
  friend class Scene;
  friend class Selection;

  Scene* m_scene = nullptr;
  std::uint64_t m_order = 0;
  std::size_t m_pending = 0;  ///< place in the scene's list of changed items, from 1; 0: not in it
  GridIndex::Place m_place;
  std::size_t m_extentSlot = ExtentTree::kNoSlot;
  bool m_selected = false;
  bool m_marked = false;
  std::vector<std::pair<std::string, platform::Ref<platform::Object>>> m_objects;
};

}  // namespace brisel::canvas
