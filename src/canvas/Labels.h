#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <vector>

#include "canvas/GridIndex.h"
#include "canvas/Obstacles.h"
#include "layout/LabelPlacement.h"
#include "platform/Geometry.h"

namespace brisel::canvas {

class Item;
class Link;
class Node;
class Scene;

/// Keeps the texts of a scene's lines clear of boxes, of each other, of the heads of lines and,
/// where there is room nearby, of lines. Owned by the scene.
///
/// Texts of ends come before names, and lines that were made earlier before later ones: a text
/// makes way for what comes before it and for boxes, so that the places follow from the picture
/// alone. After a change those texts are placed anew for which something changed where they stand
/// or would rather stand, then those that come after them and for which they did so.
class Labels {
 public:
  using Id = std::uint32_t;  ///< of an obstacle
  static constexpr Id kNone = CellGrid<Obstacles::Solid>::kNone;

  /// What is remembered of a line, by the line.
  class OfLink {
    friend class Labels;
    std::vector<platform::Point> course;  ///< as it was told last
    std::vector<Id> pieces;
    std::array<Id, 2> heads{kNone, kNone};
    std::array<Id, 3> texts{kNone, kNone, kNone};
    std::array<GridIndex::Place, 2> regions;  ///< what the places of ends and name depend on
  };
  /// What is remembered of a box, by the box.
  class OfNode {
    friend class Labels;
    Id box = kNone;
  };

  explicit Labels(const Scene& scene) : m_scene(scene) {}

  /// A box came, moved or changed its size.
  void changed(Node& node);
  void forget(Node& node);
  /// The course of the line or one of its texts is another: it is without texts until they are
  /// placed.
  void changed(Link& link);
  void forget(Link& link);
  void clear();

  struct Moved {
    Link* link;
    platform::Rect before;
    platform::Rect after;
  };
  /// Places what changes concern; adds each text that moved.
  void settle(std::vector<Moved>& moved);

 private:
  enum Stage : std::size_t { ends, name };
  using Turn = Obstacles::Turn;
  using Piece = Obstacles::Piece;
  static Turn turnOf(const Link& link, Stage stage);
  void changed(const platform::Rect& area);
  static void put(CellGrid<Obstacles::Solid>& grid, Id& id, const platform::Rect& area, Turn turn);
  void takeOut(Link& link);
  void addPieces(Link& link);
  void addHeads(Link& link);
  void findConcerned();
  void findConcerned(const Piece& piece, Stage stage);
  void queue(Link& link);
  void queue(Link& link, Stage stage);
  void queueBehind(Turn turn, const platform::Rect& area);
  void placeAll(std::vector<Moved>& moved);
  void place(Link& link, Stage stage, std::vector<Moved>& moved);
  [[nodiscard]] platform::Rect bestOf(const std::vector<layout::LabelCandidate>& candidates,
                                      const Link& link, Turn turn);

  const Scene& m_scene;
  Obstacles m_obstacles;
  std::array<GridIndex, 2> m_regions;  ///< of lines, by stage
  std::vector<platform::Rect> m_changedAreas;
  std::vector<Piece> m_changedPieces;  ///< of lines as they were and as they are
  std::map<Turn, Link*> m_queue;
  std::vector<platform::Rect> m_examined;
  std::vector<Item*> m_found;
  Surroundings::Found m_around;
};

}  // namespace brisel::canvas
