/// The timers that are set, and which of them is next. Guarded by its owner.
#ifndef STANDIN_CLOCK_TIMER_TABLE_H
#define STANDIN_CLOCK_TIMER_TABLE_H

#include "standin_ticks.h"

#include <cstdint>
#include <map>
#include <optional>

namespace standin::clock {

class TimerTable {
 public:
  struct Due {
    std::uintptr_t id;
    TimerProc proc;
  };

  /// Sets a periodic timer, first due a period after `nowMs`; `wanted` is the id of a timer to replace.
  /// Returns its id: never 0, and a fresh one unless `wanted` was set.
  std::uintptr_t set(std::uintptr_t wanted, std::int64_t nowMs, std::uint32_t periodMs, TimerProc proc);

  /// False when there is no such timer.
  bool kill(std::uintptr_t id);

  std::optional<std::int64_t> next() const;

  /// The timer that has been due longest at `nowMs`. It is due again a period after `nowMs`: however late it
  /// is, it is dispatched once.
  std::optional<Due> takeDue(std::int64_t nowMs);

  std::size_t count() const { return mTimers.size(); }
  void clear() { mTimers.clear(); }

 private:
  struct Timer {
    std::int64_t dueMs;
    std::int64_t periodMs;
    TimerProc proc;
  };
  std::map<std::uintptr_t, Timer>::const_iterator earliest() const;

  std::map<std::uintptr_t, Timer> mTimers;
  std::uintptr_t mLastId = 0;
};

}  // namespace standin::clock

#endif
