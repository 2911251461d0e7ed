// The cost of reading a menu file, which happens on every idle tick until the file names a mode.
#include "common_sources/menu_table.h"
#include "tests/support/temp_folder.h"

#include <benchmark/benchmark.h>
#include <windows.h>

#include <fstream>

HINSTANCE _hdllInstance = nullptr;

namespace {

void ReadMenuFile(benchmark::State& state) {
  const TempFolder folder;
  {
    std::ofstream file(folder / "autocad.mnu");
    file << "[MenuBar]\n";
    for (int i = 0; i < state.range(0); ++i)
      file << "\titem" << i << " = {Label " << i << "}^C^C_line;\\\\;|Draws a line from point to point\n";
  }
  std::size_t entries = 0;
  for (auto _ : state) entries = readMenuFile(folder.path("autocad.mnu"))->macros.size();
  state.counters["entries"] = static_cast<double>(entries);
}
BENCHMARK(ReadMenuFile)->Arg(500)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
