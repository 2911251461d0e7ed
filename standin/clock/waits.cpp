/// Waits of the native clock: sleeps, alarms, and which thread runs next.
#include "clock_core.h"
#include "standin_ticks.h"

#include <pthread.h>

#include <algorithm>
#include <cassert>
#include <iterator>

namespace standin::clock {
namespace {

/// A key rather than a thread_local with a destructor: the key's destructors run last, so nothing of the
/// thread's own code follows them.
pthread_key_t endKey() {
  static const pthread_key_t key = [] {
    pthread_key_t made{};
    // The value is the run in which the thread became known. Runs count from 1, because the system calls no
    // destructor for a null value.
    pthread_key_create(&made, [](void* run) { Locked()->threadEnds(reinterpret_cast<std::uintptr_t>(run)); });
    return made;
  }();
  return key;
}

}  // namespace

/// Alarms before sleepers, so that a watch loop that falls due together with a reader's wait finds the reader
/// done; then the older thread first, which the system numbers lower.
bool WakesSooner::operator()(const Sleeper* a, const Sleeper* b) const {
  if (a->dueMs != b->dueMs) return a->dueMs < b->dueMs;
  if (a->isOnAlarm != b->isOnAlarm) return a->isOnAlarm;
  return a->thread < b->thread;
}

void Core::makeKnown() {
  const auto registeredIn = reinterpret_cast<std::uintptr_t>(pthread_getspecific(endKey()));
  // A thread that was known in an earlier run is new to this one: start() forgot it.
  if (registeredIn == run) return;
  pthread_setspecific(endKey(), reinterpret_cast<void*>(static_cast<std::uintptr_t>(run)));
  isWaiting[currentThread()] = false;
  ++running;
}

void Core::threadEnds(std::uint64_t registeredIn) {
  if (registeredIn != run) return;
  assert(running > 0 && "a known thread that ends does not wait");
  isWaiting.erase(currentThread());
  --running;
  // Its end makes room for the next, exactly as a wait does.
  releaseNextRung();
  quiet.notify_all();
}

void Core::release(Sleeper& sleeper) {
  sleepers.erase(&sleeper);
  // Counted as running from here on, not from when it gets the processor: else the main thread would find
  // everybody quiet too soon.
  if (kind == Kind::kReplay) {
    isWaiting[sleeper.thread] = false;
    ++running;
  }
  sleeper.isReleased = true;
  sleeper.wakeUp.notify_one();
}

/// One at a time: which of two rung threads runs first must not be left to the system.
void Core::releaseNextRung() {
  if (running > 0 || rung.empty()) return;
  Sleeper& next = *rung.front();
  rung.pop_front();
  release(next);
}

/// No waiting thread is counted as running again: it registers in the new run at its next wait.
void Core::releaseEveryone() {
  std::deque<Sleeper*> all(sleepers.begin(), sleepers.end());
  all.insert(all.end(), rung.begin(), rung.end());
  for (Sleeper* const sleeper : all) {
    sleeper->isReleased = true;
    sleeper->wakeUp.notify_one();
  }
  sleepers.clear();
  rung.clear();
  isWaiting.clear();
  running = 0;
}

bool Core::wait(Lock& lock, std::uint32_t ms, Bell* bellP) {
  const bool isOnMain = isReplayMain();
  if (kind == Kind::kReplay && !isOnMain) makeKnown();
  // A ring that came before the wait is used up without waiting, or it would be lost.
  if (bellP != nullptr && bellP->isRung) {
    bellP->isRung = false;
    return true;
  }
  if (isOnMain) return waitOnMain(lock, ms, bellP);
  assert((bellP == nullptr || bellP->sleeperP == nullptr) && "an alarm has one waiting thread at a time");
  Sleeper sleeper;
  // A wait of no time in replay lasts until time next advances: a loop of such waits would never let it.
  sleeper.dueMs = now() + (kind == Kind::kReplay ? std::max<std::uint32_t>(ms, 1) : ms);
  sleeper.isOnAlarm = bellP != nullptr;
  sleeper.thread = currentThread();
  if (bellP != nullptr) bellP->sleeperP = &sleeper;
  if (kind == Kind::kReplay)
    waitInReplay(lock, sleeper);
  else
    waitInReal(lock, sleeper);
  if (bellP != nullptr) bellP->sleeperP = nullptr;
  return sleeper.isRung;
}

/// The main thread never sleeps in a replay: nobody else could advance the time for it.
bool Core::waitOnMain(Lock& lock, std::uint32_t ms, Bell* bellP) {
  advance(lock, replayMs + ms, bellP == nullptr ? nullptr : &bellP->isRung);
  const bool isRung = bellP != nullptr && bellP->isRung;
  if (isRung) bellP->isRung = false;
  return isRung;
}

void Core::waitInReplay(Lock& lock, Sleeper& sleeper) {
  assert(running > 0 && "a thread that begins to wait was running");
  sleepers.insert(&sleeper);
  isWaiting[sleeper.thread] = true;
  --running;
  releaseNextRung();
  quiet.notify_all();
  sleeper.wakeUp.wait(lock, [&sleeper] { return sleeper.isReleased; });
}

void Core::waitInReal(Lock& lock, Sleeper& sleeper) {
  sleepers.insert(&sleeper);
  sleeper.wakeUp.wait_until(lock, realTime.at(sleeper.dueMs), [&sleeper] { return sleeper.isReleased; });
  // release() has erased it otherwise; the sleeper is on this stack and must not be found after the return.
  if (!sleeper.isReleased) sleepers.erase(&sleeper);
}

void Core::ring(Lock& lock, Bell& bell) {
  Sleeper* const sleeper = bell.sleeperP;
  // A thread that has been released but not yet woken is past this ring: its next wait takes it.
  if (sleeper == nullptr || sleeper->isReleased || sleeper->isRung) {
    bell.isRung = true;
    return;
  }
  sleeper->isRung = true;
  if (kind == Kind::kReal) {
    release(*sleeper);
    return;
  }
  // Out of the sleepers at once, so that the time cannot end the same wait again.
  sleepers.erase(sleeper);
  rung.push_back(sleeper);
  releaseNextRung();
  // Only the main thread waits here: a ringing thread that waited for the one it rang could wait for ever.
  if (isReplayMain()) awaitOthers(lock);
}

/// Reads the system's list of threads only when the known ones are quiet: the list costs far more.
bool Core::isSettled() const {
  if (!isQuiet()) return false;
  const std::set<ThreadId> threads = newThreads();
  return std::all_of(threads.begin(), threads.end(), [this](ThreadId thread) {
    const auto known = isWaiting.find(thread);
    return known != isWaiting.end() && known->second;
  });
}

std::set<ThreadId> Core::newThreads() const {
  const std::set<ThreadId> threads = processThreads();
  std::set<ThreadId> result;
  std::set_difference(threads.begin(), threads.end(), threadsAtStart.begin(), threadsAtStart.end(),
                      std::inserter(result, result.end()));
  // The clock's own thread never waits on the clock, so settle() would wait for it in vain.
  result.erase(runner.threadId());
  return result;
}

void sleep(std::uint32_t ms) {
  Locked core;
  core->wait(core.lock(), ms, nullptr);
}

bool settle() {
  Locked core;
  if (core->kind == Kind::kReal) return true;
  // A thread that has not waited yet sends no signal, so this polls the system's list.
  constexpr std::chrono::microseconds kLookAgain(200);
  const RealTime::Moment end = std::chrono::steady_clock::now() + core->patience;
  while (!core->isSettled()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    core->quiet.wait_for(core.lock(), kLookAgain);
  }
  return true;
}

std::uint64_t stalls() {
  return Locked()->stalls;
}

std::size_t otherThreads() {
  return Locked()->newThreads().size();
}

struct Alarm::State {
  Bell bell;
};

Alarm::Alarm() : mStateP(std::make_unique<State>()) {}
Alarm::~Alarm() = default;

bool Alarm::wait(std::uint32_t ms) {
  Locked core;
  return core->wait(core.lock(), ms, &mStateP->bell);
}

void Alarm::ring() {
  Locked core;
  core->ring(core.lock(), mStateP->bell);
}

}  // namespace standin::clock
