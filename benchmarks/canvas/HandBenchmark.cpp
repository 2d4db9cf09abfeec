// What a person's hand costs on a canvas of many classes, of which the long lines cross all: what
// lies under the pointer, a class that is dragged, a rubber band, classes made, named and deleted.

#include <random>
#include <string>

#include <benchmark/benchmark.h>

#include "support/FilledCanvas.h"

namespace brisel::bench {
namespace {

using platform::Point;
using platform::Rect;

/// The canvas in a view of 1920 by 1080 pixels, which asks for the extent at each change to place
/// its scroll bars.
struct SeenCanvas : FilledCanvas {
  explicit SeenCanvas(const benchmark::State& state, Lines lines = Lines::allOver)
      : FilledCanvas(static_cast<int>(state.range(0)), lines) {
    control->viewport().resize({1920, 1080});
    damaged = control->scene().Damaged.connect([this](const auto& areas) {
      told += areas.size();
      benchmark::DoNotOptimize(control->scene().extent());
    });
  }
  void press(Point at) { control->PointerPress(at.x, at.y, "left", ""); }
  void move(Point at) { control->PointerMove(at.x, at.y); }

  platform::Connection damaged;
  std::size_t told = 0;
};

void movePointer(benchmark::State& state) {
  SeenCanvas canvas(state);
  const Rect all = canvas.control->scene().extent();
  std::mt19937 random(1);
  std::uniform_real_distribution<double> share(0, 1);
  for (auto _ : state) {
    canvas.move({all.left + share(random) * all.width, all.top + share(random) * all.height});
  }
}
BENCHMARK(movePointer)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void dragOneClass(benchmark::State& state) {
  SeenCanvas canvas(state);
  canvas::Node& node = *canvas.control->scene().node("n" + std::to_string(state.range(0) / 2));
  canvas.control->viewport().centerOn(node.bounds().center());
  const Point grip = node.bounds().topLeft() + Point{300, 200};
  canvas.press(grip);
  double step = 0;
  for (auto _ : state) {
    step = step > 3000 ? 0 : step + 75;
    canvas.move(grip + Point{step, step / 2});
  }
  if (canvas.told == 0) state.SkipWithError("nothing moved");
}
BENCHMARK(dragOneClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// All lines carry three texts, which keep clear of what moves.
void dragOneClassAmongTexts(benchmark::State& state) {
  SeenCanvas canvas(state, FilledCanvas::Lines::nearby);
  canvas.labelLines();
  canvas::Node& node = *canvas.control->scene().node("n" + std::to_string(state.range(0) / 2));
  const Point grip = node.bounds().topLeft() + Point{300, 200};
  canvas.press(grip);
  double step = 0;
  for (auto _ : state) {
    step = step > 3000 ? 0 : step + 75;
    canvas.move(grip + Point{step, step / 2});
  }
}
BENCHMARK(dragOneClassAmongTexts)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void placeAllTexts(benchmark::State& state) {
  SeenCanvas canvas(state, FilledCanvas::Lines::nearby);
  canvas.labelLines();
  double size = 10;
  for (auto _ : state) {
    size = size > 10 ? 10 : 11;
    canvas.control->SectionFont("Courier New", size);
  }
}
BENCHMARK(placeAllTexts)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void dragTheOutermostClass(benchmark::State& state) {
  SeenCanvas canvas(state);
  canvas.press({300, 200});
  double step = 0;
  for (auto _ : state) {
    step = step > 3000 ? 0 : step + 75;
    canvas.move(Point{300, 200} - Point{step, step});
  }
  if (canvas.told == 0) state.SkipWithError("nothing moved");
}
BENCHMARK(dragTheOutermostClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// Each move takes everything in, or lets half of it go.
void rubberBandOverEverything(benchmark::State& state) {
  SeenCanvas canvas(state);
  const Rect all = canvas.control->scene().extent().grownBy(500);
  canvas.press(all.topLeft());
  bool whole = false;
  for (auto _ : state) {
    whole = !whole;
    canvas.move({whole ? all.right() : all.center().x, all.bottom()});
  }
  canvas.move({all.right(), all.bottom()});
  if (canvas.control->selection().size() < canvas.control->scene().nodes().size()) {
    state.SkipWithError("not everything was selected");
  }
}
BENCHMARK(rubberBandOverEverything)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void deleteEverythingSelected(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    SeenCanvas canvas(state);
    canvas.control->selection().selectAll();
    state.ResumeTiming();
    canvas.control->deleteSelectedItems();
    if (!canvas.control->scene().nodes().empty()) state.SkipWithError("something is left");
    state.PauseTiming();
    canvas.control = nullptr;
    state.ResumeTiming();
  }
}
BENCHMARK(deleteEverythingSelected)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void createAndDeleteOneClass(benchmark::State& state) {
  SeenCanvas canvas(state);
  for (auto _ : state) {
    canvas.control->createNode("one more", "OneMore", 7000, 7000, 0, 0, canvas::Node::kClassBox);
    canvas.control->deleteNode("one more");
  }
}
BENCHMARK(createAndDeleteOneClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

void renameOneClass(benchmark::State& state) {
  SeenCanvas canvas(state);
  const auto node = canvas.control->getNode("n42");
  bool longer = false;
  for (auto _ : state) {
    longer = !longer;
    node->text(longer ? "AClassOfAMuchLongerName" : "Class42");
  }
}
BENCHMARK(renameOneClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace brisel::bench
