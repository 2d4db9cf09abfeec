#include <algorithm>
#include <stdexcept>

#include <benchmark/benchmark.h>

#include "layout/Layout.h"
#include "layout/Numbers.h"

namespace brisel::layout {
namespace {

const Spacing kSpacing{30, 50, 1.6};

/// A class diagram with 6 generalizations and 7 associations for every 10 classes; classes with
/// lines attract more, two thirds of them in the package of 40 that the class is in.
Graph classDiagram(int classes) {
  Numbers numbers(1);
  const auto n = static_cast<std::size_t>(classes);
  const auto below = [&](std::size_t end) {
    return static_cast<std::size_t>(numbers.next() % end);
  };
  Graph graph;
  std::vector<std::size_t> liked;
  for (std::size_t i = 0; i < n; ++i) {
    graph.boxes.push_back({120 + 200 * numbers.part(), 40 + 300 * numbers.part()});
    liked.push_back(i);
  }
  const auto partner = [&](std::size_t of, std::size_t end) {
    const std::size_t near = std::min(of / 40 * 40 + below(40), end - 1);
    const std::size_t to = numbers.part() < 0.7 ? near : liked[below(liked.size())] % end;
    liked.insert(liked.end(), 4, to);
    return to;
  };
  for (std::size_t i = 1; i < n; ++i) {
    if (numbers.part() < 0.6) graph.edges.push_back({i, partner(i, i), EdgeKind::generalization});
  }
  for (std::size_t i = 0; i < n * 7 / 10; ++i) {
    const std::size_t from = below(n);
    graph.edges.push_back({from, partner(from, n), EdgeKind::association});
  }
  return graph;
}

/// A drawing in which boxes overlap is no result.
void check(const Graph& graph, const Drawing& drawing) {
  std::vector<Rect> boxes;
  for (std::size_t i = 0; i < graph.boxes.size(); ++i) {
    const Point at = drawing.positions.at(i);
    boxes.push_back({at.x, at.y, graph.boxes[i].width - 1e-3, graph.boxes[i].height - 1e-3});
  }
  std::sort(boxes.begin(), boxes.end(), [](auto& a, auto& b) { return a.left < b.left; });
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    for (std::size_t k = i + 1; k < boxes.size() && boxes[k].left < boxes[i].right(); ++k) {
      if (boxes[i].intersects(boxes[k])) throw std::runtime_error("boxes overlap");
    }
  }
}

template <class Draw>
void run(benchmark::State& state, Draw&& draw) {
  const Graph graph = classDiagram(static_cast<int>(state.range(0)));
  Drawing drawing;
  for (auto _ : state) {
    drawing = draw(graph);
    benchmark::DoNotOptimize(drawing);
  }
  check(graph, drawing);
  state.counters["edges"] = static_cast<double>(graph.edges.size());
}

void layeredLayout(benchmark::State& state) {
  run(state, [](const Graph& graph) { return layered(graph, kSpacing); });
}
void matrixLayout(benchmark::State& state) {
  run(state, [](const Graph& graph) { return matrix(graph, kSpacing); });
}
void randomLayout(benchmark::State& state) {
  run(state, [](const Graph& graph) { return random(graph, kSpacing, 1); });
}
void springLayout(benchmark::State& state) {
  run(state, [](const Graph& graph) { return spring(graph, kSpacing); });
}

BENCHMARK(layeredLayout)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(matrixLayout)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(randomLayout)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(springLayout)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::layout
