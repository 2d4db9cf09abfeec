#include "layout/Ports.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

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
    bool isStraight;  ///< at its wish the line, or one of a trunk, goes on without a bend
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
    return room > 0 ? std::min(0.5 * boxWidth(node), std::max(1.2 * m_gap, 0.8 * room)) : 0;
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
      // Lines from the same box end in the order in which they start.
      const auto order = [&](int i) {
        return std::pair(m_graph.position[next(i, bottom)], bottom ? 0 : m_ports.start[i]);
      };
      std::stable_sort(arcs.begin(), arcs.end(), [&](int a, int b) { return order(a) < order(b); });
      placePorts(node, bottom ? portsBelow(node, arcs) : portsAbove(node, arcs), bottom);
    }
  }

  /// Where ports may be at a side.
  struct Side {
    double least;
    double most;

    [[nodiscard]] double nearest(double x) const { return std::clamp(x, least, most); }
    [[nodiscard]] bool has(double x) const { return least <= x && x <= most; }
  };
  [[nodiscard]] Side sideOf(int node, bool bottom) const {
    const double reach = 0.45 * boxWidth(node);
    const double most = boxMiddle(node) + reach - (bottom ? 0 : loopsAt(node));
    return {boxMiddle(node) - reach, most};
  }

  std::vector<Port> portsBelow(int node, const std::vector<int>& arcs) {
    const Side side = sideOf(node, true);
    const auto add = [&](std::vector<Port>& ports, int arc, std::vector<int> all) {
      const int lower = next(arc, true);
      const double x = side.nearest(m_x[lower]);
      const bool isStraight = m_graph.isBend(lower) ? x == m_x[lower] : sideOf(lower, false).has(x);
      ports.push_back({x, isStraight, std::move(all)});
    };
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
        add(ports, i, {i});
      } else if (seen[kind]++ == trunks[kind].size() / 2) {
        for (const int k : trunks[kind]) m_ports.trunk[k] = m_trunks;
        ++m_trunks;
        if (trunks[kind].size() == 1) {
          add(ports, i, {i});
        } else {
          ports.push_back(trunkPort(node, std::move(trunks[kind])));
        }
      }
    }
    return ports;
  }

  /// At the middle, or near it where one of the lines goes straight down.
  [[nodiscard]] Port trunkPort(int node, std::vector<int> arcs) const {
    const double middle = boxMiddle(node);
    const double aside = std::min(m_gap, boxWidth(node) / 4);
    Port port{middle, false, std::move(arcs)};
    double least = aside;
    for (const int i : port.arcs) {
      const int lower = next(i, true);
      const double x = m_graph.isBend(lower) ? m_x[lower] : sideOf(lower, false).nearest(middle);
      if (std::abs(x - middle) > least) continue;
      least = std::abs(x - middle);
      port.wish = x;
      port.isStraight = true;
    }
    return port;
  }

  std::vector<Port> portsAbove(int node, const std::vector<int>& arcs) const {
    const Side side = sideOf(node, false);
    std::vector<Port> ports;
    for (const int i : arcs) {
      const int from = next(i, false);
      const double x = m_graph.isBend(from) ? m_x[from] : m_ports.start[i];
      const bool nearMiddle = std::abs(x - boxMiddle(node)) < boxWidth(node) / 4;
      const bool toMiddle = m_component.arcs[i].inheritance && !nearMiddle;
      ports.push_back(
          {side.nearest(toMiddle ? boxMiddle(node) : x), !toMiddle && side.has(x), {i}});
    }
    return ports;
  }

  void placePorts(int node, std::vector<Port> ports, bool bottom) {
    if (ports.empty()) return;
    const auto [least, most] = sideOf(node, bottom);
    const double step = std::min(m_gap / 2, (most - least) / count(ports));
    int next = 0;
    double low = least;
    for (const int kept : keptStraight(ports, {least, most}, 0.6 * step)) {
      const double at = ports[kept].wish;
      fill(ports, next, kept, {low, at}, {next > 0, true}, step);
      next = kept + 1;
      low = at;
    }
    fill(ports, next, count(ports), {low, most}, {next > 0, false}, step);
    for (const Port& port : ports) {
      for (const int i : port.arcs) (bottom ? m_ports.start : m_ports.end)[i] = port.wish;
    }
  }

  /// The most straight lines that leave so much room for the ports between them.
  static std::vector<int> keptStraight(const std::vector<Port>& ports, Side side, double step) {
    constexpr int kMost = 200;
    const int all = count(ports);
    std::vector<int> length(ports.size(), 0);
    std::vector<int> before(ports.size(), -1);
    int last = -1;
    for (int i = 0; i < all && all <= kMost; ++i) {
      const double x = ports[i].wish;
      if (!ports[i].isStraight || side.most - x < (all - 1 - i) * step) continue;
      length[i] = x - side.least >= i * step ? 1 : 0;
      for (int k = 0; k < i; ++k) {
        if (length[k] == 0 || length[k] < length[i] || x - ports[k].wish < (i - k) * step) continue;
        length[i] = length[k] + 1;
        before[i] = k;
      }
      if (length[i] > 0 && (last < 0 || length[i] > length[last])) last = i;
    }
    std::vector<int> kept;
    for (; last >= 0; last = before[last]) kept.push_back(last);
    std::reverse(kept.begin(), kept.end());
    return kept;
  }

  /// Ports from "first" to before "end", each as near to its wish as the order and a distance
  /// between ports allow; "taken" tells whether there are ports at the ends of the room.
  static void fill(std::vector<Port>& ports, int first, int end, Side room,
                   std::pair<bool, bool> taken, double step) {
    if (first == end) return;
    const int gaps = end - first - 1 + (taken.first ? 1 : 0) + (taken.second ? 1 : 0);
    step = std::min(step, (room.most - room.least) / std::max(1, gaps));
    double bound = room.least + (taken.first ? step : 0);
    for (int i = first; i < end; ++i) {
      ports[i].wish = std::max(ports[i].wish, bound);
      bound = ports[i].wish + step;
    }
    bound = room.most - (taken.second ? step : 0);
    for (int i = end - 1; i >= first; --i) {
      ports[i].wish = std::min(ports[i].wish, bound);
      bound = ports[i].wish - step;
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
