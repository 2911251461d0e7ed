/// What the functions of `standin_clock.h` share in the native build. One lock guards it all: every member
/// but `runner` is for those who hold it, which a Locked does.
#ifndef STANDIN_CLOCK_CORE_H
#define STANDIN_CLOCK_CORE_H

#include "process_threads.h"
#include "real_time.h"
#include "runner.h"
#include "standin_clock.h"
#include "timer_table.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <set>

namespace standin::clock {

/// One thread's wait; lives on that thread's stack.
struct Sleeper {
  std::int64_t dueMs;
  bool isOnAlarm;
  ThreadId thread;
  bool isRung = false;
  bool isReleased = false;  ///< may go on
  std::condition_variable wakeUp;
};

/// What an Alarm is made of.
struct Bell {
  bool isRung = false;          ///< a ring that no wait has used up
  Sleeper* sleeperP = nullptr;  ///< who waits; not owned
};

struct WakesSooner {
  bool operator()(const Sleeper* a, const Sleeper* b) const;
};

/// 2013-01-01 00:00 UTC, in ms since 1970.
constexpr std::int64_t kStandardDateMs = 1356998400000;

using Lock = std::unique_lock<std::mutex>;

struct Core {
  /// Never destroyed: threads may outlive the statics.
  static Core& instance();

  // --- time: clock.cpp ---
  bool isMain() const { return currentThread() == mainThread; }
  bool isReplayMain() const { return kind == Kind::kReplay && isMain(); }
  std::int64_t now() const { return kind == Kind::kReplay ? replayMs.load() : realTime.nowMs(); }
  std::uint32_t ticks() const { return tickBase + static_cast<std::uint32_t>(now()); }
  std::optional<std::int64_t> nextDue() const;

  // --- replay: replay.cpp ---
  /// Advances to `timeMs` through everything that falls due. `isEndedP`, if any, is read between two things
  /// that fall due: true ends the advance where it is.
  void advance(Lock& lock, std::int64_t timeMs, const bool* isEndedP = nullptr);
  void moveTo(std::int64_t timeMs);
  void pace(Lock& lock, std::int64_t timeMs);
  bool runNextDue(Lock& lock, std::int64_t limitMs);

  // --- other threads: waits.cpp ---
  /// Waits `ms`, or until the bell (if any) rings: true when it did.
  bool wait(Lock& lock, std::uint32_t ms, Bell* bellP);
  void ring(Lock& lock, Bell& bell);
  void makeKnown();
  /// The calling thread ends; `registeredIn` is the run in which it became known.
  void threadEnds(std::uint64_t registeredIn);
  void release(Sleeper& sleeper);
  void releaseNextRung();
  void releaseEveryone();
  bool isQuiet() const { return running == 0 && rung.empty(); }
  void awaitOthers(Lock& lock);
  bool isSettled() const;
  std::set<ThreadId> newThreads() const;

  std::mutex mutex;
  std::atomic<Kind> kind{
      Kind::kReal};  ///< this, the main thread, the date and the replay's time are read without the lock too
  std::uint32_t frameMs = 16;
  std::atomic<ThreadId> mainThread{0};
  RealTime realTime;
  Runner runner{realTime};  ///< of calls scheduled on the real clock; has a lock of its own
  std::atomic<std::int64_t> replayMs{0};
  std::atomic<std::int64_t> dateMs{kStandardDateMs};
  std::uint32_t tickBase = 0;
  bool isSettlingNewThreads = false;
  bool isMoved = true;  ///< since the last read of the tick count
  std::function<void(std::int64_t)> pacer;
  bool isPacing = false;  ///< the pacer is being called
  std::chrono::milliseconds patience{10000};
  std::uint64_t stalls = 0;

  std::multimap<std::int64_t, std::function<void()>> calls;  ///< scheduled on the replay clock
  TimerTable timers;

  std::uint64_t run = 1;  ///< counts start(): what was recorded of a thread in an earlier run no longer holds
  std::set<ThreadId> threadsAtStart;
  std::map<ThreadId, bool> isWaiting;  ///< threads known in this run
  std::size_t running = 0;             ///< known threads that do not wait
  std::set<Sleeper*, WakesSooner> sleepers;
  std::deque<Sleeper*> rung;  ///< in order of their rings, not yet released
  std::condition_variable quiet;

 private:
  Core();
  bool waitOnMain(Lock& lock, std::uint32_t ms, Bell* bellP);
  void waitInReplay(Lock& lock, Sleeper& sleeper);
  void waitInReal(Lock& lock, Sleeper& sleeper);
};

/// The core, locked for as long as this lives.
class Locked {
 public:
  Locked() : mLock(Core::instance().mutex) {}
  Core* operator->() const { return &Core::instance(); }
  Lock& lock() { return mLock; }

 private:
  Lock mLock;
};

}  // namespace standin::clock

#endif
