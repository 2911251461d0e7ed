/// The one clock behind `standin_clock.h`. One lock guards everything; a private function that takes the lock
/// is called with it held.
#ifndef STANDIN_WIN32_CLOCK_CORE_H
#define STANDIN_WIN32_CLOCK_CORE_H

#include "standin_clock.h"
#include "timer_table.h"

#include <sys/types.h>

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

namespace standin::clock {

/// One thread's wait; lives on that thread's stack.
struct Sleeper {
  std::int64_t dueMs;
  bool isOnAlarm;
  pid_t thread;
  bool isRung = false;
  bool isReleased = false;  ///< may go on
  std::condition_variable wakeUp;
};

/// What an Alarm is made of.
struct Bell {
  bool isRung = false;          ///< a ring that no wait has used up
  Sleeper* sleeperP = nullptr;  ///< who waits; not owned
};

class Clock {
 public:
  /// Never destroyed: threads may outlive the statics.
  static Clock& instance();

  void start(Kind kind, std::uint32_t frameMs, double speed);
  void stop();

  std::int64_t nowMs() const;
  Kind kind() const;
  bool isMainThread() const;
  void setTickBase(std::uint32_t ticks);
  std::uint32_t readTicks();

  void advanceTo(std::int64_t timeMs);
  void drawn();
  void schedule(std::int64_t timeMs, std::function<void()> call);
  std::optional<std::int64_t> nextDue() const;

  UINT_PTR setTimer(UINT_PTR id, std::uint32_t periodMs, TIMERPROC proc);
  bool killTimer(UINT_PTR id);
  std::optional<std::int64_t> nextTimer() const;
  std::size_t timerCount() const;
  bool runDueTimer();

  /// Waits `ms`, or until the bell (if any) rings: true when it did.
  bool wait(std::uint32_t ms, Bell* bellP);
  void ring(Bell& bell);

  bool settle();
  void setPatience(std::uint32_t ms);
  std::uint64_t stalls() const;
  std::size_t otherThreads() const;

  /// The calling thread ends; `registeredIn` is the run in which it became known.
  void threadEnds(std::uint64_t registeredIn);

 private:
  using Lock = std::unique_lock<std::mutex>;
  using RealTime = std::chrono::steady_clock::time_point;
  struct WakesSooner {
    bool operator()(const Sleeper* a, const Sleeper* b) const;
  };

  Clock();

  // time
  bool isReplayMain() const;
  std::int64_t now() const;
  RealTime realTimeOf(std::int64_t timeMs) const;
  void moveTo(std::int64_t timeMs);
  void advance(Lock& lock, std::int64_t timeMs, const bool* isEndedP = nullptr);
  bool runNextDue(Lock& lock, std::int64_t limitMs);

  // other threads
  void makeKnown();
  void release(Sleeper& sleeper);
  void releaseNextRung();
  void releaseEveryone();
  bool isQuiet() const;
  void awaitOthers(Lock& lock);
  bool isSettled() const;
  std::set<pid_t> newTasks() const;
  bool waitOnMain(Lock& lock, std::uint32_t ms, Bell* bellP);
  void waitInReplay(Lock& lock, Sleeper& sleeper);
  void waitInReal(Lock& lock, Sleeper& sleeper);

  // the clock's own thread
  void startRunner(Lock& lock);
  void endRunner();
  void runCalls();

  mutable std::mutex mMutex;
  Kind mKind = Kind::kReal;
  double mSpeed = 1.0;
  std::uint32_t mFrameMs = 16;
  pid_t mMainThread;
  RealTime mStartedAt;
  std::int64_t mReplayMs = 0;
  std::uint32_t mTickBase = 0;
  bool mIsMoved = true;  ///< since the last read of the tick count
  std::chrono::milliseconds mPatience{10000};
  std::uint64_t mStalls = 0;

  std::multimap<std::int64_t, std::function<void()>> mCalls;
  TimerTable mTimers;

  std::uint64_t mRun = 1;  ///< counts start(): what a thread was told in an earlier run no longer holds
  std::set<pid_t> mTasksAtStart;
  std::map<pid_t, bool> mIsWaiting;  ///< threads known in this run
  std::size_t mRunning = 0;          ///< known threads that do not wait
  std::set<Sleeper*, WakesSooner> mSleepers;
  std::deque<Sleeper*> mRung;  ///< in order of their rings, not yet released
  std::condition_variable mQuiet;

  std::thread mRunner;
  pid_t mRunnerTask = 0;
  bool mIsRunnerToEnd = false;
  std::condition_variable mRunnerNews;
};

}  // namespace standin::clock

#endif
