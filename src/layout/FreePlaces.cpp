#include "layout/FreePlaces.h"

#include <algorithm>
#include <cmath>
#include <queue>
#include <set>
#include <unordered_map>
#include <utility>

#include "layout/LayerGraph.h"
#include "layout/StraightLines.h"
#include "platform/Error.h"

namespace brisel::layout {
namespace {

/// Rectangles by the cells that they touch; those that are large for the cells are looked through
/// one by one.
class Occupied {
 public:
  /// "side" is that of a cell: about what the rectangles measure.
  explicit Occupied(double side) : m_side(std::max(1.0, side)) {}

  void add(const Rect& rect) {
    m_extent = m_count++ == 0 ? rect : around(m_extent, rect);
    const Cells cells = cellsOf(rect);
    if (!(cells.count() <= kMostCells)) {
      m_large.push_back(rect);
      return;
    }
    for (double x = cells.left; x <= cells.right; ++x) {
      for (double y = cells.top; y <= cells.bottom; ++y) m_cells[{x, y}].push_back(rect);
    }
  }

  [[nodiscard]] const Rect* anyIn(const Rect& area) const {
    for (const Rect& rect : m_large) {
      if (rect.intersects(area)) return &rect;
    }
    const Cells cells = cellsOf(area);
    if (cells.count() > static_cast<double>(m_cells.size())) {
      for (const auto& [cell, rects] : m_cells) {
        if (const Rect* found = anyOf(rects, area)) return found;
      }
      return nullptr;
    }
    for (double x = cells.left; x <= cells.right; ++x) {
      for (double y = cells.top; y <= cells.bottom; ++y) {
        const auto cell = m_cells.find({x, y});
        if (cell == m_cells.end()) continue;
        if (const Rect* found = anyOf(cell->second, area)) return found;
      }
    }
    return nullptr;
  }

  [[nodiscard]] bool empty() const { return m_count == 0; }
  [[nodiscard]] const Rect& extent() const { return m_extent; }

  static Rect around(const Rect& a, const Rect& b) {
    const double left = std::min(a.left, b.left);
    const double top = std::min(a.top, b.top);
    return {left, top, std::max(a.right(), b.right()) - left,
            std::max(a.bottom(), b.bottom()) - top};
  }

 private:
  static constexpr double kMostCells = 64;
  struct Cells {
    double left, top, right, bottom;
    [[nodiscard]] double count() const { return (right - left + 1) * (bottom - top + 1); }
  };
  struct Hash {
    std::size_t operator()(const std::pair<double, double>& cell) const {
      return std::hash<double>()(cell.first) * 31 + std::hash<double>()(cell.second);
    }
  };
  [[nodiscard]] Cells cellsOf(const Rect& rect) const {
    return {std::floor(rect.left / m_side), std::floor(rect.top / m_side),
            std::floor(rect.right() / m_side), std::floor(rect.bottom() / m_side)};
  }
  static const Rect* anyOf(const std::vector<Rect>& rects, const Rect& area) {
    for (const Rect& rect : rects) {
      if (rect.intersects(area)) return &rect;
    }
    return nullptr;
  }

  double m_side;
  std::size_t m_count = 0;
  Rect m_extent;
  std::vector<Rect> m_large;
  std::unordered_map<std::pair<double, double>, std::vector<Rect>, Hash> m_cells;
};

/// The shift from here to the nearest place where all are clear; nothing when the budget of
/// comparisons, from which it is paid, ends before.
std::optional<Point> nearestFree(const std::vector<Rect>& moving, const Occupied& occupied,
                                 double gap, std::int64_t& budget) {
  struct Try {
    double distance;
    std::size_t number;  ///< earlier ones come first
    Point shift;
    bool operator>(const Try& other) const {
      return std::pair(distance, number) > std::pair(other.distance, other.number);
    }
  };
  std::priority_queue<Try, std::vector<Try>, std::greater<>> tries;
  std::set<std::pair<double, double>> tried;
  std::size_t number = 0;
  const auto add = [&](Point shift) {
    shift = {std::round(shift.x), std::round(shift.y)};
    if (!tried.emplace(shift.x, shift.y).second) return;
    tries.push({std::hypot(shift.x, shift.y), number++, shift});
  };
  // Shifts are whole, so the room beside what is in the way is a little more than the gap.
  const auto blocker = [&](const Rect& rect) { return occupied.anyIn(rect.grownBy(gap)); };
  tries.push({0, number++, {}});
  while (budget > 0 && !tries.empty()) {
    const Point shift = tries.top().shift;
    tries.pop();
    const Rect* other = nullptr;
    const Rect* own = nullptr;
    for (std::size_t i = 0; i < moving.size() && !other; ++i, --budget) {
      other = blocker(moving[i].movedBy(shift));
      own = &moving[i];
    }
    if (!other) return shift;
    add({std::ceil(other->right() + gap - own->left), shift.y});
    add({shift.x, std::ceil(other->bottom() + gap - own->top)});
    add({std::floor(other->left - gap - own->right()), shift.y});
    add({shift.x, std::floor(other->top - gap - own->bottom())});
  }
  return {};
}

double meanSide(const std::vector<Rect>& rects) {
  double sum = 0;
  for (const Rect& rect : rects) sum += std::max(rect.width, rect.height);
  return rects.empty() ? 1 : sum / static_cast<double>(rects.size());
}

class Placer {
 public:
  Placer(const Graph& graph, const std::vector<std::optional<Point>>& places,
         const Spacing& spacing)
      : m_graph(graph),
        m_spacing(spacing),
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
    m_occupied.add(rectOf(box));
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
    const Size size = m_graph.boxes[box];
    Point family;
    Point middle;
    double relatives = 0;
    double friends = 0;
    Rect last;
    for (const int i : m_edges.of(box)) {
      const int other = otherEnd(i, box);
      if (!m_places[other]) continue;
      last = rectOf(other);
      middle = middle + last.center();
      ++friends;
      if (m_graph.edges[i].kind < EdgeKind::generalization) continue;
      const bool isSub = static_cast<int>(m_graph.edges[i].source) == box;
      family = family + Point{last.center().x - size.width / 2,
                              isSub ? last.bottom() + m_spacing.layer
                                    : last.top - m_spacing.layer - size.height};
      ++relatives;
    }
    if (relatives > 0) return {family * (1 / relatives)};
    if (friends > 1) {
      middle = middle * (1 / friends);
      return {{middle.x - size.width / 2, middle.y - size.height / 2}};
    }
    const Point centred = last.center() - Point{size.width / 2, size.height / 2};
    return {{last.right() + m_spacing.node, centred.y},
            {centred.x, last.bottom() + m_spacing.layer},
            {last.left - m_spacing.node - size.width, centred.y},
            {centred.x, last.top - m_spacing.layer - size.height}};
  }

  /// Nothing when it would take too long to find one: then the box goes below everything.
  [[nodiscard]] std::optional<Point> placeFor(int box) {
    const Size size = m_graph.boxes[box];
    std::optional<Point> best;
    double least = INFINITY;
    for (const Point wish : wishes(box)) {
      const auto shift = nearestFree({{wish.x, wish.y, size.width, size.height}}, m_occupied,
                                     m_spacing.node / 2, m_budget);
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
    const Point corner = m_occupied.empty() ? Point{}
                                            : Point{m_occupied.extent().left,
                                                    m_occupied.extent().bottom() + m_spacing.layer};
    for (int i = 0; i < count(rest); ++i) m_places[rest[i]] = drawing.positions[i] + corner;
  }

  const Graph& m_graph;
  const Spacing& m_spacing;
  std::vector<std::optional<Point>> m_places;
  Occupied m_occupied;
  Adjacency m_edges;
  std::int64_t m_budget = 300'000;
  std::vector<int> m_neighbours;            ///< of each box, those that have a place
  std::set<std::pair<int, int>> m_waiting;  ///< boxes with such, those with most of them first
};

}  // namespace

Point clearShift(const std::vector<Rect>& moving, const std::vector<Rect>& standing, double gap) {
  if (moving.empty()) return {};
  Occupied occupied(2 * meanSide(standing));
  for (const Rect& rect : standing) occupied.add(rect);
  std::int64_t budget = 300'000;
  if (const auto shift = nearestFree(moving, occupied, gap, budget)) return *shift;
  Rect block = moving.front();
  for (const Rect& rect : moving) block = Occupied::around(block, rect);
  return {std::ceil(occupied.extent().right() + gap - block.left), 0};
}

std::vector<Point> placedAmong(const Graph& graph,
                               const std::vector<std::optional<Point>>& standing,
                               const Spacing& spacing) {
  const Graph input = checked(graph);
  if (standing.size() != graph.boxes.size()) {
    throw platform::Error(platform::ErrorNumber::invalidCall, "Each box needs its place or none.");
  }
  return Placer(input, standing, checked(spacing)).run();
}

}  // namespace brisel::layout
