// The cost of reading a menu file, which happens on every idle tick until the file names a mode.
#include "common_sources/menu_table.h"

#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <windows.h>

#include <filesystem>
#include <fstream>

HINSTANCE _hdllInstance = nullptr;

namespace {

void ReadMenuFile(benchmark::State& state) {
  std::string folder = (std::filesystem::temp_directory_path() / "lm_menu_bench_XXXXXX").string();
  mkdtemp(folder.data());
  {
    std::ofstream file(folder + "/autocad.mnu");
    file << "[MenuBar]\n";
    for (int i = 0; i < state.range(0); ++i)
      file << "\titem" << i << " = {Label " << i << "}^C^C_line;\\\\;|Draws a line from point to point\n";
  }
  std::size_t entries = 0;
  for (auto _ : state) entries = readMenuFile(folder + "\\autocad.mnu")->macros.size();
  state.counters["entries"] = static_cast<double>(entries);
  std::filesystem::remove_all(folder);
}
BENCHMARK(ReadMenuFile)->Arg(500)->Arg(5000)->Arg(20000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
