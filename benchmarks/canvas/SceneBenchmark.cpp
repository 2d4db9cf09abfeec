// What a canvas of 10,000 classes costs while it is worked with.

#include <cmath>
#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "canvas/DiagramControl.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"

namespace brisel::canvas {
namespace {

using platform::Point;
using platform::Ref;

/// Boxes of ten rows in a square, 1.2 lines each to a box nearby.
class FilledCanvas {
 public:
  explicit FilledCanvas(int count) : control(platform::make<DiagramControl>(m_registry)) {
    control->beginUpdate();
    const int across = static_cast<int>(std::ceil(std::sqrt(count)));
    for (int i = 0; i < count; ++i) addBox(i, across);
    for (int i = 0; i < count * 12 / 10; ++i) {
      control->createLink("l" + std::to_string(i), "", keyOf(i % count),
                          keyOf((i * 7 + 1) % count));
    }
    control->endUpdate();
  }

  static std::string keyOf(int i) { return "n" + std::to_string(i); }

 private:
  void addBox(int i, int across) const {
    control->createNode(keyOf(i), "Class" + std::to_string(i), i % across * 5000.0,
                        i / across * 5000.0, 3000, 1500, Node::kClassBox);
    const auto node = control->getNode(keyOf(i));
    const auto rows = node->Section(0);
    for (int row = 0; row < 10; ++row) {
      rows->addRow("+attribute" + std::to_string(row) + ":integer", "STRING", keyOf(row));
    }
    node->Section(1)->visible(false);
    node->fitToText(true);
  }

  platform::ComponentRegistry m_registry{Ref<platform::Shell>()};

 public:
  Ref<DiagramControl> control;
};

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
