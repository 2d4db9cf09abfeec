#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "layout/ConnectorRouting.h"
#include "platform/Geometry.h"
#include "platform/Ref.h"

namespace brisel::canvas {

class Link;
class Node;
class Scene;

/// What becomes of lines when some boxes get new places: plans it while everything still stands,
/// for the scene to be changed at once afterwards. Lines at these boxes are led around what stands,
/// and so are other lines that the boxes came to stand on. Lines whose boxes stay, and which are as
/// they should be, stay. The scene must not change between the making and `apply`.
class Rerouting {
 public:
  using Places = std::unordered_map<const Node*, platform::Rect>;

  enum class Bends { own, stored };  ///< stored ones of lines at the boxes stay, whatever they are

  /// `places` are those of boxes of the scene, moved or not. No line goes left of or above the
  /// corner but for boxes that stand there.
  Rerouting(const Scene& scene, Places places, platform::Point corner, Bends bends);

  /// How a line between two of the boxes was drawn, from border to border: kept where nothing
  /// stands in the way.
  void propose(Link& link, std::vector<platform::Point> course);
  /// Works out the courses; `goOn` as for the layouts.
  void plan(const layout::GoOn& goOn = {});
  /// Gives the lines their bends. Pre: planned; the boxes have their new places.
  void apply() const;

 private:
  class Standing : public layout::Surroundings {
   public:
    explicit Standing(const Rerouting& job) : m_job(job) {}
    void collect(const platform::Rect& area, std::vector<layout::StandingBox>& boxes,
                 std::vector<layout::StandingLine>& lines) const override;

   private:
    const Rerouting& m_job;
  };
  struct Course {
    platform::Ref<Link> link;
    std::vector<platform::Point> points;
  };

  [[nodiscard]] platform::Rect rectOf(const Node& node) const;
  [[nodiscard]] bool isMoved(const Node& node) const;
  [[nodiscard]] layout::Connector connectorOf(const Link& link) const;
  void collectLines(Bends bends);
  /// Whether a line that ends elsewhere would run over a box or close by.
  [[nodiscard]] static bool isInTheWay(const Link& link, const platform::Rect& box);
  /// Whether it would lie on a piece of another line, or close by.
  [[nodiscard]] static bool runsAlong(const Link& link, const platform::Rect& piece);
  template <class Concerns>
  void collectLinesNear(const platform::Rect& place, const Concerns& concerns);
  void moveLoop(Link& link);

  const Scene& m_scene;
  Places m_places;
  std::vector<Link*> m_lines;  ///< to be kept, drawn as proposed or led, in the order of creation
  std::unordered_set<const Link*> m_concerned;
  std::unordered_map<const Link*, std::vector<platform::Point>> m_proposals;
  std::vector<Course> m_courses;
  std::vector<Course> m_loops;                              ///< bends of lines from a box to itself
  std::vector<std::vector<platform::Point>> m_loopCourses;  ///< of those that move
  Standing m_standing{*this};
  layout::ConnectorRouter m_router;
};

/// What a line is to the layouts.
[[nodiscard]] layout::EdgeKind kindOf(const Link& link);

}  // namespace brisel::canvas
