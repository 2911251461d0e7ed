/// The timers that are set, and which of them is next. Guarded by its owner.
#ifndef STANDIN_WIN32_TIMER_TABLE_H
#define STANDIN_WIN32_TIMER_TABLE_H

#include "windows.h"

#include <cstdint>
#include <map>
#include <optional>

namespace standin::clock {

class TimerTable {
 public:
  struct Due {
    UINT_PTR id;
    TIMERPROC proc;
  };

  /// Sets a periodic timer, first due a period after `nowMs`; `wanted` is the id of a timer to replace.
  /// Answers its id: never 0, and a fresh one unless `wanted` was set.
  UINT_PTR set(UINT_PTR wanted, std::int64_t nowMs, std::uint32_t periodMs, TIMERPROC proc);

  /// False when there is no such timer.
  bool kill(UINT_PTR id);

  std::optional<std::int64_t> next() const;

  /// The timer that has been due longest at `nowMs`, which is then next due a period after it: however late
  /// it is, it is due once.
  std::optional<Due> takeDue(std::int64_t nowMs);

  std::size_t count() const { return mTimers.size(); }
  void clear() { mTimers.clear(); }

 private:
  struct Timer {
    std::int64_t dueMs;
    std::int64_t periodMs;
    TIMERPROC proc;
  };
  std::map<UINT_PTR, Timer>::const_iterator earliest() const;

  std::map<UINT_PTR, Timer> mTimers;
  UINT_PTR mLastId = 0;
};

}  // namespace standin::clock

#endif
