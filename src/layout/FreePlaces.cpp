#include "layout/FreePlaces.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <utility>

#include "layout/LayerGraph.h"
#include "layout/Occupied.h"
#include "layout/StraightLines.h"
#include "platform/Error.h"

namespace brisel::layout {
namespace {

double meanSide(const std::vector<Rect>& rects) {
  double sum = 0;
  for (const Rect& rect : rects) sum += std::max(rect.width, rect.height);
  return rects.empty() ? 1 : sum / static_cast<double>(rects.size());
}

class Placer {
 public:
  Placer(const Graph& graph, const std::vector<std::optional<Point>>& places,
         const Spacing& spacing, Point corner, const Outlines& outlines)
      : m_graph(graph),
        m_spacing(spacing),
        m_corner(corner),
        m_outlines(outlines),
        m_places(places),
        m_occupied(2 * meanOf(graph)),
        m_edges(makeAdjacency(count(graph.boxes),
                              [&](auto&& add) {
                                for (int i = 0; i < count(graph.edges); ++i) {
                                  if (graph.edges[i].source == graph.edges[i].target) continue;
                                  add(static_cast<int>(graph.edges[i].source), i);
                                  add(static_cast<int>(graph.edges[i].target), i);
                                }
                              })),
        m_neighbours(graph.boxes.size(), 0) {}

  std::vector<Point> run() {
    for (int box = 0; box < count(m_graph.boxes); ++box) {
      if (m_places[box]) settle(box);
    }
    while (!m_waiting.empty()) {
      const int box = m_waiting.begin()->second;
      m_waiting.erase(m_waiting.begin());
      m_places[box] = placeFor(box);
      if (m_places[box]) settle(box);
    }
    placeRest();
    std::vector<Point> result;
    for (const auto& place : m_places) result.push_back(*place);
    return result;
  }

 private:
  static double meanOf(const Graph& graph) {
    std::vector<Rect> rects;
    for (const Size& size : graph.boxes) rects.push_back({0, 0, size.width, size.height});
    return meanSide(rects);
  }
  [[nodiscard]] Rect rectOf(int box) const {
    const Point at = *m_places[box];
    return {at.x, at.y, m_graph.boxes[box].width, m_graph.boxes[box].height};
  }

  /// The box has its place: its neighbours without one come nearer to theirs.
  void settle(int box) {
    m_occupied.add(
        outlineAt(m_outlines, static_cast<std::size_t>(box), m_graph.boxes[box], *m_places[box]));
    for (const int i : m_edges.of(box)) {
      const int other = otherEnd(i, box);
      if (m_places[other]) continue;
      m_waiting.erase({-m_neighbours[other], other});
      m_waiting.insert({-++m_neighbours[other], other});
    }
  }
  [[nodiscard]] int otherEnd(int edge, int box) const {
    const Edge& e = m_graph.edges[edge];
    return static_cast<int>(static_cast<int>(e.source) == box ? e.target : e.source);
  }

  /// Where the corner would be best, seen from the neighbours that have a place.
  [[nodiscard]] std::vector<Point> wishes(int box) const {
    std::vector<Neighbour> neighbours;
    for (const int i : m_edges.of(box)) {
      const int other = otherEnd(i, box);
      const Edge& edge = m_graph.edges[i];
      if (!m_places[other]) continue;
      neighbours.push_back({rectOf(other), edge.kind, static_cast<int>(edge.source) == box});
    }
    return wishedPlaces(m_graph.boxes[box], neighbours, m_spacing);
  }

  /// Nothing when it would take too long to find one: then the box goes below everything.
  [[nodiscard]] std::optional<Point> placeFor(int box) {
    const Size size = m_graph.boxes[box];
    std::optional<Point> best;
    double least = INFINITY;
    for (const Point wish : wishes(box)) {
      const Rect outline = outlineAt(m_outlines, static_cast<std::size_t>(box), size, wish);
      const auto shift = m_occupied.nearestFree({outline}, m_spacing.node / 2, m_budget, m_corner);
      if (!shift || std::hypot(shift->x, shift->y) >= least) continue;
      least = std::hypot(shift->x, shift->y);
      best = wish + *shift;
      if (least == 0) break;
    }
    return best;
  }

  /// Boxes that nothing joins to what stands, and those for which no place was found.
  void placeRest() {
    std::vector<int> rest;
    std::vector<int> numberOf(m_graph.boxes.size(), -1);
    Graph graph;
    for (int box = 0; box < count(m_graph.boxes); ++box) {
      if (m_places[box]) continue;
      numberOf[box] = count(rest);
      rest.push_back(box);
      graph.boxes.push_back(m_graph.boxes[box]);
    }
    for (const Edge& edge : m_graph.edges) {
      if (numberOf[edge.source] < 0 || numberOf[edge.target] < 0) continue;
      graph.edges.push_back({static_cast<std::size_t>(numberOf[edge.source]),
                             static_cast<std::size_t>(numberOf[edge.target]), edge.kind});
    }
    const Drawing drawing = layered(graph, m_spacing);
    Point corner = m_corner;
    if (!m_occupied.empty()) {
      const Rect all = m_occupied.extent();
      corner = {std::max(corner.x, all.left), std::max(corner.y, all.bottom() + m_spacing.layer)};
    }
    for (int i = 0; i < count(rest); ++i) m_places[rest[i]] = drawing.positions[i] + corner;
  }

  const Graph& m_graph;
  const Spacing& m_spacing;
  Point m_corner;
  const Outlines& m_outlines;
  std::vector<std::optional<Point>> m_places;
  Occupied m_occupied;
  Adjacency m_edges;
  std::int64_t m_budget = 300'000;
  std::vector<int> m_neighbours;            ///< of each box, those that have a place
  std::set<std::pair<int, int>> m_waiting;  ///< boxes with such, those with most of them first
};

}  // namespace

Point clearShift(const std::vector<Rect>& moving, const Occupied& standing, double gap,
                 Point corner) {
  if (moving.empty()) return {};
  std::int64_t budget = 300'000;
  if (const auto shift = standing.nearestFree(moving, gap, budget, corner)) return *shift;
  Rect block = moving.front();
  for (const Rect& rect : moving) block = Occupied::around(block, rect);
  const double right = std::max(corner.x, standing.extent().right() + gap);
  return {std::ceil(right - block.left), std::ceil(std::max(0.0, corner.y - block.top))};
}

std::vector<Point> wishedPlaces(Size size, const std::vector<Neighbour>& neighbours,
                                const Spacing& spacing) {
  Point family;
  Point middle;
  double relatives = 0;
  for (const Neighbour& neighbour : neighbours) {
    const Rect& rect = neighbour.rect;
    middle = middle + rect.center();
    if (neighbour.kind < EdgeKind::generalization) continue;
    family = family + Point{rect.center().x - size.width / 2,
                            neighbour.isSuper ? rect.bottom() + spacing.layer
                                              : rect.top - spacing.layer - size.height};
    ++relatives;
  }
  if (relatives > 0) return {family * (1 / relatives)};
  middle = middle * (1 / static_cast<double>(neighbours.size()));
  const Point centred = middle - Point{size.width / 2, size.height / 2};
  if (neighbours.size() > 1) return {centred};
  const Rect& only = neighbours.front().rect;
  return {{only.right() + spacing.node, centred.y},
          {centred.x, only.bottom() + spacing.layer},
          {only.left - spacing.node - size.width, centred.y},
          {centred.x, only.top - spacing.layer - size.height}};
}

std::vector<Point> placedAmong(const Graph& graph,
                               const std::vector<std::optional<Point>>& standing,
                               const Spacing& spacing, Point corner, const Outlines& outlines) {
  const Graph input = checked(graph);
  if (standing.size() != graph.boxes.size()) {
    throw platform::Error(platform::ErrorNumber::invalidCall, "Each box needs its place or none.");
  }
  return Placer(input, standing, checked(spacing), corner, outlines).run();
}

}  // namespace brisel::layout
