#include "layout/Ports.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace brisel::layout {
namespace {

class Spreader {
 public:
  Spreader(const Component& component, const LayeredGraph& graph, const std::vector<double>& x,
           double gap)
      : m_component(component), m_graph(graph), m_x(x), m_gap(gap) {
    m_ports.start.resize(component.arcs.size());
    m_ports.end.resize(component.arcs.size());
    m_ports.trunk.assign(component.arcs.size(), -1);
  }

  Ports spread() {
    spreadSide(true);
    spreadSide(false);
    return std::move(m_ports);
  }

 private:
  /// A place at a side of a box where lines meet it: one line, or a trunk.
  struct Port {
    double wish;
    std::vector<int> arcs;
  };

  /// The node after the upper end of an arc, or the one before its lower end.
  [[nodiscard]] int next(int i, bool bottom) const {
    const Arc& arc = m_component.arcs[i];
    const int first = m_graph.firstBend[i];
    if (bottom) return first < 0 ? arc.to : first;
    return first < 0 ? arc.from : first + m_graph.layer[arc.to] - m_graph.layer[arc.from] - 2;
  }

  [[nodiscard]] double boxWidth(int node) const {
    return m_component.width[node] - m_component.room[node];
  }
  [[nodiscard]] double boxMiddle(int node) const { return m_x[node] - m_component.room[node] / 2; }

  /// What lines from a box to itself take of its top side, at the right: they end there.
  [[nodiscard]] double loopsAt(int node) const {
    const double room = m_component.room[node];
    return room > 0 ? std::min(0.5 * boxWidth(node), std::max(m_gap, 1.2 * room)) : 0;
  }

  void spreadSide(bool bottom) {
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
      placePorts(node, bottom ? portsBelow(node, arcs) : portsAbove(node, arcs), bottom);
    }
  }

  std::vector<Port> portsBelow(int node, const std::vector<int>& arcs) {
    std::array<std::vector<int>, 2> trunks;
    for (const int i : arcs) {
      const int kind = trunkOf(m_component.arcs[i]);
      if (kind >= 0) trunks[kind].push_back(i);
    }
    std::array<std::size_t, 2> seen{};
    std::vector<Port> ports;
    for (const int i : arcs) {
      const int kind = trunkOf(m_component.arcs[i]);
      if (kind < 0) {
        ports.push_back({m_x[next(i, true)], {i}});
      } else if (seen[kind]++ == trunks[kind].size() / 2) {
        const bool alone = trunks[kind].size() == 1;
        ports.push_back({alone ? m_x[next(i, true)] : boxMiddle(node), trunks[kind]});
        for (const int k : trunks[kind]) m_ports.trunk[k] = m_trunks;
        ++m_trunks;
      }
    }
    return ports;
  }

  std::vector<Port> portsAbove(int node, const std::vector<int>& arcs) const {
    std::vector<Port> ports;
    for (const int i : arcs) {
      const int from = next(i, false);
      const double x = m_graph.isBend(from) ? m_x[from] : m_ports.start[i];
      const bool nearMiddle = std::abs(x - boxMiddle(node)) < boxWidth(node) / 4;
      const bool toMiddle = m_component.arcs[i].inheritance && !nearMiddle;
      ports.push_back({toMiddle ? boxMiddle(node) : x, {i}});
    }
    return ports;
  }

  /// Each port as near to its wish as the order and a distance between ports allow.
  void placePorts(int node, std::vector<Port> ports, bool bottom) {
    if (ports.empty()) return;
    const double least = boxMiddle(node) - 0.45 * boxWidth(node);
    const double most = boxMiddle(node) + 0.45 * boxWidth(node) - (bottom ? 0 : loopsAt(node));
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
      for (const int i : port.arcs) (bottom ? m_ports.start : m_ports.end)[i] = port.wish;
    }
  }

  const Component& m_component;
  const LayeredGraph& m_graph;
  const std::vector<double>& m_x;
  double m_gap;
  Ports m_ports;
  int m_trunks = 0;
};

}  // namespace

Ports spreadPorts(const Component& component, const LayeredGraph& graph,
                  const std::vector<double>& x, double gap) {
  return Spreader(component, graph, x, gap).spread();
}

}  // namespace brisel::layout
