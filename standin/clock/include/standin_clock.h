/// Time of a run, virtual or the machine's own. Everything that waits or reads the time uses it:
/// GetTickCount, SetTimer, Sleep, the client library's wait for an event. One clock a process; the thread
/// that starts it is the main thread, and functions marked "main" are for that thread alone. Before the first
/// start() time is real, at speed 1, and the main thread is the process's first.
///
/// Replay: virtual and deterministic. Time does not pass while code runs; it advances only (a) in advanceTo,
/// (b) in drawn, (c) by Sleep on the main thread, (d) by 1 ms on a GetTickCount of the main thread when
/// nothing has advanced since its last (the first one after start() reads 0). An advance goes through
/// everything that falls due, in order of time. At one time, scheduled calls come first, in order of arrival;
/// then waits on an alarm; then sleepers; and within these two the thread that is older, so that the order
/// does not depend on which of two threads reached its first wait sooner. Threads that have waited on the
/// clock run one at a time: a thread that is woken, by the time or by a ring, has run until it waits again,
/// or has ended, before the next one runs and before the call of the main thread that woke it returns. So a
/// woken thread must not take a lock that the main thread holds. A wait of 0 ms on another thread ends when
/// time next advances.
///
/// Real: the machine's monotonic time, `speed` times as fast (1 for a real-time run; tests that need free
/// running threads without long waits use more).
#ifndef STANDIN_CLOCK_H
#define STANDIN_CLOCK_H

#include "standin_clock_api.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace standin::clock {

enum class Kind { kReplay, kReal };

/// Main. Starts the clock at 0 ms: timers, scheduled calls and callers' hooks of an earlier run are dropped,
/// and threads that still wait on it go on as if their time had passed. `frameMs` is what a drawing call
/// takes. The calling thread becomes the main thread.
STANDIN_CLOCK_API void start(Kind kind, std::uint32_t frameMs = 16, double speed = 1.0);

/// Any thread. Milliseconds since start; never moves the replay clock.
STANDIN_CLOCK_API std::int64_t nowMs();

STANDIN_CLOCK_API Kind kind();

/// Any thread: whether the calling thread is the one that started the clock.
STANDIN_CLOCK_API bool isMainThread();

/// Main. The tick count that belongs to 0 ms, 0 after start(): lets a run reach the wrap of the 32-bit count.
STANDIN_CLOCK_API void setTickBase(std::uint32_t ticks);

/// Main. The UTC time that belongs to 0 ms of a replay, in ms since 1970. After start() it is the beginning
/// of 2013-01-01, so that runs on two days are equal.
STANDIN_CLOCK_API void setDate(std::int64_t utcMs);

/// Main. Whether a thread that the main thread creates during a replay has run to its first wait, or its end,
/// when pthread_create returns: what both of them log then has one order. Off after start(). A thread that
/// needs a lock of the main thread's must not be created so.
STANDIN_CLOCK_API void setSettlingNewThreads(bool isSettling);

/// Main. Advances to `timeMs` (no-op when it has passed). Replay: runs scheduled calls and sleepers on the
/// way. Real: sleeps until then. Timers are not run: a timer's procedure is only run by runDueTimer.
STANDIN_CLOCK_API void advanceTo(std::int64_t timeMs);

/// Main. Called with the time to advance to, before the replay clock does so: whatever makes virtual time
/// keep pace with the wall waits here, and may schedule calls. Not called for a time that has passed, nor by
/// an advance that begins inside of it. Empty for none, as after start().
STANDIN_CLOCK_API void setPacer(std::function<void(std::int64_t timeMs)> pacer);

/// Main. A call that draws: takes the frame's time.
STANDIN_CLOCK_API void drawn();

/// Main, before or during a run. Runs `call` once at `timeMs`. Replay: on the main thread, in the middle of
/// whatever call advanced the clock; what it throws passes through that call. Real: on a thread of the
/// clock's own, where it must not throw.
STANDIN_CLOCK_API void schedule(std::int64_t timeMs, std::function<void()> call);

/// Main. The earliest time at which a timer, a scheduled call or a sleeper falls due; none when nothing
/// waits.
STANDIN_CLOCK_API std::optional<std::int64_t> nextDue();

/// Main. The earliest time at which a timer falls due; none when no timer is set.
STANDIN_CLOCK_API std::optional<std::int64_t> nextTimer();

/// Main. Dispatches the timer that has been due longest, as a message loop does with WM_TIMER; false when
/// none is due. The timer is due again a period after that. What the timer's procedure throws passes through.
STANDIN_CLOCK_API bool runDueTimer();

/// Main. Timers set at this moment.
STANDIN_CLOCK_API std::size_t timerCount();

/// Main. Waits (in real time, as long as setPatience says) until every thread of the process that began after
/// start() waits on the clock or has ended. A thread is known to the clock from its first wait on, so call
/// this after anything that starts threads. False when the patience ended first. Real: returns true at once.
STANDIN_CLOCK_API bool settle();

/// Main. How long, in real time, settle() and an advance wait for the other threads; 10 000 ms after start().
STANDIN_CLOCK_API void setPatience(std::uint32_t ms);

/// Main. Advances and rings that gave up waiting for a woken thread since start(): each is an error of the
/// run, printed on standard error, and the run is no longer deterministic.
STANDIN_CLOCK_API std::uint64_t stalls();

/// Threads that began after start(), waiting on the clock or running. Linux: counted from the process's
/// tasks.
STANDIN_CLOCK_API std::size_t otherThreads();

/// A wait on the clock that another thread can end early.
class STANDIN_CLOCK_API Alarm {
 public:
  Alarm();
  ~Alarm();
  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;

  /// One thread at a time. Waits `ms` or until ring(); true when it was rung. A ring that came before the
  /// wait ends it at once. Replay: on the main thread it advances the clock, as Sleep does.
  bool wait(std::uint32_t ms);

  /// Any thread. Ends the wait, or the next one. Replay: on the main thread it returns when the thread that
  /// waited waits again or has ended; on another thread the one that waited runs when the ringing one waits.
  void ring();

 private:
  struct State;
  std::unique_ptr<State> mStateP;
};

/// Main. Ends the clock's own threads and forgets timers and scheduled calls; time stays where it is, and
/// threads that wait on a replay clock go on waiting. Call at the end of a run; start() does it too.
STANDIN_CLOCK_API void stop();

}  // namespace standin::clock

#endif
