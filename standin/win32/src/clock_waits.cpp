#include "clock_core.h"
#include "process_tasks.h"

#include <pthread.h>

#include <algorithm>
#include <cstdio>
#include <iterator>

namespace standin::clock {
namespace {

/// A key rather than a thread_local with a destructor: the key's destructors run last, so nothing of the
/// thread's own code follows them.
pthread_key_t endKey() {
  static const pthread_key_t key = [] {
    pthread_key_t made{};
    pthread_key_create(
        &made, [](void* run) { Clock::instance().threadEnds(reinterpret_cast<std::uintptr_t>(run)); });
    return made;
  }();
  return key;
}

}  // namespace

bool Clock::WakesSooner::operator()(const Sleeper* a, const Sleeper* b) const {
  if (a->dueMs != b->dueMs) return a->dueMs < b->dueMs;
  if (a->isOnAlarm != b->isOnAlarm) return a->isOnAlarm;
  return a->thread < b->thread;
}

void Clock::makeKnown() {
  const auto registeredIn = reinterpret_cast<std::uintptr_t>(pthread_getspecific(endKey()));
  if (registeredIn == mRun) return;
  pthread_setspecific(endKey(), reinterpret_cast<void*>(static_cast<std::uintptr_t>(mRun)));
  mIsWaiting[currentTask()] = false;
  ++mRunning;
}

void Clock::threadEnds(std::uint64_t registeredIn) {
  const Lock lock(mMutex);
  if (registeredIn != mRun) return;
  mIsWaiting.erase(currentTask());
  --mRunning;
  releaseNextRung();
  mQuiet.notify_all();
}

void Clock::release(Sleeper& sleeper) {
  mSleepers.erase(&sleeper);
  if (mKind == Kind::kReplay) {
    mIsWaiting[sleeper.thread] = false;
    ++mRunning;
  }
  sleeper.isReleased = true;
  sleeper.wakeUp.notify_one();
}

/// One at a time: which of two rung threads runs first must not be left to the system.
void Clock::releaseNextRung() {
  if (mRunning > 0 || mRung.empty()) return;
  Sleeper& next = *mRung.front();
  mRung.pop_front();
  release(next);
}

void Clock::releaseEveryone() {
  std::deque<Sleeper*> all(mSleepers.begin(), mSleepers.end());
  all.insert(all.end(), mRung.begin(), mRung.end());
  for (Sleeper* const sleeper : all) {
    sleeper->isReleased = true;
    sleeper->wakeUp.notify_one();
  }
  mSleepers.clear();
  mRung.clear();
  mIsWaiting.clear();
  mRunning = 0;
}

bool Clock::isQuiet() const {
  return mRunning == 0 && mRung.empty();
}

void Clock::awaitOthers(Lock& lock) {
  if (mQuiet.wait_for(lock, mPatience, [this] { return isQuiet(); })) return;
  ++mStalls;
  std::fprintf(stderr, "clock: at %lld ms a woken thread neither waits again nor ends\n",
               static_cast<long long>(mReplayMs));
}

bool Clock::wait(std::uint32_t ms, Bell* bellP) {
  Lock lock(mMutex);
  const bool isOnMain = isReplayMain();
  if (mKind == Kind::kReplay && !isOnMain) makeKnown();
  if (bellP != nullptr && bellP->isRung) {
    bellP->isRung = false;
    return true;
  }
  if (isOnMain) return waitOnMain(lock, ms, bellP);
  Sleeper sleeper;
  sleeper.dueMs = now() + (mKind == Kind::kReplay ? std::max<std::uint32_t>(ms, 1) : ms);
  sleeper.isOnAlarm = bellP != nullptr;
  sleeper.thread = currentTask();
  if (bellP != nullptr) bellP->sleeperP = &sleeper;
  if (mKind == Kind::kReplay)
    waitInReplay(lock, sleeper);
  else
    waitInReal(lock, sleeper);
  if (bellP != nullptr) bellP->sleeperP = nullptr;
  return sleeper.isRung;
}

bool Clock::waitOnMain(Lock& lock, std::uint32_t ms, Bell* bellP) {
  advance(lock, mReplayMs + ms, bellP == nullptr ? nullptr : &bellP->isRung);
  const bool isRung = bellP != nullptr && bellP->isRung;
  if (isRung) bellP->isRung = false;
  return isRung;
}

void Clock::waitInReplay(Lock& lock, Sleeper& sleeper) {
  mSleepers.insert(&sleeper);
  mIsWaiting[sleeper.thread] = true;
  --mRunning;
  releaseNextRung();
  mQuiet.notify_all();
  sleeper.wakeUp.wait(lock, [&sleeper] { return sleeper.isReleased; });
}

void Clock::waitInReal(Lock& lock, Sleeper& sleeper) {
  mSleepers.insert(&sleeper);
  sleeper.wakeUp.wait_until(lock, realTimeOf(sleeper.dueMs), [&sleeper] { return sleeper.isReleased; });
  if (!sleeper.isReleased) mSleepers.erase(&sleeper);
}

void Clock::ring(Bell& bell) {
  Lock lock(mMutex);
  Sleeper* const sleeper = bell.sleeperP;
  if (sleeper == nullptr || sleeper->isReleased || sleeper->isRung) {
    bell.isRung = true;
    return;
  }
  sleeper->isRung = true;
  if (mKind == Kind::kReal) {
    release(*sleeper);
    return;
  }
  mSleepers.erase(sleeper);
  mRung.push_back(sleeper);
  releaseNextRung();
  if (isReplayMain()) awaitOthers(lock);
}

bool Clock::settle() {
  Lock lock(mMutex);
  if (mKind == Kind::kReal) return true;
  constexpr std::chrono::microseconds kLookAgain(200);
  const RealTime end = std::chrono::steady_clock::now() + mPatience;
  while (!isSettled()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    mQuiet.wait_for(lock, kLookAgain);
  }
  return true;
}

/// The tasks are asked only when the known threads are quiet: it is the dearer question.
bool Clock::isSettled() const {
  if (!isQuiet()) return false;
  const std::set<pid_t> tasks = newTasks();
  return std::all_of(tasks.begin(), tasks.end(), [this](pid_t task) {
    const auto known = mIsWaiting.find(task);
    return known != mIsWaiting.end() && known->second;
  });
}

std::set<pid_t> Clock::newTasks() const {
  const std::set<pid_t> tasks = processTasks();
  std::set<pid_t> result;
  std::set_difference(tasks.begin(), tasks.end(), mTasksAtStart.begin(), mTasksAtStart.end(),
                      std::inserter(result, result.end()));
  result.erase(mRunnerTask);
  return result;
}

void Clock::setPatience(std::uint32_t ms) {
  const Lock lock(mMutex);
  mPatience = std::chrono::milliseconds(ms);
}

std::uint64_t Clock::stalls() const {
  const Lock lock(mMutex);
  return mStalls;
}

std::size_t Clock::otherThreads() const {
  const Lock lock(mMutex);
  return newTasks().size();
}

}  // namespace standin::clock
