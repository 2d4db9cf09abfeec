#include "layout/WideLayers.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace brisel::layout {
namespace {

/// Rows come out wider than their boxes, since these stand below each other where lines join them.
constexpr double kWideLooseness = 1.15;

/// The families of few boxes are rather left in one row than split, up to so many times the wanted
/// width: they matter less to the shape of the whole.
double borne(int boxes) { return boxes <= 20 ? 2.5 : boxes <= 60 ? 1.8 : 1; }

struct Extent {
  double width = 0;
  double height = 0;
};

class Splitter {
 public:
  Splitter(const Component& component, const Spacing& spacing, std::vector<int>& layer)
      : m_component(component), m_spacing(spacing), m_layer(layer) {
    m_layers.resize(1 + *std::max_element(layer.begin(), layer.end()));
    for (int n = 0; n < component.nodes(); ++n) {
      Extent& e = m_layers[layer[n]];
      e.width += kWideLooseness * (component.width[n] + spacing.node);
      e.height = std::max(e.height, component.height[n] + spacing.layer);
    }
  }

  void run() {
    const double most = widthForShape();
    std::vector<int> first;
    int next = 0;
    for (const Extent& e : m_layers) {
      first.push_back(next);
      next += parts(e, most);
    }
    const std::vector<double> order = preference();
    std::vector<std::vector<int>> members(m_layers.size());
    for (int n = 0; n < m_component.nodes(); ++n) members[m_layer[n]].push_back(n);
    for (int l = 0; l < count(members); ++l) {
      auto& nodes = members[l];
      std::stable_sort(nodes.begin(), nodes.end(),
                       [&](int a, int b) { return order[a] < order[b]; });
      const double share = m_layers[l].width / parts(m_layers[l], most);
      double used = 0;
      for (const int n : nodes) {
        const double width = kWideLooseness * (m_component.width[n] + m_spacing.node);
        const int part = static_cast<int>((used + width / 2) / share);
        m_layer[n] = first[l] + std::min(part, parts(m_layers[l], most) - 1);
        used += width;
      }
    }
    closeGaps();
  }

 private:
  static int parts(const Extent& e, double most) {
    return std::max(1, static_cast<int>(std::ceil(e.width / most)));
  }

  /// The largest width whose layers, split to it, are not wider than the wanted shape.
  [[nodiscard]] double widthForShape() const {
    double low = 0;
    double high = 0;
    for (int n = 0; n < m_component.nodes(); ++n) {
      low = std::max(low, kWideLooseness * (m_component.width[n] + m_spacing.node));
    }
    for (const Extent& e : m_layers) high = std::max(high, e.width);
    if (fits(high) || high <= low) return std::max(low, high);
    for (int round = 0; round < 40; ++round) {
      const double middle = (low + high) / 2;
      (fits(middle) ? low : high) = middle;
    }
    return low;
  }

  [[nodiscard]] bool fits(double most) const {
    double height = 0;
    for (const Extent& e : m_layers) height += e.height * parts(e, most);
    return most <= borne(m_component.nodes()) * height * m_spacing.aspect;
  }

  /// Small for nodes that should go to the upper part of their layer.
  [[nodiscard]] std::vector<double> preference() const {
    const int nodes = m_component.nodes();
    std::vector<int> up(nodes, 0);
    std::vector<int> down(nodes, 0);
    std::vector<int> parent(nodes, -1);
    std::vector<int> rank(nodes, 0);
    std::vector<int> children(nodes, 0);
    for (const Arc& arc : m_component.arcs) {
      ++down[arc.from];
      ++up[arc.to];
      if (parent[arc.to] >= 0) continue;
      parent[arc.to] = arc.from;
      rank[arc.to] = children[arc.from]++;
    }
    std::vector<double> order(nodes, 0);
    for (int n = 0; n < nodes; ++n) {
      const double inFamily = parent[n] < 0 ? 0 : (rank[n] + 0.5) / children[parent[n]];
      order[n] = std::clamp(down[n] - up[n], -1, 1) + inFamily;
    }
    return order;
  }

  /// Numbers the layers that have nodes in sequence.
  void closeGaps() {
    std::vector<int> used(1 + *std::max_element(m_layer.begin(), m_layer.end()), 0);
    for (const int l : m_layer) used[l] = 1;
    std::exclusive_scan(used.begin(), used.end(), used.begin(), 0);
    for (int& l : m_layer) l = used[l];
  }

  const Component& m_component;
  const Spacing& m_spacing;
  std::vector<int>& m_layer;
  std::vector<Extent> m_layers;
};

}  // namespace

void splitWideLayers(const Component& component, const Spacing& spacing, std::vector<int>& layer) {
  Splitter(component, spacing, layer).run();
}

}  // namespace brisel::layout
