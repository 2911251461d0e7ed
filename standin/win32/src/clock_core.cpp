#include "clock_core.h"

#include "process_tasks.h"

#include <unistd.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace standin::clock {
namespace {

/// A sanitizer starts a thread of its own with the program's first one; it must be there before threads are
/// counted.
void startRuntimeThreads() {
  static const bool isDone = [] {
    std::thread([] {}).join();
    return true;
  }();
  static_cast<void>(isDone);
}

}  // namespace

Clock& Clock::instance() {
  static auto* const clock = new Clock;
  return *clock;
}

Clock::Clock() : mMainThread(getpid()), mStartedAt(std::chrono::steady_clock::now()) {}

void Clock::start(Kind kind, std::uint32_t frameMs, double speed) {
  stop();
  startRuntimeThreads();
  const Lock lock(mMutex);
  releaseEveryone();
  ++mRun;
  mKind = kind;
  mFrameMs = frameMs;
  mSpeed = speed;
  mMainThread = currentTask();
  mStartedAt = std::chrono::steady_clock::now();
  mReplayMs = 0;
  mTickBase = 0;
  mIsMoved = true;
  mPatience = std::chrono::milliseconds(10000);
  mStalls = 0;
  mTasksAtStart = processTasks();
}

void Clock::stop() {
  endRunner();
  const Lock lock(mMutex);
  mCalls.clear();
  mTimers.clear();
}

bool Clock::isReplayMain() const {
  return mKind == Kind::kReplay && currentTask() == mMainThread;
}

std::int64_t Clock::now() const {
  if (mKind == Kind::kReplay) return mReplayMs;
  const std::chrono::duration<double, std::milli> passed = std::chrono::steady_clock::now() - mStartedAt;
  return static_cast<std::int64_t>(passed.count() * mSpeed);
}

/// The first moment at which now() answers `timeMs`: rounded up, or a wait would end a moment too soon.
Clock::RealTime Clock::realTimeOf(std::int64_t timeMs) const {
  const std::chrono::duration<double, std::milli> passed(static_cast<double>(timeMs) / mSpeed);
  return mStartedAt + std::chrono::ceil<std::chrono::microseconds>(passed);
}

std::int64_t Clock::nowMs() const {
  const Lock lock(mMutex);
  return now();
}

Kind Clock::kind() const {
  const Lock lock(mMutex);
  return mKind;
}

bool Clock::isMainThread() const {
  const Lock lock(mMutex);
  return currentTask() == mMainThread;
}

void Clock::setTickBase(std::uint32_t ticks) {
  const Lock lock(mMutex);
  mTickBase = ticks;
}

std::uint32_t Clock::readTicks() {
  Lock lock(mMutex);
  if (isReplayMain()) {
    if (!mIsMoved) advance(lock, mReplayMs + 1);
    mIsMoved = false;
  }
  return mTickBase + static_cast<std::uint32_t>(now());
}

void Clock::advanceTo(std::int64_t timeMs) {
  Lock lock(mMutex);
  if (mKind == Kind::kReplay) {
    if (isReplayMain()) advance(lock, timeMs);
    return;
  }
  const RealTime until = realTimeOf(timeMs);
  lock.unlock();
  std::this_thread::sleep_until(until);
}

void Clock::drawn() {
  Lock lock(mMutex);
  const std::int64_t until = now() + mFrameMs;
  lock.unlock();
  advanceTo(until);
}

void Clock::moveTo(std::int64_t timeMs) {
  if (timeMs <= mReplayMs) return;
  mReplayMs = timeMs;
  mIsMoved = true;
}

/// `isEndedP`, if any, is looked at between two things that fall due: true ends the advance where it is.
void Clock::advance(Lock& lock, std::int64_t timeMs, const bool* isEndedP) {
  awaitOthers(lock);
  while (isEndedP == nullptr || !*isEndedP)
    if (!runNextDue(lock, timeMs)) {
      moveTo(timeMs);
      return;
    }
}

bool Clock::runNextDue(Lock& lock, std::int64_t limitMs) {
  constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max();
  const std::int64_t callDue = mCalls.empty() ? kNever : mCalls.begin()->first;
  const std::int64_t sleeperDue = mSleepers.empty() ? kNever : (*mSleepers.begin())->dueMs;
  const std::int64_t due = std::min(callDue, sleeperDue);
  if (due > limitMs) return false;
  moveTo(due);
  if (callDue <= sleeperDue) {
    const std::function<void()> call = std::move(mCalls.begin()->second);
    mCalls.erase(mCalls.begin());
    lock.unlock();
    call();
    lock.lock();
  } else {
    release(**mSleepers.begin());
  }
  awaitOthers(lock);
  return true;
}

std::optional<std::int64_t> Clock::nextDue() const {
  const Lock lock(mMutex);
  std::optional<std::int64_t> due = mTimers.next();
  const auto consider = [&due](std::int64_t timeMs) { due = std::min(due.value_or(timeMs), timeMs); };
  if (!mCalls.empty()) consider(mCalls.begin()->first);
  if (!mSleepers.empty()) consider((*mSleepers.begin())->dueMs);
  return due;
}

UINT_PTR Clock::setTimer(UINT_PTR id, std::uint32_t periodMs, TIMERPROC proc) {
  const Lock lock(mMutex);
  if (currentTask() != mMainThread) return 0;
  return mTimers.set(id, now(), periodMs, proc);
}

bool Clock::killTimer(UINT_PTR id) {
  const Lock lock(mMutex);
  return currentTask() == mMainThread && mTimers.kill(id);
}

std::optional<std::int64_t> Clock::nextTimer() const {
  const Lock lock(mMutex);
  return mTimers.next();
}

std::size_t Clock::timerCount() const {
  const Lock lock(mMutex);
  return mTimers.count();
}

bool Clock::runDueTimer() {
  Lock lock(mMutex);
  const std::optional<TimerTable::Due> due = mTimers.takeDue(now());
  if (!due) return false;
  const std::uint32_t ticks = mTickBase + static_cast<std::uint32_t>(now());
  lock.unlock();
  due->proc(nullptr, WM_TIMER, due->id, ticks);
  return true;
}

}  // namespace standin::clock
