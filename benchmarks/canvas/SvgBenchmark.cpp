#include <benchmark/benchmark.h>

#include "canvas/SvgExport.h"
#include "support/GeneratedDiagram.h"

namespace brisel::bench {
namespace {

void writeSvg(benchmark::State& state) {
  const GeneratedDiagram diagram(static_cast<int>(state.range(0)));
  std::size_t bytes = 0;
  for (auto _ : state) bytes = canvas::toSvg(diagram.control->scene()).size();
  state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(writeSvg)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace brisel::bench
