#include <QMouseEvent>
#include <QScrollBar>

#include <benchmark/benchmark.h>

#include "component/Suite.h"
#include "qt/BenchApplication.h"
#include "qt/MatrixView.h"
#include "qt/QtShell.h"
#include "support/GeneratedModel.h"

/// Frames of the matrix in a window of 1920 by 1080 pixels. The argument is the number of classes.
namespace brisel::bench {
namespace {

struct Shown {
  explicit Shown(std::int64_t classes)
      : model(benchmarks::generateModel({.classes = static_cast<int>(classes)})),
        registry(platform::make<qt::QtShell>()) {
    component::registerSuite(registry);
    browser = registry.create<tools::MatrixBrowser>("BriselUtility.MatrixBrowser");
    browser->SetRepository(model.repository.get());
    view = std::make_unique<qt::MatrixView>(browser);
    view->resize(1920, 1080);
    view->show();
    QApplication::processEvents();
  }

  QApplication& app = application();
  benchmarks::GeneratedModel model;
  platform::ComponentRegistry registry;
  platform::Ref<tools::MatrixBrowser> browser;
  std::unique_ptr<qt::MatrixView> view;
};

/// Scrolls to and fro in steps, and paints each.
void scroll(benchmark::State& state, QScrollBar& bar, qt::MatrixView& view, int step) {
  for (auto _ : state) {
    if (bar.value() + step > bar.maximum() || bar.value() + step < 0) step = -step;
    bar.setValue(bar.value() + step);
    view.viewport()->repaint();
  }
}

void matrixScrolledDown(benchmark::State& state) {
  const Shown shown(state.range(0));
  scroll(state, *shown.view->verticalScrollBar(), *shown.view, 40);
}
BENCHMARK(matrixScrolledDown)->Arg(1000)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);

void matrixScrolledSideways(benchmark::State& state) {
  const Shown shown(state.range(0));
  scroll(state, *shown.view->horizontalScrollBar(), *shown.view, 40);
}
BENCHMARK(matrixScrolledSideways)->Arg(1000)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// At the size that shows as much as there is room for.
void matrixFitted(benchmark::State& state) {
  const Shown shown(state.range(0));
  shown.view->zoomToFit();
  for (auto _ : state) shown.view->viewport()->repaint();
}
BENCHMARK(matrixFitted)->Arg(1000)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// The pointer goes on to the next cell.
void matrixHovered(benchmark::State& state) {
  const Shown shown(state.range(0));
  int x = 0;
  for (auto _ : state) {
    x = (x + 22) % 1000;
    QMouseEvent event(QEvent::MouseMove, QPointF(400 + x, 500), QPointF(400 + x, 500), Qt::NoButton,
                      Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(shown.view->viewport(), &event);
    shown.view->viewport()->repaint();
  }
}
BENCHMARK(matrixHovered)->Arg(2000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::bench
