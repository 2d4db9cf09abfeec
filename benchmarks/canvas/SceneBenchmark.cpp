// What a canvas of 10,000 classes costs while it is worked with.

#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "support/FilledCanvas.h"

namespace brisel::canvas {
namespace {

using bench::FilledCanvas;
using platform::Point;

void fillCanvas(benchmark::State& state) {
  for (auto _ : state) {
    const FilledCanvas canvas(static_cast<int>(state.range(0)));
    if (canvas.control->scene().links().size() !=
        static_cast<std::size_t>(state.range(0) * 12 / 10)) {
      state.SkipWithError("links are missing");
    }
  }
}
BENCHMARK(fillCanvas)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void hitTestAnywhere(benchmark::State& state) {
  const FilledCanvas canvas(static_cast<int>(state.range(0)));
  const auto all = canvas.control->scene().extent();
  std::mt19937 random(1);
  std::uniform_real_distribution<double> share(0, 1);
  std::size_t hits = 0;
  std::size_t asked = 0;
  for (auto _ : state) {
    const Point at{all.left + share(random) * all.width, all.top + share(random) * all.height};
    hits += hitTest(canvas.control->scene(), canvas.control->viewport(), at).has_value() ? 1 : 0;
    ++asked;
  }
  state.counters["hit"] = static_cast<double>(hits) / static_cast<double>(asked);
}
BENCHMARK(hitTestAnywhere)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void moveOneBox(benchmark::State& state) {
  const FilledCanvas canvas(static_cast<int>(state.range(0)));
  Node& node = *canvas.control->scene().node("n42");
  double step = 75;
  for (auto _ : state) {
    node.bounds(node.bounds().movedBy({step, 0}));
    step = -step;
  }
}
BENCHMARK(moveOneBox)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace brisel::canvas
