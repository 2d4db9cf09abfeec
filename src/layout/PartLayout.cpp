#include "layout/PartLayout.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <optional>
#include <tuple>
#include <utility>

#include "layout/Components.h"
#include "layout/LayerGraph.h"
#include "layout/Occupied.h"
#include "layout/StraightLines.h"

namespace brisel::layout {
namespace {

/// Larger groups are drawn once only, without regard to the order in which they stand.
constexpr int kMostDrawnAgain = 50;
constexpr int kMostDrawings = 4;

Rect rectAt(Point at, Size size) { return {at.x, at.y, size.width, size.height}; }

/// Boxes that are drawn together, and the edges between them.
struct Group {
  std::vector<int> boxes;
  std::vector<int> edges;
  Graph graph;
  Drawing drawing;  ///< in the place where the group is to be
};

class PartDrawer {
 public:
  PartDrawer(const Part& part, bool drawsLoops)
      : m_part(part),
        m_graph(checked(part.graph)),
        m_spacing(checked(part.spacing)),
        m_occupied(cellSide(part)),
        m_places(part.places),
        m_outlines(part.outlines) {
    if (!drawsLoops) drawOutlines();
    for (const Rect& rect : part.standing) m_occupied.add(rect);
    m_drawing.positions = m_places;
    m_drawing.lines.resize(m_graph.edges.size());
  }

  Drawing inGroups(Turning turning, const DrawGroup& draw) {
    const Parts parts = partsOf(m_graph, 0);
    const std::vector<int> loose = letStay(parts.alone);
    std::vector<Group> groups;
    for (const Component& c : parts.components) {
      Group group;
      group.boxes = c.boxes;
      fill(group);
      drawAround(group, turning, draw);
      groups.push_back(std::move(group));
    }
    std::stable_sort(groups.begin(), groups.end(), [](const Group& a, const Group& b) {
      return a.boxes.size() > b.boxes.size();
    });
    for (const Group& group : groups) settle(group);
    for (const int box : loose) settleAlone(box);
    return finish();
  }

  Drawing asOne(const DrawGroup& draw) {
    Group group;
    group.boxes.resize(m_graph.boxes.size());
    std::iota(group.boxes.begin(), group.boxes.end(), 0);
    fill(group);
    group.drawing = draw(group.graph);
    moveBy(group.drawing, middleOf(group, m_places) - middleOf(group));
    settle(group);
    return finish();
  }

 private:
  static double cellSide(const Part& part) {
    double sum = 0;
    for (const Rect& rect : part.standing) sum += std::max(rect.width, rect.height);
    return part.standing.empty() ? 1 : 2 * sum / static_cast<double>(part.standing.size());
  }
  [[nodiscard]] Rect rectOf(int box) const {
    return rectAt(m_drawing.positions[box], m_graph.boxes[box]);
  }
  [[nodiscard]] Rect outlineOf(int box, Point at) const {
    return outlineAt(m_outlines, static_cast<std::size_t>(box), m_graph.boxes[box], at);
  }

  /// For drawings that know nothing of lines from a box to itself.
  void drawOutlines() {
    for (std::size_t i = 0; i < m_outlines.size(); ++i) {
      m_places[i] = m_places[i] + m_outlines[i].topLeft();
      m_graph.boxes[i] = m_outlines[i].size();
    }
    m_outlines.clear();
  }

  /// Boxes that stand well are kept; gives the others.
  std::vector<int> letStay(const std::vector<int>& alone) {
    std::vector<int> loose;
    for (const int box : alone) {
      const Rect rect = rectOf(box);
      const auto fits = [&](const Neighbour& neighbour) {
        if (neighbour.kind < EdgeKind::generalization) return true;
        return neighbour.isSuper ? rect.top >= neighbour.rect.bottom()
                                 : rect.bottom() <= neighbour.rect.top;
      };
      const auto& neighbours = m_part.neighbours[box];
      const Rect outline = outlineOf(box, m_drawing.positions[box]);
      if (m_occupied.anyIn(outline) || !std::all_of(neighbours.begin(), neighbours.end(), fits)) {
        loose.push_back(box);
      } else {
        m_occupied.add(outline);
      }
    }
    return loose;
  }

  void sortFromLeft(std::vector<int>& boxes, const std::vector<Point>& places) const {
    const auto middle = [&](int box) { return places[box].x + m_graph.boxes[box].width / 2; };
    std::stable_sort(boxes.begin(), boxes.end(), [&](int a, int b) {
      return std::tuple(middle(a), places[a].y, a) < std::tuple(middle(b), places[b].y, b);
    });
  }

  void fill(Group& group) const {
    group.graph = {};
    group.edges.clear();
    std::vector<int> numberOf(m_graph.boxes.size(), -1);
    for (const int box : group.boxes) {
      numberOf[box] = count(group.graph.boxes);
      group.graph.boxes.push_back(m_graph.boxes[box]);
    }
    for (int i = 0; i < count(m_graph.edges); ++i) {
      const Edge& edge = m_graph.edges[i];
      if (numberOf[edge.source] < 0 || numberOf[edge.target] < 0) continue;
      group.edges.push_back(i);
      group.graph.edges.push_back({static_cast<std::size_t>(numberOf[edge.source]),
                                   static_cast<std::size_t>(numberOf[edge.target]), edge.kind});
    }
  }

  /// In the order in which the boxes stand where that can be, else in that of the input, turned
  /// round to fit. Asked for again, it gives the same.
  void drawAround(Group& group, Turning turning, const DrawGroup& draw) const {
    const Point middle = middleOf(group, m_places);
    group.drawing = draw(group.graph);
    mirrorToFit(group, turning);
    if (turning == Turning::keepsOrder && count(group.boxes) <= kMostDrawnAgain) {
      auto other = drawnInOrder(group, draw);
      const bool isGiven = distance(group, group.drawing) == 0;
      if (other && (!isGiven || distance(*other, other->drawing) == 0)) group = std::move(*other);
    }
    moveBy(group.drawing, middle - middleOf(group));
  }

  /// Drawn in the order in which the boxes stand, and then in the one that they got, until it is
  /// kept; nothing when it never is.
  [[nodiscard]] std::optional<Group> drawnInOrder(const Group& group, const DrawGroup& draw) const {
    Group other = group;
    std::vector<Point> places = m_places;
    for (int i = 0; i <= kMostDrawings; ++i) {
      const std::vector<int> before = std::exchange(other.boxes, group.boxes);
      sortFromLeft(other.boxes, places);
      if (i > 0 && other.boxes == before) return other;
      fill(other);
      other.drawing = draw(other.graph);
      for (int k = 0; k < count(other.boxes); ++k) {
        places[other.boxes[k]] = other.drawing.positions[k];
      }
    }
    return {};
  }

  /// Turns the drawing round so that the boxes come nearest to where they are.
  void mirrorToFit(Group& group, Turning turning) const {
    Drawing best;
    double least = std::numeric_limits<double>::infinity();
    const Rect all = areaOf(group);
    for (int turn = 0; turn < (turning == Turning::mirrors ? 4 : 2); ++turn) {
      Drawing turned = group.drawing;
      const auto mirror = [&](Point& p, Size size) {
        if (turn % 2 == 1) p.x = all.left + all.right() - p.x - size.width;
        if (turn / 2 == 1) p.y = all.top + all.bottom() - p.y - size.height;
      };
      for (int i = 0; i < count(group.boxes); ++i)
        mirror(turned.positions[i], group.graph.boxes[i]);
      for (auto& line : turned.lines) {
        for (Point& p : line) mirror(p, {});
      }
      const double away = distance(group, turned);
      if (away >= least) continue;
      least = away;
      best = std::move(turned);
    }
    group.drawing = std::move(best);
  }

  /// Of the boxes from where they stand, their middles on each other.
  [[nodiscard]] double distance(const Group& group, const Drawing& drawing) const {
    Point mean;
    std::vector<Point> ways;
    for (int i = 0; i < count(group.boxes); ++i) {
      ways.push_back(drawing.positions[i] - m_places[group.boxes[i]]);
      mean = mean + ways.back() * (1.0 / count(group.boxes));
    }
    double sum = 0;
    for (const Point way : ways) sum += std::hypot(way.x - mean.x, way.y - mean.y);
    return std::round(sum);
  }

  [[nodiscard]] static Rect areaOf(const Group& group) {
    Rect area = rectAt(group.drawing.positions[0], group.graph.boxes[0]);
    for (int i = 1; i < count(group.boxes); ++i) {
      area = Occupied::around(area, rectAt(group.drawing.positions[i], group.graph.boxes[i]));
    }
    return area;
  }
  [[nodiscard]] static Point middleOf(const Group& group) { return areaOf(group).center(); }
  [[nodiscard]] Point middleOf(const Group& group, const std::vector<Point>& places) const {
    Rect area = rectAt(places[group.boxes[0]], m_graph.boxes[group.boxes[0]]);
    for (const int box : group.boxes) {
      area = Occupied::around(area, rectAt(places[box], m_graph.boxes[box]));
    }
    return area.center();
  }

  /// How far lines reach left of and above the boxes.
  [[nodiscard]] static Point overhang(const Group& group) {
    const Rect area = areaOf(group);
    Point most;
    for (const auto& line : group.drawing.lines) {
      for (const Point p : line) {
        most = {std::max(most.x, area.left - p.x), std::max(most.y, area.top - p.y)};
      }
    }
    return most;
  }

  static void moveBy(Drawing& drawing, Point way) {
    way = {std::round(way.x), std::round(way.y)};
    for (Point& p : drawing.positions) p = p + way;
    for (auto& line : drawing.lines) {
      for (Point& p : line) p = p + way;
    }
  }

  /// Moves the group clear of what stands; it stands from then on.
  void settle(const Group& group) {
    std::vector<Rect> moving;
    for (int i = 0; i < count(group.boxes); ++i) {
      moving.push_back(outlineOf(group.boxes[i], group.drawing.positions[i]));
    }
    const Point way =
        clearShift(moving, m_occupied, m_spacing.node / 2, m_part.corner + overhang(group));
    for (int i = 0; i < count(group.boxes); ++i) {
      m_drawing.positions[group.boxes[i]] = group.drawing.positions[i] + way;
      m_occupied.add(moving[static_cast<std::size_t>(i)].movedBy(way));
    }
    for (int i = 0; i < count(group.edges); ++i) {
      auto line = group.drawing.lines[i];
      for (Point& p : line) p = p + way;
      m_drawing.lines[group.edges[i]] = std::move(line);
    }
  }

  void settleAlone(int box) {
    const auto& neighbours = m_part.neighbours[box];
    const auto isRelative = [](const Neighbour& n) { return n.kind >= EdgeKind::generalization; };
    Point wish = m_places[box];
    if (std::any_of(neighbours.begin(), neighbours.end(), isRelative)) {
      wish = wishedPlaces(m_graph.boxes[box], neighbours, m_spacing).front();
      wish = {std::round(wish.x), std::round(wish.y)};
    }
    const Rect rect = outlineOf(box, wish);
    const Point way = clearShift({rect}, m_occupied, m_spacing.node / 2, m_part.corner);
    m_drawing.positions[box] = wish + way;
    m_occupied.add(rect.movedBy(way));
  }

  Drawing finish() {
    for (std::size_t i = 0; i < m_places.size(); ++i) {
      m_drawing.positions[i] = m_drawing.positions[i] - (m_places[i] - m_part.places[i]);
    }
    const auto isMissing = [](const auto& line) { return line.empty(); };
    if (std::any_of(m_drawing.lines.begin(), m_drawing.lines.end(), isMissing)) {
      Drawing straight;
      straight.positions = m_drawing.positions;
      drawStraightLines(checked(m_part.graph), m_spacing.node, straight);
      for (std::size_t i = 0; i < m_drawing.lines.size(); ++i) {
        if (m_drawing.lines[i].empty()) m_drawing.lines[i] = straight.lines[i];
      }
    }
    return std::move(m_drawing);
  }

  const Part& m_part;
  Graph m_graph;
  Spacing m_spacing;
  Occupied m_occupied;
  std::vector<Point> m_places;
  Outlines m_outlines;
  Drawing m_drawing;
};

}  // namespace

Drawing drawnInGroups(const Part& part, Turning turning, const DrawGroup& draw) {
  return PartDrawer(part, turning == Turning::keepsOrder).inGroups(turning, draw);
}

Drawing drawnAsOne(const Part& part, const DrawGroup& draw) {
  if (part.graph.boxes.empty()) return {};
  return PartDrawer(part, false).asOne(draw);
}

}  // namespace brisel::layout
