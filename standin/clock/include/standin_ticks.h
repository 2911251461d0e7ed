/// The ticks, timers and waits that the native build's Windows functions are made of. The rules of
/// `standin_clock.h` hold.
#ifndef STANDIN_TICKS_H
#define STANDIN_TICKS_H

#include "standin_clock_api.h"

#include <cstdint>
#include <functional>

namespace standin::clock {

/// Called with the timer's id and the tick count of the dispatch.
using TimerProc = std::function<void(std::uintptr_t id, std::uint32_t ticks)>;

/// Main. Sets a periodic timer, first due after `periodMs`; `wanted` is the id of a timer to replace. Returns
/// its id, never 0 and a fresh one unless `wanted` is set; 0 off the main thread.
STANDIN_CLOCK_API std::uintptr_t setTimer(std::uintptr_t wanted, std::uint32_t periodMs, TimerProc proc);

/// Main. False when no such timer is set, or off the main thread.
STANDIN_CLOCK_API bool killTimer(std::uintptr_t id);

/// Any thread. The tick count; on a replay clock's main thread it advances by 1 ms when nothing has advanced
/// since the last read.
STANDIN_CLOCK_API std::uint32_t readTicks();

/// Any thread. UTC in ms since 1970: in a replay the run's date and time, else the machine's.
STANDIN_CLOCK_API std::int64_t utcMs();

/// Any thread. The calling thread's number: the process's threads count from 1 in order of their creation.
STANDIN_CLOCK_API std::uint32_t threadNumber();

/// Any thread. Waits `ms`; on a replay clock's main thread it advances the clock.
STANDIN_CLOCK_API void sleep(std::uint32_t ms);

}  // namespace standin::clock

#endif
