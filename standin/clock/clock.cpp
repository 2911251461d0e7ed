/// Runs of the native clock, its time and its timers.
#include "clock_core.h"
#include "standin_ticks.h"

#include <unistd.h>

#include <algorithm>
#include <cassert>
#include <ctime>
#include <thread>
#include <utility>

namespace standin::clock {
namespace {

/// A sanitizer starts a thread of its own with the program's first one; it must exist before threads are
/// counted. The first one itself must be gone by then: the system lists it for a moment after the join.
void startRuntimeThreads() {
  static const bool isDone = [] {
    ThreadId first = 0;
    std::thread([&first] { first = currentThread(); }).join();
    while (processThreads().count(first) != 0) std::this_thread::yield();
    return true;
  }();
  static_cast<void>(isDone);
}

}  // namespace

Core& Core::instance() {
  // Kept reachable and never deleted: a detached thread may still wait or ring after main has returned.
  static auto* const core = new Core;
  return *core;
}

/// Until the first start() the main thread is the process's first one.
Core::Core() : mainThread(static_cast<ThreadId>(getpid())) {}

std::optional<std::int64_t> Core::nextDue() const {
  std::optional<std::int64_t> due = timers.next();
  const auto consider = [&due](std::int64_t timeMs) { due = std::min(due.value_or(timeMs), timeMs); };
  if (!calls.empty()) consider(calls.begin()->first);
  if (const std::optional<std::int64_t> call = runner.next()) consider(*call);
  if (!sleepers.empty()) consider((*sleepers.begin())->dueMs);
  return due;
}

void start(Kind kind, std::uint32_t frameMs, double speed) {
  assert(speed > 0 && "time runs forwards");
  stop();
  startRuntimeThreads();
  const Locked core;
  // First of all: threads that wait from an earlier run must not be counted as waiting in this one.
  core->releaseEveryone();
  ++core->run;
  core->kind = kind;
  core->frameMs = frameMs;
  core->mainThread = currentThread();
  core->realTime = {std::chrono::steady_clock::now(), speed};
  core->replayMs = 0;
  core->tickBase = 0;
  core->dateMs = kStandardDateMs;
  core->isSettlingNewThreads = false;
  core->pacer = {};
  // The first read of the tick count is 0, not 1.
  core->isMoved = true;
  core->patience = std::chrono::milliseconds(10000);
  core->stalls = 0;
  // Last: everything that runs by now belongs to the test or the run-time library, not to the run.
  core->threadsAtStart = processThreads();
}

/// The runner ends before the lock is taken: the call that it runs may need it.
void stop() {
  Core::instance().runner.end();
  const Locked core;
  core->calls.clear();
  core->timers.clear();
}

/// Without the lock: the host's loop reads the time many times at each step of a replay.
std::int64_t nowMs() {
  const Core& core = Core::instance();
  return core.kind == Kind::kReplay ? core.replayMs.load() : Locked()->now();
}

Kind kind() {
  return Core::instance().kind;
}

bool isMainThread() {
  return Core::instance().isMain();
}

void setTickBase(std::uint32_t ticks) {
  Locked()->tickBase = ticks;
}

/// Without the lock, because utcMs() reads the date without it too.
void setDate(std::int64_t utcMs) {
  Core::instance().dateMs = utcMs;
}

void setSettlingNewThreads(bool isSettling) {
  Locked()->isSettlingNewThreads = isSettling;
}

/// Without the lock: every log line reads the time.
std::int64_t utcMs() {
  const Core& core = Core::instance();
  if (core.kind == Kind::kReplay) return core.dateMs + core.replayMs;
  // The coarse clock advances with the system's tick, as on Windows, and costs next to nothing to read.
  timespec now{};
  clock_gettime(CLOCK_REALTIME_COARSE, &now);
  return std::int64_t{now.tv_sec} * 1000 + now.tv_nsec / 1000000;
}

void setPatience(std::uint32_t ms) {
  Locked()->patience = std::chrono::milliseconds(ms);
}

std::uint32_t readTicks() {
  Locked core;
  if (core->isReplayMain()) {
    // A loop that polls the count without drawing would otherwise never end.
    if (!core->isMoved) core->advance(core.lock(), core->replayMs + 1);
    core->isMoved = false;
  }
  return core->ticks();
}

void advanceTo(std::int64_t timeMs) {
  Locked core;
  if (core->kind == Kind::kReplay) {
    if (core->isMain()) core->advance(core.lock(), timeMs);
    return;
  }
  // The lock must be free during the sleep: other threads wait and ring meanwhile.
  const RealTime::Moment until = core->realTime.at(timeMs);
  core.lock().unlock();
  std::this_thread::sleep_until(until);
}

void setPacer(std::function<void(std::int64_t)> pacer) {
  Locked()->pacer = std::move(pacer);
}

/// The time is read and the clock advanced in two steps: an advance takes the lock itself. Only the main
/// thread moves the clock, so nothing comes between.
void drawn() {
  const std::int64_t until = [] {
    const Locked core;
    return core->now() + core->frameMs;
  }();
  advanceTo(until);
}

void schedule(std::int64_t timeMs, std::function<void()> call) {
  {
    const Locked core;
    if (core->kind == Kind::kReplay) {
      core->calls.emplace(timeMs, std::move(call));
      return;
    }
  }
  Core::instance().runner.schedule(timeMs, std::move(call));
}

std::optional<std::int64_t> nextDue() {
  return Locked()->nextDue();
}

/// On Windows a timer without a window belongs to the thread that sets it, and only the main thread has a
/// message loop here.
std::uintptr_t setTimer(std::uintptr_t wanted, std::uint32_t periodMs, TimerProc proc) {
  const Locked core;
  if (!core->isMain()) return 0;
  return core->timers.set(wanted, core->now(), periodMs, std::move(proc));
}

bool killTimer(std::uintptr_t id) {
  const Locked core;
  return core->isMain() && core->timers.kill(id);
}

std::optional<std::int64_t> nextTimer() {
  return Locked()->timers.next();
}

std::size_t timerCount() {
  return Locked()->timers.count();
}

/// The procedure runs without the lock: it sets and kills timers itself.
bool runDueTimer() {
  Locked core;
  const std::optional<TimerTable::Due> due = core->timers.takeDue(core->now());
  if (!due) return false;
  // The count is read here rather than in the procedure: readTicks() would move a replay by 1 ms.
  const std::uint32_t ticks = core->ticks();
  core.lock().unlock();
  due->proc(due->id, ticks);
  return true;
}

}  // namespace standin::clock
