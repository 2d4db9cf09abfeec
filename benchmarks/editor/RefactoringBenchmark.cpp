#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "editor/Workbench.h"
#include "platform/ValueArray.h"

/// The refactorings of a class with 20 members and 10 relationships among so many others, from the
/// command to the redrawn boxes and lines.
namespace brisel::benchmarks {
namespace {

using platform::Ref;
using platform::Value;
using platform::ValueArray;

class RefactoringBench : public Workbench {
 public:
  explicit RefactoringBench(std::int64_t classes) : Workbench(classes) {
    editor->Populate();
    editor->Compartments("ViewAttributes");
    editor->Compartments("ViewOperations");
    editor->AddPositions();
    editor->SynchronizeDataTypes();
    type = model.model->MakeDataType("Measured", "", "")->identifier();
  }

  /// 12 attributes, 8 operations with a parameter, 10 relationships to other classes.
  void addClass(const std::string& key, int members = 20, int relationships = 10) {
    editor->CreateClass(key, key, "", "", "", "public");
    Ref<platform::Link> link;
    for (int i = 0; i < members; ++i) {
      const std::string name = key + "m" + std::to_string(i);
      if (i % 5 < 3) {
        model.model->AddAttributeS(key, name, type, link);
      } else {
        const auto operation = model.model->AddOperationS(key, name, type, link);
        model.model->AddParameterS(operation->identifier(), "p", type, link);
      }
    }
    const auto others = editor->diagram()->getAllNodes();
    for (int i = 0; i < relationships; ++i) {
      const auto other = platform::as<platform::DiagramNode>(others->Item(i * 7 % others->Count() + 1));
      const std::string line = key + "r" + std::to_string(i);
      editor->CreateAggregation(line, "", "", key, other->key(), true);
    }
    editor->GetClassFromNode(key)->Populate();
    editor->diagram()->getNode(key)->fitToText(true);
    editor->SynchronizeDataTypes();
  }
  void answer(const std::vector<std::vector<Value>>& steps) {
    std::vector<Value> values;
    for (const auto& step : steps) values.emplace_back(platform::make<ValueArray>(step));
    registry.shell().call("AnswerForm", {platform::make<ValueArray>(std::move(values))});
  }
  /// Takes away what was added behind the first so many classes.
  void removeBeyond(std::int64_t classes) {
    const auto all = model.repository->MetaNodes("Class")->extension();
    while (all->Count() > classes) {
      editor->DeleteClass(platform::as<platform::Node>(all->Item(all->Count()))->identifier());
    }
  }

  std::string type;
};

template <class Prepare, class Command>
void measure(benchmark::State& state, Prepare&& prepare, Command&& command, std::int64_t grows) {
  RefactoringBench bench(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    bench.addClass("measured");
    prepare(bench);
    const std::int64_t before = countOf(bench.model, platform::types::kClass);
    state.ResumeTiming();
    command(*bench.editor);
    state.PauseTiming();
    if (countOf(bench.model, platform::types::kClass) != before + grows) {
      return state.SkipWithError("the refactoring did not take place");
    }
    bench.removeBeyond(state.range(0));
    state.ResumeTiming();
  }
}

constexpr auto kNothing = [](RefactoringBench&) {};

void MorphRelationship(benchmark::State& state) {
  measure(
      state, kNothing,
      [](editor::CLSEditor& editor) { editor.MorphingAssoc("measuredr3", "ToGeneralization"); }, 0);
}
void MorphToAttribute(benchmark::State& state) {
  measure(
      state, kNothing,
      [](editor::CLSEditor& editor) { editor.MorphingAssoc("measuredr3", "ToAttribute"); }, 0);
}
void SplitClass(benchmark::State& state) {
  measure(
      state,
      [](RefactoringBench& bench) {
        bench.answer({{"ClassName", "SetText", "Super"},
                      {"AllAttributes", "Click"},
                      {"AllOperations", "Click"},
                      {"Ok", "Click"}});
      },
      [](editor::CLSEditor& editor) { editor.SplitClass("measured", true); }, 1);
}
void ExtractAttribute(benchmark::State& state) {
  measure(
      state,
      [](RefactoringBench& bench) { bench.answer({{"Attributes", "Select", 5}, {"Ok", "Click"}}); },
      [](editor::CLSEditor& editor) { editor.ExtractAttribute("measured"); }, 1);
}
void MergeTwoClasses(benchmark::State& state) {
  measure(
      state,
      [](RefactoringBench& bench) {
        bench.addClass("other");
        for (const char* key : {"measured", "other"}) {
          bench.editor->diagram()->call("selNode", {key});
        }
      },
      [](editor::CLSEditor& editor) { editor.ActiveBar21()->Click("miMorphMerge"); }, 1);
}
BENCHMARK(MorphRelationship)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(MorphToAttribute)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(SplitClass)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(ExtractAttribute)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(MergeTwoClasses)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

/// So many classes of 20 members and 10 relationships each, among 10,000 others, merged into one.
void MergeManyClasses(benchmark::State& state) {
  constexpr std::int64_t kOthers = 10000;
  RefactoringBench bench(kOthers);
  for (auto _ : state) {
    state.PauseTiming();
    for (std::int64_t i = 0; i < state.range(0); ++i) {
      const std::string key = "merged" + std::to_string(i);
      bench.addClass(key);
      bench.editor->diagram()->call("selNode", {key});
    }
    state.ResumeTiming();
    bench.editor->ActiveBar21()->Click("miMorphMerge");
    state.PauseTiming();
    const auto merged = countOf(bench.model, platform::types::kClass) - kOthers;
    if (merged != state.range(0) + 1) return state.SkipWithError("the merge did not take place");
    bench.removeBeyond(kOthers);
    state.ResumeTiming();
  }
}
BENCHMARK(MergeManyClasses)->Arg(20)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::benchmarks
