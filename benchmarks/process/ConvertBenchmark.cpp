#include <cstdlib>
#include <filesystem>
#include <string>

#include <benchmark/benchmark.h>

#include "interchange/DimWriter.h"
#include "support/GeneratedModel.h"

/// The program as a whole process, from its start to its end: a DIM file with geometry turned into
/// a picture. The argument is the number of classes.
namespace brisel::benchmarks {
namespace {

/// Files of this run, in a folder of their own that goes with it.
struct Files {
  explicit Files(std::int64_t classes)
      : folder(std::filesystem::temp_directory_path() / "brisel-process-benchmark") {
    std::filesystem::create_directories(folder);
    const auto made = generateModel({.classes = static_cast<int>(classes), .hasGeometry = true});
    interchange::DimWriter::write(model(), *made.repository);
  }
  ~Files() { std::filesystem::remove_all(folder); }
  [[nodiscard]] std::string model() const { return (folder / "model.dim").string(); }
  [[nodiscard]] std::string picture() const { return (folder / "picture.svg").string(); }

  std::filesystem::path folder;
};

void ConvertToSvg(benchmark::State& state) {
  const Files files(state.range(0));
  const std::string command =
      "'" BRISEL_PROGRAM "' convert '" + files.model() + "' '" + files.picture() + "'";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) return state.SkipWithError("brisel convert failed");
  }
  state.counters["MB read"] = static_cast<double>(std::filesystem::file_size(files.model())) / 1e6;
  state.counters["MB written"] =
      static_cast<double>(std::filesystem::file_size(files.picture())) / 1e6;
}
BENCHMARK(ConvertToSvg)
    ->Arg(1000)
    ->Arg(3000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace brisel::benchmarks
