#pragma once

#include <cstdint>
#include <map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "canvas/GridIndex.h"
#include "layout/LabelPlacement.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

class Item;
class Link;
class Node;
class Scene;

/// Keeps the texts of a scene's lines clear of boxes and of each other. Owned by the scene.
///
/// Texts of ends come before names, and lines that were made earlier before later ones: a text
/// makes way for what comes before it and for boxes, so that the places follow from the picture
/// alone. After a change those texts are placed anew for which something changed where they stand
/// or would rather stand, then those that come after them and for which they did so.
class Labels {
 public:
  explicit Labels(const Scene& scene) : m_scene(scene) {}

  /// A box came or moved: where it stood and stands.
  void changed(const Node& node, const platform::Rect& before, const platform::Rect& after);
  void forget(const Node& node, const platform::Rect& before);
  /// The course of the line or one of its texts is another: it is without texts until they are
  /// placed.
  void changed(Link& link);
  void forget(Link& link);
  void clear();

  /// Places what changes concern; adds the lines of which a text moved, each with what is to be
  /// painted again.
  /// Pre: all items are found where they lie.
  struct Moved {
    Link* link;
    platform::Rect before;
    platform::Rect after;
  };
  template <class Tell>
  void settle(Tell&& tell) {
    findConcerned();
    std::vector<Moved> moved;
    while (!m_queue.empty()) {
      const auto next = m_queue.begin();
      const Turn turn = next->first;
      Link& link = *next->second;
      m_queue.erase(next);
      moved.clear();
      place(link, turn.stage, moved);
      for (const Moved& one : moved) {
        tell(one);
        queueBehind(turn, one.before);
        queueBehind(turn, one.after);
      }
    }
  }

 private:
  enum class Stage { ends, name };
  /// The order in which texts are placed.
  struct Turn {
    Stage stage;
    std::uint64_t order;
    friend auto operator<=>(const Turn&, const Turn&) = default;
  };

  struct Piece {
    platform::Point from;
    platform::Point to;
  };

  void changed(const platform::Rect& area) { m_areas.push_back(area); }
  void addPieces(const std::vector<platform::Point>& course);
  void findConcerned();
  void findConcerned(const Piece& piece);
  void queue(Link& link);
  void queueBehind(Turn turn, const platform::Rect& area);
  void place(Link& link, Stage stage, std::vector<Moved>& moved);
  [[nodiscard]] layout::PlacedLabel bestOf(const std::vector<layout::LabelCandidate>& candidates,
                                           const Link& link, Stage stage) const;
  void addObstacles(const platform::Rect& area, const Link& link, Stage stage,
                    layout::LabelObstacles& found) const;
  static void addObstacle(const Item& item, const platform::Rect& area, const Link& link, Stage stage,
                          layout::LabelObstacles& found);
  void noteSize(const Item& item, double side);

  const Scene& m_scene;
  GridIndex m_regions;  ///< what the places of each line's texts depend on
  std::vector<platform::Rect> m_areas;
  std::vector<Piece> m_pieces;              ///< of lines as they were and as they are
  std::unordered_set<const Item*> m_large;  ///< boxes, and lines with texts, larger than any part
  std::map<Turn, Link*> m_queue;
  std::vector<Item*> m_found;
  std::vector<platform::Rect> m_parts;
  mutable std::vector<Item*> m_near;
};

}  // namespace brisel::canvas
