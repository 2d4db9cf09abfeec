#include "layout/LineRouting.h"

#include <algorithm>
#include <map>
#include <utility>

#include "layout/Channel.h"
#include "layout/Ports.h"

namespace brisel::layout {
namespace {

/// Appends a point; one that lies on the way is left out.
void add(std::vector<Point>& points, Point p) {
  if (!points.empty() && points.back() == p) return;
  if (points.size() >= 2) {
    const Point a = points[points.size() - 2];
    const Point b = points.back();
    if ((a.x == b.x && b.x == p.x) || (a.y == b.y && b.y == p.y)) points.pop_back();
  }
  points.push_back(p);
}

/// A channel that needs more than so many times the usual room has its tracks closer together.
constexpr double kRoomyChannel = 4;

class Router {
 public:
  Router(const Component& component, const LayeredGraph& graph, const std::vector<double>& x,
         const Spacing& spacing)
      : m_component(component),
        m_graph(graph),
        m_x(x),
        m_spacing(spacing),
        m_ports(spreadPorts(component, graph, x, spacing.node)) {}

  Routing route() {
    m_routing.lines.resize(m_component.arcs.size());
    placeLanes();
    const int rows = count(m_graph.rows);
    const Adjacency passing = makeAdjacency(rows, [&](auto&& add) {
      for (int i = 0; i < count(m_component.arcs); ++i) {
        const Arc& arc = m_component.arcs[i];
        const int last = m_graph.layer[arc.to] - 1;
        // An arc that was left out turns in its first and its last channel only.
        const int step = m_graph.isLeftOut(m_component, i) ? last - m_graph.layer[arc.from] : 1;
        for (int row = m_graph.layer[arc.from]; row <= last; row += std::max(step, 1)) add(row, i);
      }
    });
    double top = loopsAbove(0);
    for (int row = 0; row < rows; ++row) {
      m_routing.rowTop.push_back(top);
      startLines(row, top);
      m_routing.bottom = top + rowHeight(row);
      top = m_routing.bottom + drawChannel(row, passing.of(row));
    }
    for (int i = 0; i < count(m_component.arcs); ++i) {
      add(m_routing.lines[i],
          {m_ports.end[i], m_routing.rowTop[m_graph.layer[m_component.arcs[i].to]]});
    }
    return std::move(m_routing);
  }

 private:
  /// Lines that were left out of the rows run down beside them.
  void placeLanes() {
    m_lane.assign(m_component.arcs.size(), 0);
    double lane = 0;
    for (int n = 0; n < m_graph.nodes(); ++n) {
      lane = std::max(lane, m_x[n] + (m_graph.isBend(n) ? 0 : m_component.width[n] / 2));
    }
    for (int i = 0; i < count(m_component.arcs); ++i) {
      if (m_graph.isLeftOut(m_component, i)) m_lane[i] = lane += m_spacing.node / 4;
    }
  }

  /// Where a line passes a row, or meets its box there.
  [[nodiscard]] double at(int i, int row) const {
    const Arc& arc = m_component.arcs[i];
    if (row == m_graph.layer[arc.from]) return m_ports.start[i];
    if (row == m_graph.layer[arc.to]) return m_ports.end[i];
    if (m_graph.firstBend[i] < 0) return m_lane[i];
    return m_x[m_graph.firstBend[i] + row - m_graph.layer[arc.from] - 1];
  }

  [[nodiscard]] double rowHeight(int row) const {
    double height = 0;
    for (const int node : m_graph.rows[row]) {
      if (!m_graph.isBend(node)) height = std::max(height, m_component.height[node]);
    }
    return height;
  }

  /// How far lines from boxes to themselves reach above a row: as far as beside the boxes, and a
  /// little for what comes next.
  [[nodiscard]] double loopsAbove(int row) const {
    double most = 0;
    for (const int node : m_graph.rows[row]) {
      if (!m_graph.isBend(node)) most = std::max(most, m_component.room[node]);
    }
    return most > 0 ? most + m_spacing.node / 2 : 0;
  }

  void startLines(int row, double top) {
    for (int i = 0; i < count(m_component.arcs); ++i) {
      const Arc& arc = m_component.arcs[i];
      if (m_graph.layer[arc.from] != row) continue;
      m_routing.lines[i].push_back({m_ports.start[i], top + m_component.height[arc.from]});
    }
  }

  /// Draws the lines through the channel below a row and gives its height.
  double drawChannel(int row, std::span<const int> arcs) {
    std::vector<Wire> wires;
    std::map<std::pair<int, int>, int> trunks;  // those of a box, and their stems further down
    for (const int i : arcs) {
      int trunk = m_ports.trunk[i];
      if (trunk >= 0) {
        const bool starts = m_graph.layer[m_component.arcs[i].from] == row;
        const std::pair key(trunk, starts ? -1 : m_graph.firstBend[i]);
        trunk = trunks.try_emplace(key, static_cast<int>(trunks.size())).first->second;
      }
      wires.push_back({at(i, row), at(i, row + 1), trunk});
    }
    const Tracks tracks = assignTracks(wires, m_spacing.node / 8);
    const double lead = 0.4 * m_spacing.layer;
    const double trail = 0.25 * m_spacing.layer;
    const double inner = m_spacing.layer - lead - trail;
    const int gaps = std::max(1, tracks.count - 1);
    const double step = std::clamp(kRoomyChannel * m_spacing.layer / gaps, m_spacing.node / 8,
                                   std::max(inner / gaps, m_spacing.node / 4));
    const auto y = [&](int track) {
      const double offset = tracks.count == 1 ? inner / 2 : step * track;
      return m_routing.bottom + lead + offset;
    };
    for (int k = 0; k < count(wires); ++k) {
      if (tracks.track[k] < 0) continue;
      auto& line = m_routing.lines[arcs[static_cast<std::size_t>(k)]];
      add(line, {wires[k].top, y(tracks.track[k])});
      add(line, {tracks.detour[k], y(tracks.track[k])});
      if (tracks.lowerTrack[k] < 0) continue;
      add(line, {tracks.detour[k], y(tracks.lowerTrack[k])});
      add(line, {wires[k].bottom, y(tracks.lowerTrack[k])});
    }
    const double height = std::max(m_spacing.layer, lead + step * (tracks.count - 1) + trail);
    const bool isLast = row + 1 == count(m_graph.rows);
    return isLast ? height : height + std::max(0.0, loopsAbove(row + 1) - trail);
  }

  const Component& m_component;
  const LayeredGraph& m_graph;
  const std::vector<double>& m_x;
  const Spacing& m_spacing;
  Ports m_ports;
  std::vector<double> m_lane;
  Routing m_routing;
};

}  // namespace

Routing routeLines(const Component& component, const LayeredGraph& graph,
                   const std::vector<double>& x, const Spacing& spacing) {
  return Router(component, graph, x, spacing).route();
}

}  // namespace brisel::layout
