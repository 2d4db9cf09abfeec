#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "component/AutomaticShell.h"
#include "component/Suite.h"
#include "editor/CLSEditor.h"
#include "support/GeneratedModel.h"

/// The editor on whole models, without a window. The argument is the number of classes.
namespace brisel::benchmarks {
namespace {

namespace types = platform::types;

std::int64_t countOf(const GeneratedModel& model, std::string_view type) {
  return model.repository->MetaNodes(type)->extension()->Count();
}

/// An editor on a generated model with stored geometry.
struct Workbench {
  explicit Workbench(std::int64_t classes)
      : model(generateModel({.classes = static_cast<int>(classes), .hasGeometry = true})),
        registry(platform::make<component::AutomaticShell>()) {
    component::registerSuite(registry);
    editor = platform::make<editor::CLSEditor>(registry);
    editor->Repository(model.repository.get());
  }
  ~Workbench() { editor->terminate(); }

  GeneratedModel model;
  platform::ComponentRegistry registry;
  platform::Ref<editor::CLSEditor> editor;
};

void Populate(benchmark::State& state) {
  const Workbench bench(state.range(0));
  for (auto _ : state) {
    bench.editor->Populate();
    state.PauseTiming();
    const auto drawn = bench.editor->diagram()->getAllNodes()->Count();
    if (drawn != state.range(0)) return state.SkipWithError("not every class was drawn");
    state.counters["lines"] = static_cast<double>(bench.editor->diagram()->getAllLinks()->Count());
    bench.editor->Clear();
    state.ResumeTiming();
  }
}
BENCHMARK(Populate)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// On a model whose classes are no data types yet.
void SynchronizeDataTypes(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    auto bench = std::make_unique<Workbench>(state.range(0));
    const std::int64_t before = countOf(bench->model, types::kDataType);
    state.ResumeTiming();
    bench->editor->SynchronizeDataTypes();
    state.PauseTiming();
    if (countOf(bench->model, types::kDataType) != before + state.range(0)) {
      return state.SkipWithError("not every class became a data type");
    }
    bench.reset();
    state.ResumeTiming();
  }
}
BENCHMARK(SynchronizeDataTypes)
    ->Arg(1000)
    ->Arg(10000)
    ->Iterations(4)  // making the models takes most of the time
    ->Unit(benchmark::kMillisecond);

/// On a model where there is nothing left to do.
void SynchronizeDataTypesAgain(benchmark::State& state) {
  const Workbench bench(state.range(0));
  bench.editor->SynchronizeDataTypes();
  for (auto _ : state) bench.editor->SynchronizeDataTypes();
}
BENCHMARK(SynchronizeDataTypesAgain)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void AddPositions(benchmark::State& state) {
  const Workbench bench(state.range(0));
  bench.editor->Populate();
  const std::int64_t areas = countOf(bench.model, types::kGeomArea);
  for (auto _ : state) bench.editor->AddPositions();
  if (countOf(bench.model, types::kGeomArea) != areas) state.SkipWithError("positions are missing");
}
BENCHMARK(AddPositions)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::benchmarks
