// What it costs to lay out a few classes of a large diagram anew, their lines to the rest included.

#include <string>

#include <benchmark/benchmark.h>

#include "layout/Numbers.h"
#include "support/FilledCanvas.h"

namespace brisel::canvas {
namespace {

using bench::FilledCanvas;

/// Neighbouring classes, or some from anywhere.
enum class From { oneCorner, anywhere };

void arrangeSome(benchmark::State& state, const char* code, From from) {
  const int classes = static_cast<int>(state.range(0));
  const int selected = static_cast<int>(state.range(1));
  const FilledCanvas canvas(classes, FilledCanvas::Lines::nearby);
  canvas.control->Layout("%HIERARCHY%");
  layout::Numbers numbers(1);
  std::size_t moved = 0;
  const auto counted = canvas.control->NodeMoved.connect([&](const std::string&) { ++moved; });
  for (auto _ : state) {
    state.PauseTiming();
    canvas.control->unselectAll();
    const int first = numbers.below(classes - selected);
    while (static_cast<int>(canvas.control->selection().nodes().size()) < selected) {
      const int some = static_cast<int>(canvas.control->selection().nodes().size());
      const int i = from == From::oneCorner ? first + some : numbers.below(classes);
      canvas.control->selNode(FilledCanvas::keyOf(i));
    }
    static_cast<void>(canvas.control->scene().extent());
    state.ResumeTiming();
    canvas.control->Layout(code);
    static_cast<void>(canvas.control->scene().extent());
  }
  state.counters["moved"] = static_cast<double>(moved) / static_cast<double>(state.iterations());
}

void arguments(benchmark::internal::Benchmark* benchmark) {
  for (const int classes : {1000, 10'000}) {
    for (const int selected : {5, 50}) benchmark->Args({classes, selected});
  }
  benchmark->Unit(benchmark::kMillisecond)->Iterations(10);
}

BENCHMARK_CAPTURE(arrangeSome, hierarchyTogether, "%HIERARCHY%", From::oneCorner)->Apply(arguments);
BENCHMARK_CAPTURE(arrangeSome, hierarchyAnywhere, "%HIERARCHY%", From::anywhere)->Apply(arguments);
BENCHMARK_CAPTURE(arrangeSome, springTogether, "SPRING", From::oneCorner)->Apply(arguments);
BENCHMARK_CAPTURE(arrangeSome, matrixTogether, "MATRIX", From::oneCorner)->Apply(arguments);

}  // namespace
}  // namespace brisel::canvas
