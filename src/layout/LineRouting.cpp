#include "layout/LineRouting.h"

#include <algorithm>
#include <cmath>

namespace brisel::layout {
namespace {

using platform::Point;

class Router {
 public:
  Router(const Component& component, const LayeredGraph& graph, const Placement& placement,
         double gap)
      : m_component(component),
        m_graph(graph),
        m_placement(placement),
        m_gap(gap),
        m_start(component.arcs.size()),
        m_end(component.arcs.size()) {}

  std::vector<std::vector<Point>> route() {
    spreadPorts(true);
    spreadPorts(false);
    std::vector<std::vector<Point>> lines(m_component.arcs.size());
    for (int i = 0; i < count(m_component.arcs); ++i) lines[i] = line(i);
    return lines;
  }

 private:
  /// A place at a side of a box where lines meet it: one line, or the inheritance of a super class.
  struct Port {
    double wish;
    std::vector<int> arcs;
  };

  [[nodiscard]] int bends(const Arc& arc) const {
    return m_graph.layer[arc.to] - m_graph.layer[arc.from] - 1;
  }
  /// The node after the upper end of an arc, or the one before its lower end.
  [[nodiscard]] int next(int i, bool bottom) const {
    const Arc& arc = m_component.arcs[i];
    const int first = m_graph.firstBend[i];
    if (bottom) return first < 0 ? arc.to : first;
    return first < 0 ? arc.from : first + bends(arc) - 1;
  }

  [[nodiscard]] double boxMiddle(int node) const {
    return m_placement.x[node] - m_component.room[node] / 2;
  }

  void spreadPorts(bool bottom) {
    const Adjacency sides = makeAdjacency(m_component.nodes(), [&](auto&& add) {
      for (int i = 0; i < count(m_component.arcs); ++i) {
        add(bottom ? m_component.arcs[i].from : m_component.arcs[i].to, i);
      }
    });
    std::vector<int> arcs;
    for (int node = 0; node < m_component.nodes(); ++node) {
      const auto own = sides.of(node);
      arcs.assign(own.begin(), own.end());
      std::stable_sort(arcs.begin(), arcs.end(), [&](int a, int b) {
        return m_graph.position[next(a, bottom)] < m_graph.position[next(b, bottom)];
      });
      placePorts(node, portsOf(node, arcs, bottom), bottom);
    }
  }

  [[nodiscard]] bool isTrunk(int i, bool bottom) const {
    const Arc& arc = m_component.arcs[i];
    return arc.inheritance && bottom != arc.reversed;
  }

  std::vector<Port> portsOf(int node, const std::vector<int>& arcs, bool bottom) const {
    std::vector<int> trunk;
    for (const int i : arcs) {
      if (isTrunk(i, bottom)) trunk.push_back(i);
    }
    std::vector<Port> ports;
    std::size_t seen = 0;
    for (const int i : arcs) {
      if (!isTrunk(i, bottom)) {
        const int to = next(i, bottom);
        const bool drawn = !bottom && to == m_component.arcs[i].from;
        const double x = drawn ? m_start[i] : m_placement.x[to];
        const bool toMiddle = m_component.arcs[i].inheritance;
        ports.push_back({toMiddle ? boxMiddle(node) : x, {i}});
      } else if (seen++ == trunk.size() / 2) {
        ports.push_back({boxMiddle(node), trunk});
      }
    }
    return ports;
  }

  /// Each port as near to its wish as the order and a distance between ports allow.
  void placePorts(int node, std::vector<Port> ports, bool bottom) {
    if (ports.empty()) return;
    const double width = m_component.width[node] - m_component.room[node];
    const double least = boxMiddle(node) - 0.45 * width;
    const double most = boxMiddle(node) + 0.45 * width;
    const double step = std::min(m_gap / 2, (most - least) / count(ports));
    double bound = least;
    for (Port& port : ports) {
      port.wish = std::max(port.wish, bound);
      bound = port.wish + step;
    }
    bound = most;
    for (auto port = ports.rbegin(); port != ports.rend(); ++port) {
      port->wish = std::min(port->wish, bound);
      bound = port->wish - step;
    }
    for (const Port& port : ports) {
      for (const int i : port.arcs) (bottom ? m_start : m_end)[i] = port.wish;
    }
  }

  [[nodiscard]] std::vector<Point> line(int i) const {
    const Arc& arc = m_component.arcs[i];
    const int top = m_graph.layer[arc.from];
    const double boxBottom = m_placement.rowTop[top] + m_component.height[arc.from];
    std::vector<Point> points;
    add(points, {m_start[i], boxBottom});
    add(points, {m_start[i], m_placement.rowBottom[top]});
    if (m_graph.firstBend[i] >= 0) {
      for (int k = 0; k < bends(arc); ++k) {
        const double x = m_placement.x[m_graph.firstBend[i] + k];
        add(points, {x, m_placement.rowTop[top + 1 + k]});
        add(points, {x, m_placement.rowBottom[top + 1 + k]});
      }
    }
    add(points, {m_end[i], m_placement.rowTop[m_graph.layer[arc.to]]});
    return points;
  }

  /// Appends a point; one that lies on the way is left out.
  static void add(std::vector<Point>& points, Point p) {
    if (!points.empty() && points.back() == p) return;
    if (points.size() >= 2) {
      const Point a = points[points.size() - 2];
      const Point b = points.back();
      if (a.x == b.x && b.x == p.x) points.pop_back();
    }
    points.push_back(p);
  }

  const Component& m_component;
  const LayeredGraph& m_graph;
  const Placement& m_placement;
  double m_gap;
  std::vector<double> m_start;  ///< x of each line at its upper box
  std::vector<double> m_end;    ///< x of each line at its lower box
};

}  // namespace

std::vector<std::vector<Point>> routeLines(const Component& component, const LayeredGraph& graph,
                                           const Placement& placement, double gap) {
  return Router(component, graph, placement, gap).route();
}

}  // namespace brisel::layout
