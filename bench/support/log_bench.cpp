/// What a line of the log costs, against a bare write of the same bytes, the same under a lock with the time
/// read, and spdlog.
#include "LM_Daemon/src/logging.h"
#include "tests/support/temp_folder.h"
#include "util/mutex.h"
#include "util/util.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <unistd.h>

#include <fstream>
#include <string>

namespace {

constexpr const char* kText = "Move x-Direction, value: ";

LogPars parsFor(const TempFolder& folder) {
  LogPars pars;
  pars.mLogFile = folder.path("a.log");
  pars.mMaxSize = 2000000;
  return pars;
}

void logMove(int value) {
  LM_LOG(kInfo, "AutoCadProxy", "AutoCadProxy::moveXYZ") << kText << value;
}

/// The bytes of one line as the log writes it.
std::string oneLine() {
  const TempFolder folder;
  Logging log;
  log.init(parsFor(folder));
  logMove(123456);
  std::ifstream file(folder / "a.log");
  std::string line;
  for (std::string next; std::getline(file, next);)
    if (next.find(kText) != std::string::npos) line = next + "\n";
  return line;
}

void bareWrite(benchmark::State& state) {
  const TempFolder folder;
  const std::string line = oneLine();
  const int file = open((folder / "a.log").c_str(), O_CREAT | O_WRONLY | O_APPEND, 0666);
  for (auto _ : state)
    if (write(file, line.data(), line.size()) < 0) state.SkipWithError("write");
  close(file);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(line.size()));
}

/// The least that a line costs beyond its write: the log's lock and the time are part of every line.
void lockedAndTimedWrite(benchmark::State& state) {
  const TempFolder folder;
  const std::string line = oneLine();
  const int file = open((folder / "a.log").c_str(), O_CREAT | O_WRONLY | O_APPEND, 0666);
  Mutex mutex("bench");
  for (auto _ : state) {
    mutex.lock();
    benchmark::DoNotOptimize(Util::utcMsOfDay());
    if (write(file, line.data(), line.size()) < 0) state.SkipWithError("write");
    mutex.unlock();
  }
  close(file);
}

void logLine(benchmark::State& state) {
  const TempFolder folder;
  Logging log;
  log.init(parsFor(folder));
  int value = 100000;
  for (auto _ : state) logMove(value++);
}

void spdlogLine(benchmark::State& state) {
  const TempFolder folder;
  spdlog::logger logger("a", std::make_shared<spdlog::sinks::basic_file_sink_mt>(folder / "a.log"));
  logger.flush_on(spdlog::level::trace);
  logger.set_pattern("%H:%M:%S.%e|%L|%t|%v");
  int value = 100000;
  for (auto _ : state)
    logger.info("AutoCadProxy::moveXYZ              | Move x-Direction in the view, value: {}", value++);
}

void logLevelOff(benchmark::State& state) {
  const TempFolder folder;
  Logging log;
  log.init(parsFor(folder));
  int value = 0;
  for (auto _ : state) {
    LM_LOG(kDebug, "AutoCadProxy", "AutoCadProxy::moveXYZ") << kText << value++;
    benchmark::ClobberMemory();
  }
}

void spdlogLevelOff(benchmark::State& state) {
  const TempFolder folder;
  spdlog::logger logger("a", std::make_shared<spdlog::sinks::basic_file_sink_mt>(folder / "a.log"));
  int value = 0;
  for (auto _ : state) {
    logger.debug("Move x-Direction, value: {}", value++);
    benchmark::ClobberMemory();
  }
}

BENCHMARK(bareWrite);
BENCHMARK(lockedAndTimedWrite);
BENCHMARK(logLine);
BENCHMARK(spdlogLine);
BENCHMARK(logLevelOff);
BENCHMARK(spdlogLevelOff);

}  // namespace
