/// Time for the native build. Everything that waits or reads the time lives on it: GetTickCount, SetTimer,
/// Sleep, the client library's wait for an event. One clock a process; the thread that starts it is the main
/// thread, and operations marked "main" belong to it.
///
/// Replay: virtual and deterministic. Time stands still while code runs and advances only (a) in advanceTo,
/// (b) in drawn, (c) by Sleep on the main thread, (d) by 1 ms on a GetTickCount when nothing has advanced
/// since the last. An advance goes through everything that falls due, in order of time and, at one time,
/// scheduled calls before sleepers, each group in order of arrival; a thread it wakes has run until it waits
/// on the clock again, or has ended, before the advance goes on.
///
/// Real: the machine's monotonic time, `speed` times as fast (1 for a real-time run; tests that need free
/// running threads without long waits use more).
#ifndef STANDIN_CLOCK_H
#define STANDIN_CLOCK_H

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

#include "standin_win32_api.h"

namespace standin::clock {

enum class Kind { kReplay, kReal };

/// Main. Starts the clock at 0 ms: timers, scheduled calls and callers' hooks of an earlier run are dropped.
/// `frameMs` is what a drawing call takes. The calling thread becomes the main thread.
STANDIN_WIN32_API void start(Kind kind, std::uint32_t frameMs = 16, double speed = 1.0);

/// Any thread. Milliseconds since start; never moves the replay clock.
STANDIN_WIN32_API std::int64_t nowMs();

STANDIN_WIN32_API Kind kind();

/// Any thread: whether the calling thread is the one that started the clock.
STANDIN_WIN32_API bool isMainThread();

/// Main. Advances to `timeMs` (no-op when it has passed). Replay: runs scheduled calls and sleepers on the
/// way. Real: sleeps until then. Timers are not run: a timer's procedure is only run by runDueTimer.
STANDIN_WIN32_API void advanceTo(std::int64_t timeMs);

/// Main. A call that draws: takes the frame's time.
STANDIN_WIN32_API void drawn();

/// Main, before or during a run. Runs `call` once at `timeMs`. Replay: on the main thread, in the middle of
/// whatever call advanced the clock. Real: on a thread of the clock's own.
STANDIN_WIN32_API void schedule(std::int64_t timeMs, std::function<void()> call);

/// Main. The earliest time at which a timer, a scheduled call or a sleeper falls due; none when nothing
/// waits.
STANDIN_WIN32_API std::optional<std::int64_t> nextDue();

/// Main. The earliest time at which a timer falls due; none when no timer is set.
STANDIN_WIN32_API std::optional<std::int64_t> nextTimer();

/// Main. Dispatches the timer that has been due longest, as a message loop does with WM_TIMER; false when
/// none is due. What the timer's procedure throws passes through.
STANDIN_WIN32_API bool runDueTimer();

/// Main. Timers set at this moment.
STANDIN_WIN32_API std::size_t timerCount();

/// Main. Waits (in real time, 10 s at most) until every thread of the process that began after start() waits
/// on the clock or has ended. A thread is known to the clock from its first wait on, so call this after
/// anything that starts threads. False when the 10 s passed. Real: answers true at once.
STANDIN_WIN32_API bool settle();

/// Threads that began after start(), waiting on the clock or running. Linux: counted from the process's
/// tasks.
STANDIN_WIN32_API std::size_t otherThreads();

/// A wait on the clock that another thread can end early.
class STANDIN_WIN32_API Alarm {
 public:
  Alarm();
  ~Alarm();
  Alarm(const Alarm&) = delete;
  Alarm& operator=(const Alarm&) = delete;

  /// One thread at a time, not the main thread. Waits `ms` or until ring(); true when it was rung. A ring
  /// that came before the wait ends it at once.
  bool wait(std::uint32_t ms);

  /// Any thread. Ends the wait, or the next one.
  void ring();

 private:
  struct State;
  std::unique_ptr<State> mStateP;
};

/// Ends the clock's own threads and forgets what was scheduled. Call at the end of a run; start() does it
/// too.
STANDIN_WIN32_API void stop();

}  // namespace standin::clock

#endif
