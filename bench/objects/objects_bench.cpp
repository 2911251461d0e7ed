// The module's own share of moving a selection, for each of its entities: host calls do nothing.
#include "bench/null_core.h"
#include "bench/objects/null_selection.h"
#include "tests/support/allocations.h"

#include <benchmark/benchmark.h>

namespace {

void report(benchmark::State& state, std::uint64_t allocationsBefore) {
  state.counters["allocations"] = static_cast<double>(tests::allocations() - allocationsBefore);
  state.counters["per_entity"] =
      benchmark::Counter(static_cast<double>(state.iterations() * state.range(0)),
                         benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void MoveSelectionInSpace(benchmark::State& state) {
  NullCore core;
  selectNullEntities(static_cast<int>(state.range(0)));
  const AcGeVector3d x(1, 0, 0), y(0, 1, 0), z(0, 0, 1);
  AutoCadProxy& proxy = core.proxy();
  proxy.transformSelection3d(1, 0, 0, 0, 0, 0, &x, &y, &z, false,
                             false);  // locks the document, once a movement
  const std::uint64_t before = tests::allocations();
  for (auto _ : state)
    benchmark::DoNotOptimize(proxy.transformSelection3d(10, 20, 30, 40, 50, 60, &x, &y, &z, false, false));
  report(state, before);
  proxy.handleCapIsReleased(k3DMode);
}
BENCHMARK(MoveSelectionInSpace)->Arg(1000)->Arg(10000)->Arg(100000);

void MoveSelectionOnTheSheet(benchmark::State& state) {
  NullCore core;
  selectNullEntities(static_cast<int>(state.range(0)));
  AutoCadProxy& proxy = core.proxy();
  proxy.transformSelection2d(1, 0);  // locks the document, once a movement
  const std::uint64_t before = tests::allocations();
  for (auto _ : state) benchmark::DoNotOptimize(proxy.transformSelection2d(10, 20));
  report(state, before);
}
BENCHMARK(MoveSelectionOnTheSheet)->Arg(1000)->Arg(10000)->Arg(100000);

}  // namespace

BENCHMARK_MAIN();
