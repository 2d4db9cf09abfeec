#pragma once

#include <vector>

#include "canvas/Item.h"
#include "canvas/Link.h"
#include "canvas/Node.h"
#include "canvas/Scene.h"
#include "platform/Diagram.h"

/// What gestures remember, to go on from or to go back to. Items that left the canvas meanwhile
/// are passed over.
namespace brisel::canvas {

/// What was selected.
class SelectionMemory {
 public:
  explicit SelectionMemory(Scene& scene);

  void restore() const;
  [[nodiscard]] std::vector<Item*> items() const;

 private:
  struct Kept {
    platform::Ref<platform::DiagramItem> object;
    Item* item;
  };
  Scene& m_scene;
  std::vector<Kept> m_items;
};

/// The bent lines at some boxes, which keep their right angles there while the boxes are moved or
/// resized. Every change is reckoned from what was at the beginning.
class FollowingLines {
 public:
  enum class Between { follow, leave };  ///< what becomes of lines that join two of the boxes

  FollowingLines(const std::vector<platform::Ref<Node>>& nodes, Between between);

  /// Brings the lines to where the boxes stand now.
  void follow();

 private:
  struct Line {
    platform::Ref<Link> link;
    std::vector<platform::Point> course;
    platform::Rect source;
    platform::Rect target;
  };
  std::vector<Line> m_lines;
};

/// The selected boxes and the bends of the lines between them, to be moved as one.
class MovingItems {
 public:
  explicit MovingItems(Scene& scene);

  [[nodiscard]] bool empty() const { return m_nodes.empty(); }
  /// Puts everything at its first place plus the distance, in whole twips.
  void moveBy(platform::Point distance);
  /// Around all boxes at their first places.
  [[nodiscard]] const platform::Rect& bounds() const { return m_bounds; }
  /// Keys of the boxes that do not stand at their first place.
  [[nodiscard]] std::vector<std::string> movedKeys() const;
  [[nodiscard]] bool contains(const Item& item) const;

 private:
  struct MovingNode {
    platform::Ref<Node> node;
    platform::Rect bounds;
  };
  struct MovingLink {
    platform::Ref<Link> link;
    std::vector<platform::Point> bends;
  };
  Scene& m_scene;
  std::vector<MovingNode> m_nodes;
  std::vector<MovingLink> m_links;
  FollowingLines m_following;
  platform::Rect m_bounds;
};

/// The nearest whole twips.
[[nodiscard]] platform::Point wholeTwips(platform::Point point);
/// The nearest place that an item may lie at; what is no number becomes the origin.
[[nodiscard]] platform::Point withinReach(platform::Point point);
[[nodiscard]] platform::Rect withinReach(const platform::Rect& rect);

}  // namespace brisel::canvas
