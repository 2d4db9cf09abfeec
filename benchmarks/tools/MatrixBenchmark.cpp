#include <string>

#include <benchmark/benchmark.h>

#include "component/AutomaticShell.h"
#include "component/Suite.h"
#include "support/GeneratedModel.h"
#include "tools/MatrixBrowser.h"

/// The matrix of whole models, without a window. The argument is the number of classes.
namespace brisel::benchmarks {
namespace {

struct Browsed {
  explicit Browsed(std::int64_t classes)
      : model(generateModel({.classes = static_cast<int>(classes)})),
        registry(platform::make<component::AutomaticShell>()) {
    component::registerSuite(registry);
    browser = registry.create<tools::MatrixBrowser>("BriselUtility.MatrixBrowser");
    browser->SetRepository(model.repository.get());
  }

  GeneratedModel model;
  platform::ComponentRegistry registry;
  platform::Ref<tools::MatrixBrowser> browser;
};

void sizes(benchmark::internal::Benchmark* run) {
  run->Arg(1000)->Arg(2000)->Arg(10000)->Unit(benchmark::kMillisecond);
}

/// Reading the classes and what joins them.
void openModel(benchmark::State& state) {
  const Browsed bench(state.range(0));
  for (auto _ : state) bench.browser->SetRepository(bench.model.repository.get());
}
BENCHMARK(openModel)->Apply(sizes);

void sort(benchmark::State& state, const char* order) {
  const Browsed bench(state.range(0));
  for (auto _ : state) {
    bench.browser->Sort(order);
    if (bench.browser->matrix().size() != static_cast<std::size_t>(state.range(0))) {
      return state.SkipWithError("classes are missing");
    }
  }
}
BENCHMARK_CAPTURE(sort, clusters, "clusters")->Apply(sizes);
BENCHMARK_CAPTURE(sort, name, "name")->Apply(sizes);

/// A relationship made in a cell and deleted again, until the matrix is in step.
void edit(benchmark::State& state) {
  const Browsed bench(state.range(0));
  std::int64_t row = 0;
  for (auto _ : state) {
    row = row % (state.range(0) - 1) + 1;
    const auto made = bench.browser->Make("association", row, row + 1);
    bench.browser->Delete(row, row + 1, made->identifier());
  }
}
BENCHMARK(edit)->Apply(sizes)->Unit(benchmark::kMicrosecond);

/// A class renamed, until the matrix is in step: it may stand elsewhere.
void rename(benchmark::State& state) {
  const Browsed bench(state.range(0));
  bench.browser->Sort("name");
  const auto renamed = bench.browser->matrix().at(7).node;
  std::int64_t number = 0;
  for (auto _ : state) {
    renamed->name("Name" + std::to_string(++number % 2));
    benchmark::DoNotOptimize(bench.browser->matrix().size());
  }
}
BENCHMARK(rename)->Apply(sizes);

}  // namespace
}  // namespace brisel::benchmarks
