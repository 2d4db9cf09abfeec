#include <filesystem>
#include <map>
#include <string>

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include "interchange/DimReader.h"
#include "interchange/DimWriter.h"
#include "platform/ComponentRegistry.h"
#include "platform/Shell.h"
#include "store/components.h"
#include "support/GeneratedModel.h"

/// Reading and writing DIM files, beside what parsing the same bytes costs alone. The argument is
/// the number of classes.
namespace brisel::benchmarks {
namespace {

struct Sample {
  GeneratedModel model;
  simdjson::padded_string text;
};

const Sample& sampleOf(benchmark::State& state) {
  static std::map<std::int64_t, Sample> samples;
  auto& sample = samples[state.range(0)];
  if (!sample.model.repository) {
    sample.model =
        generateModel({.classes = static_cast<int>(state.range(0)), .hasGeometry = true});
    sample.text = interchange::DimWriter::text(*sample.model.repository);
  }
  return sample;
}

void countBytes(benchmark::State& state, const Sample& sample) {
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(sample.text.size()));
  state.counters["MB"] = static_cast<double>(sample.text.size()) / 1e6;
}

/// As for a file that is read once: with a parser that has no memory yet.
void parseAlone(benchmark::State& state) {
  const Sample& sample = sampleOf(state);
  for (auto _ : state) {
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    if (parser.parse(sample.text).get(root)) return state.SkipWithError("not JSON");
    benchmark::DoNotOptimize(root);
  }
  countBytes(state, sample);
}

void parseAgain(benchmark::State& state) {
  const Sample& sample = sampleOf(state);
  simdjson::dom::parser parser;
  for (auto _ : state) {
    simdjson::dom::element root;
    if (parser.parse(sample.text).get(root)) return state.SkipWithError("not JSON");
    benchmark::DoNotOptimize(root);
  }
  countBytes(state, sample);
}

void readIntoRepository(benchmark::State& state) {
  const Sample& sample = sampleOf(state);
  platform::ComponentRegistry registry(nullptr);
  store::registerComponents(registry);
  for (auto _ : state) {
    auto repository = interchange::DimReader(registry).readText("sample.dim", sample.text);
    benchmark::DoNotOptimize(repository.get());
    state.PauseTiming();  // what becomes of the model is not part of reading it
    const bool same = repository->changeCount() > 0;
    repository = nullptr;
    if (!same) return state.SkipWithError("nothing was read");
    state.ResumeTiming();
  }
  countBytes(state, sample);
}

void writeToMemory(benchmark::State& state) {
  const Sample& sample = sampleOf(state);
  std::size_t written = 0;
  for (auto _ : state) {
    written = 0;
    interchange::DimWriter::write([&](std::string_view bytes) { written += bytes.size(); },
                                  *sample.model.repository);
  }
  if (written != sample.text.size()) state.SkipWithError("not what was written before");
  countBytes(state, sample);
}

void writeToDisk(benchmark::State& state) {
  const Sample& sample = sampleOf(state);
  const auto file = std::filesystem::temp_directory_path() / "brisel-benchmark.dim";
  for (auto _ : state) interchange::DimWriter::write(file.string(), *sample.model.repository);
  if (std::filesystem::file_size(file) != sample.text.size()) state.SkipWithError("incomplete");
  std::filesystem::remove(file);
  countBytes(state, sample);
}

BENCHMARK(parseAlone)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(parseAgain)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(readIntoRepository)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeToMemory)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(writeToDisk)->Arg(1000)->Arg(10'000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace brisel::benchmarks
