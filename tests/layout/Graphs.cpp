#include "layout/Graphs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <map>
#include <numeric>
#include <utility>

#include "layout/Numbers.h"

namespace brisel::layout::test {
namespace {

double side(double value) { return std::isnan(value) ? 0 : std::clamp(value, 0.0, kLargestSide); }

Rect boxOf(const Graph& graph, const Drawing& drawing, std::size_t i) {
  const Point at = drawing.positions[i];
  return {at.x, at.y, side(graph.boxes[i].width), side(graph.boxes[i].height)};
}

std::vector<Rect> boxesOf(const Graph& graph, const Drawing& drawing) {
  std::vector<Rect> boxes;
  for (std::size_t i = 0; i < graph.boxes.size(); ++i) boxes.push_back(boxOf(graph, drawing, i));
  return boxes;
}

std::vector<std::size_t> byLeft(const std::vector<Rect>& boxes) {
  std::vector<std::size_t> order(boxes.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(),
            [&](std::size_t a, std::size_t b) { return boxes[a].left < boxes[b].left; });
  return order;
}

/// How far a point is from the border of a box, a share of the size of the numbers allowed for.
bool isOnBorder(Point p, const Rect& box) {
  const double e = 1e-9 * (1 + std::abs(p.x) + std::abs(p.y) + box.width + box.height);
  if (!box.grownBy(e).contains(p)) return false;
  const double inside =
      std::min({p.x - box.left, box.right() - p.x, p.y - box.top, box.bottom() - p.y});
  return inside <= e;
}

bool enters(Point a, Point b, const Rect& box) {
  double from = 0;
  double to = 1;
  const auto cut = [&](double start, double way, double low, double high) {
    if (way == 0) return start > low && start < high;
    const double t = (low - start) / way;
    const double u = (high - start) / way;
    from = std::max(from, std::min(t, u));
    to = std::min(to, std::max(t, u));
    return from < to;
  };
  return cut(a.x, b.x - a.x, box.left, box.right()) && cut(a.y, b.y - a.y, box.top, box.bottom());
}

}  // namespace

Graph classDiagram(int classes, std::uint64_t seed) {
  Numbers numbers(seed);
  const auto below = [&](std::uint64_t n) { return static_cast<std::size_t>(numbers.next() % n); };
  const auto n = static_cast<std::uint64_t>(classes);
  Graph graph;
  for (int i = 0; i < classes; ++i) {
    graph.boxes.push_back({120 + 200 * numbers.part(), 40 + 300 * numbers.part()});
  }
  std::vector<std::size_t> liked;
  for (std::size_t i = 1; i < n; ++i) {
    if (numbers.part() > 0.6) continue;
    const std::size_t near = i - 1 - below(std::min<std::uint64_t>(i, 40));
    const std::size_t super =
        liked.empty() || numbers.part() < 0.5 ? near : liked[below(liked.size())];
    if (super >= i) continue;
    const bool realizes = numbers.part() < 0.2;
    graph.edges.push_back({i, super, realizes ? EdgeKind::realization : EdgeKind::generalization});
    liked.push_back(super);
  }
  for (int i = 0; i < classes * 7 / 10; ++i) {
    const std::size_t from = below(n);
    const std::size_t to = numbers.part() < 0.7 ? (from / 40 * 40 + below(40)) % n : below(n);
    graph.edges.push_back({from, to, i % 3 == 0 ? EdgeKind::aggregation : EdgeKind::association});
  }
  return graph;
}

Graph isolated(int boxes) { return {std::vector<Size>(boxes, {100, 60}), {}}; }

Graph star(int leaves) {
  Graph graph = isolated(leaves + 1);
  for (std::size_t i = 1; i < graph.boxes.size(); ++i) {
    graph.edges.push_back({i, 0, EdgeKind::generalization});
  }
  return graph;
}

Graph chain(int boxes) {
  Graph graph = isolated(boxes);
  for (std::size_t i = 1; i < graph.boxes.size(); ++i) graph.edges.push_back({i - 1, i});
  return graph;
}

Graph circle(int boxes, EdgeKind kind) {
  Graph graph = chain(boxes);
  graph.edges.push_back({graph.boxes.size() - 1, 0});
  for (Edge& edge : graph.edges) edge.kind = kind;
  return graph;
}

Graph clique(int boxes) {
  Graph graph = isolated(boxes);
  for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) graph.edges.push_back({i, k});
  }
  return graph;
}

Graph severalBetweenTwo(int lines, int loops) {
  Graph graph = isolated(3);
  for (int i = 0; i < lines; ++i)
    graph.edges.push_back({i % 2 == 0 ? 0U : 1U, i % 2 == 0 ? 1U : 0U});
  for (int i = 0; i < loops; ++i)
    graph.edges.push_back({i % 2 == 0 ? 1U : 2U, i % 2 == 0 ? 1U : 2U});
  return graph;
}

// Under sanitizers, which take several times as long, fewer graphs are of the sizes that are drawn
// in many ways, and large ones are smaller.
#ifdef __SANITIZE_ADDRESS__
constexpr std::array kClasses = {2, 5, 20, 30, 1000};
constexpr int kLess = 2;
#else
constexpr std::array kClasses = {2, 5, 20, 80, 300, 1000};
constexpr int kLess = 1;
#endif

std::vector<NamedGraph> usual() {
  std::vector<NamedGraph> graphs;
  for (const int classes : kClasses) {
    for (const std::uint64_t seed : {1, 2}) {
      graphs.push_back({std::to_string(classes) + " classes, seed " + std::to_string(seed),
                        classDiagram(classes, seed)});
    }
  }
  return graphs;
}

std::vector<NamedGraph> hostile() {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  Graph oddSizes = classDiagram(40, 7);
  for (std::size_t i = 0; i < oddSizes.boxes.size(); ++i) {
    const std::vector<Size> odd = {{0, 0},    {-5, 30},        {NAN, 20}, {1e300, 40},
                                   {50, NAN}, {30, kInfinity}, {1, 1},    {0, 700}};
    if (i % 3 == 0) oddSizes.boxes[i] = odd[i / 3 % odd.size()];
  }
  return {{"empty", {}},
          {"one box", isolated(1)},
          {"one box with loops", {{{50, 50}}, {{0, 0}, {0, 0, EdgeKind::generalization}}}},
          {"isolated", isolated(5000 / kLess)},
          {"star", star(5000 / kLess)},
          {"chain", chain(10'000 / kLess)},
          {"circle of associations", circle(2000 / kLess, EdgeKind::association)},
          {"circle of inheritance", circle(200 / kLess, EdgeKind::generalization)},
          {"clique", clique(40 / kLess)},
          {"300 lines between two", severalBetweenTwo(300, 40)},
          {"odd sizes", oddSizes}};
}

void checkDrawing(const Graph& graph, const Drawing& drawing) {
  ASSERT_EQ(drawing.positions.size(), graph.boxes.size());
  ASSERT_EQ(drawing.lines.size(), graph.edges.size());
  const std::vector<Rect> boxes = boxesOf(graph, drawing);
  for (const Rect& box : boxes) {
    ASSERT_TRUE(std::isfinite(box.left) && std::isfinite(box.top));
    ASSERT_TRUE(box.left >= -1e-6 && box.top >= -1e-6) << box.left << " " << box.top;
  }
  const std::vector<std::size_t> order = byLeft(boxes);
  for (std::size_t i = 0; i < order.size(); ++i) {
    const Rect inner = boxes[order[i]].grownBy(-1e-3);
    for (std::size_t k = i + 1; k < order.size(); ++k) {
      if (boxes[order[k]].left >= inner.right()) break;
      ASSERT_FALSE(inner.intersects(boxes[order[k]])) << order[i] << " over " << order[k];
    }
  }
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    const auto& line = drawing.lines[i];
    ASSERT_GE(line.size(), 2U) << "line " << i;
    for (const Point p : line) ASSERT_TRUE(std::isfinite(p.x) && std::isfinite(p.y));
    ASSERT_TRUE(isOnBorder(line.front(), boxes[graph.edges[i].source])) << "line " << i;
    ASSERT_TRUE(isOnBorder(line.back(), boxes[graph.edges[i].target])) << "line " << i;
  }
}

int linesThroughBoxes(const Graph& graph, const Drawing& drawing) {
  const std::vector<Rect> boxes = boxesOf(graph, drawing);
  int through = 0;
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    for (std::size_t box = 0; box < boxes.size(); ++box) {
      const Edge& edge = graph.edges[i];
      if (box == edge.source || box == edge.target || boxes[box].isEmpty()) continue;
      const Rect inner = boxes[box].grownBy(-1e-3);
      const auto& line = drawing.lines[i];
      for (std::size_t k = 1; k < line.size(); ++k) through += enters(line[k - 1], line[k], inner);
    }
  }
  return through;
}

int piecesOnEachOther(const Graph& graph, const Drawing& drawing) {
  struct Piece {
    double low;
    double high;
    std::size_t edge;
  };
  const auto isTrunk = [&](std::size_t a, std::size_t b) {
    const Edge& e = graph.edges[a];
    const Edge& f = graph.edges[b];
    return e.kind >= EdgeKind::generalization && e.kind == f.kind && e.target == f.target;
  };
  std::map<std::pair<bool, double>, std::vector<Piece>> onOneLine;
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    const auto& line = drawing.lines[i];
    for (std::size_t k = 1; k < line.size(); ++k) {
      const bool down = line[k].x == line[k - 1].x;
      const auto [low, high] =
          down ? std::minmax(line[k - 1].y, line[k].y) : std::minmax(line[k - 1].x, line[k].x);
      onOneLine[{down, down ? line[k].x : line[k].y}].push_back({low, high, i});
    }
  }
  int pairs = 0;
  for (auto& [at, pieces] : onOneLine) {
    std::sort(pieces.begin(), pieces.end(), [](auto& a, auto& b) { return a.low < b.low; });
    for (std::size_t i = 0; i < pieces.size(); ++i) {
      for (std::size_t k = i + 1; k < pieces.size() && pieces[k].low < pieces[i].high; ++k) {
        pairs += pieces[i].edge != pieces[k].edge && !isTrunk(pieces[i].edge, pieces[k].edge);
      }
    }
  }
  return pairs;
}

bool isAxisParallel(const std::vector<Point>& line) {
  for (std::size_t k = 1; k < line.size(); ++k) {
    if (line[k].x != line[k - 1].x && line[k].y != line[k - 1].y) return false;
  }
  return true;
}

bool same(const Drawing& a, const Drawing& b) {
  return a.positions == b.positions && a.lines == b.lines;
}

}  // namespace brisel::layout::test
