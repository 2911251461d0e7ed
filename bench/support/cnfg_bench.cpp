/// What reading every parameter of a section costs for each line, against inih and against a loop that only
/// reads the lines. inih's parser hands each line to a callback; its reader keeps the values, as ours returns
/// them.
#include "config/cnfg.h"
#include "tests/support/temp_folder.h"

#include <INIReader.h>
#include <benchmark/benchmark.h>
#include <ini.h>

#include <fstream>
#include <string>
#include <vector>

namespace {

/// A file with one section of `lines` parameters.
class SectionFile {
 public:
  explicit SectionFile(std::int64_t lines) {
    std::ofstream file(path());
    file << "[MenuBar]\n";
    for (std::int64_t i = 0; i < lines; ++i)
      file << "\titem" << i << " = {Label " << i << "}^C^C_line | help text\n";
  }

  std::string path() const { return mFolder / "a.ini"; }

 private:
  const TempFolder mFolder;
};

void countLines(benchmark::State& state) {
  const auto lines = static_cast<double>(state.range(0));
  state.counters["per_line"] =
      benchmark::Counter(lines, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void cnfgSection(benchmark::State& state) {
  const SectionFile file(state.range(0));
  std::string key;
  std::string value;
  for (auto _ : state) {
    Cnfg cnfg;
    cnfg.open(file.path());
    cnfg.findSection("MenuBar");
    std::int64_t count = 0;
    while (cnfg.readNextParameter(key, value) == Cnfg::kOk) ++count;
    if (count != state.range(0)) state.SkipWithError("parameters are missing");
  }
  countLines(state);
}

int countParameter(void* countP, const char*, const char*, const char* valueP) {
  benchmark::DoNotOptimize(valueP);
  ++*static_cast<std::int64_t*>(countP);
  return 1;
}

void inihSection(benchmark::State& state) {
  const SectionFile file(state.range(0));
  for (auto _ : state) {
    std::int64_t count = 0;
    ini_parse(file.path().c_str(), countParameter, &count);
    if (count != state.range(0)) state.SkipWithError("parameters are missing");
  }
  countLines(state);
}

/// The same as a C++ caller gets it: values kept as strings, each asked for by its name.
void inihReader(benchmark::State& state) {
  const SectionFile file(state.range(0));
  std::vector<std::string> keys;
  for (std::int64_t i = 0; i < state.range(0); ++i) keys.push_back("item" + std::to_string(i));
  for (auto _ : state) {
    const INIReader reader(file.path());
    for (const std::string& key : keys) benchmark::DoNotOptimize(reader.Get("MenuBar", key, ""));
  }
  countLines(state);
}

void getlineLoop(benchmark::State& state) {
  const SectionFile file(state.range(0));
  std::string line;
  for (auto _ : state) {
    std::ifstream stream(file.path());
    while (std::getline(stream, line)) benchmark::DoNotOptimize(line.data());
  }
  countLines(state);
}

BENCHMARK(cnfgSection)->Arg(10000)->Arg(100000);
BENCHMARK(inihSection)->Arg(10000)->Arg(100000);
BENCHMARK(inihReader)->Arg(10000)->Arg(100000);
BENCHMARK(getlineLoop)->Arg(10000)->Arg(100000);

}  // namespace
