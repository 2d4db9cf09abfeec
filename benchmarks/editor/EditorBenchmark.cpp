#include <memory>
#include <string>

#include <benchmark/benchmark.h>

#include "editor/Workbench.h"

/// The editor on whole models, without a window. The argument is the number of classes.
namespace brisel::benchmarks {
namespace {

namespace types = platform::types;

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

/// A name typed in place, from the text box's Return to the redrawn box; every class is a data type
/// before.
void RenameClass(benchmark::State& state) {
  const Workbench bench(state.range(0));
  bench.editor->Populate();
  bench.editor->SynchronizeDataTypes();
  const auto diagram = bench.editor->diagram();
  const auto box = platform::as<platform::DiagramNode>(diagram->getAllNodes()->Item(7));
  const std::int64_t before = countOf(bench.model, types::kDataType);
  std::int64_t number = 0;
  for (auto _ : state) {
    diagram->NodeRenaming(box->key());
    bench.editor->ClassName()->SetText("Renamed" + std::to_string(++number % 2));
    bench.editor->ClassName()->KeyPress("Return", "");
  }
  if (countOf(bench.model, types::kDataType) > before + 2) state.SkipWithError("too many types");
  if (!box->text().starts_with("Renamed")) state.SkipWithError("the class was not renamed");
}
BENCHMARK(RenameClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// A class made by command beside all others, with a relationship, and deleted again: two
/// benchmarks, of which each times one half.
void CreateOrDelete(benchmark::State& state, bool timesCreation) {
  const Workbench bench(state.range(0));
  bench.editor->Populate();
  bench.editor->AddPositions();
  bench.editor->CreateClass("warm", "Warm", "", "", "", "");
  bench.editor->DeleteClass("warm");
  for (auto _ : state) {
    if (!timesCreation) state.PauseTiming();
    bench.editor->CreateClass("made", "Made", "", "", "", "public");
    bench.editor->CreateAssociation("line", "", "", "made", "made");
    if (timesCreation) {
      state.PauseTiming();
    } else {
      state.ResumeTiming();
    }
    bench.editor->DeleteClass("made");
    if (timesCreation) state.ResumeTiming();
  }
  if (countOf(bench.model, types::kClass) != state.range(0)) state.SkipWithError("classes stayed");
}
void CreateClass(benchmark::State& state) { CreateOrDelete(state, true); }
void DeleteClass(benchmark::State& state) { CreateOrDelete(state, false); }
BENCHMARK(CreateClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
BENCHMARK(DeleteClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

/// One class of that many attributes and as many operations, drawn with all of its rows.
struct LargeClass : Workbench {
  explicit LargeClass(std::int64_t members) : Workbench(10) {
    const auto repository = editor->CLSRepository();
    platform::Ref<platform::Link> link;
    const auto type = repository->MakeDataType("Large", "", "");
    const auto owner = repository->MakeClass("Large", "large", "", "", "", "public");
    for (std::int64_t i = 0; i < members; ++i) {
      const std::string number = std::to_string(i);
      repository->AddAttributeS("large", "attribute" + number, type->identifier(), link);
      repository->AddOperationS("large", "operation" + number, type->identifier(), link);
    }
    editor->Populate();
    editor->Compartments("ViewAttributes");
    editor->Compartments("ViewOperations");
  }
};

/// The class pane from the command to the filled lists; what it shows is another class before.
void OpenClassPane(benchmark::State& state) {
  const LargeClass bench(state.range(0));
  const auto pane = bench.editor->CLSClassControl1();
  for (auto _ : state) {
    bench.editor->EditClass("large");
    state.PauseTiming();
    if (static_cast<std::int64_t>(pane->Operations()->rowCount()) != state.range(0)) {
      return state.SkipWithError("not every member is in the list");
    }
    pane->Close();
    state.ResumeTiming();
  }
}
BENCHMARK(OpenClassPane)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

/// An attribute added in the pane, from the tool's click to the box's row, and deleted again.
void AddMember(benchmark::State& state) {
  const LargeClass bench(state.range(0));
  bench.editor->EditClass("large");
  const auto pane = bench.editor->CLSClassControl1();
  pane->Attributes()->Select(1);  // its type is that of the new one
  pane->AttributeName()->SetText("added");
  for (auto _ : state) {
    pane->ToolAttr()->Click("miAttrAdd");
    state.PauseTiming();
    if (static_cast<std::int64_t>(pane->Attributes()->rowCount()) != state.range(0) + 1) {
      return state.SkipWithError("the member is not in the list");
    }
    pane->ToolAttr()->Click("miAttrDelete");
    state.ResumeTiming();
  }
}
BENCHMARK(AddMember)->Arg(200)->Arg(2000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::benchmarks
