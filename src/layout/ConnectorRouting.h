#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "layout/Layout.h"

/// Right-angled courses for a few lines among boxes and lines that stand. Boxes and lines are told
/// apart by numbers that the caller chooses.
namespace brisel::layout {

struct StandingBox {
  std::uint64_t id = 0;
  Rect rect;
};

/// A line to be led from box to box: those of a generalization from the sub to the super class.
struct Connector {
  std::uint64_t id = 0;
  StandingBox source;
  StandingBox target;
  EdgeKind kind = EdgeKind::association;

  [[nodiscard]] bool isLoop() const { return source.id == target.id; }
};

/// A line with all of its points, from border to border.
struct StandingLine {
  Connector connector;
  std::vector<Point> course;
};

/// What stands, asked for piece by piece where a search comes by.
class Surroundings {
 public:
  virtual ~Surroundings() = default;
  /// Adds at least all boxes and lines that touch the area; some may be given more than once.
  virtual void collect(const Rect& area, std::vector<StandingBox>& boxes,
                       std::vector<StandingLine>& lines) const = 0;
};

/// Leads lines around what stands. Lengths are in the unit of the spacing, of which the distance
/// between neighbours in a row decides: lines keep a quarter of it from boxes and from each other
/// where there is room.
///
/// Shortest courses of few bends and crossings by A* over the orthogonal visibility graph, of which
/// only what the search reaches is made; then pieces are shifted apart: Wybrow, Marriott, Stuckey:
/// Orthogonal connector routing, 2009. The time grows with the lines that are led and what is near
/// them. Each search is bounded, and so are all together; a line that finds no way within the
/// bounds gets the plain course between the sides that face each other, whatever stands there.
class ConnectorRouter {
 public:
  /// No course goes left of or above the corner, unless its boxes stand there. The surroundings
  /// must live as long, and give neither the boxes nor the lines that are handed in besides.
  ConnectorRouter(const Surroundings& surroundings, const Spacing& spacing, Point corner);
  ~ConnectorRouter();

  /// Stands besides the surroundings.
  void stand(const StandingBox& box);
  void stand(const StandingLine& line);

  /// Whether a course is axis-parallel, enters no box and keeps apart from unrelated lines.
  /// Generalizations into one super class are related, and so are realizations.
  [[nodiscard]] bool isSound(const StandingLine& line);
  /// The same, but that unrelated lines may be as near as can just be told apart.
  [[nodiscard]] bool mayStay(const StandingLine& line);

  /// A course for each of the connectors, which stands from then on: from border to border, through
  /// no foreign box, on no piece of an unrelated line where there is room beside it, its ends apart
  /// from other ends. One that can join the trunk of its relatives does. Empty for a line whose
  /// boxes overlap or are one. `former` gives courses that lines had, or empty ones: they are kept
  /// where there is no better one.
  [[nodiscard]] std::vector<std::vector<Point>> route(
      const std::vector<Connector>& connectors, const GoOn& goOn = {},
      const std::vector<std::vector<Point>>& former = {});

 private:
  class Job;
  std::unique_ptr<Job> m_job;
};

}  // namespace brisel::layout
