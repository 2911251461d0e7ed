/// The timers of the clock, in a map by id: a run sets few, so the earliest is searched for.
#include "timer_table.h"

#include <algorithm>
#include <utility>

namespace standin::clock {

std::uintptr_t TimerTable::set(std::uintptr_t wanted, std::int64_t nowMs, std::uint32_t periodMs,
                               TimerProc proc) {
  // As Windows does for a timer without a window: an id that names no timer is ignored. Ids are not used
  // again, so a late kill of an old one cannot end a newer timer.
  const std::uintptr_t id = mTimers.count(wanted) != 0 ? wanted : ++mLastId;
  mTimers[id] = {nowMs + periodMs, periodMs, std::move(proc)};
  return id;
}

bool TimerTable::kill(std::uintptr_t id) {
  return mTimers.erase(id) != 0;
}

std::map<std::uintptr_t, TimerTable::Timer>::const_iterator TimerTable::earliest() const {
  // At equal times the lower id comes first: min_element returns the first of equals.
  return std::min_element(mTimers.begin(), mTimers.end(),
                          [](const auto& a, const auto& b) { return a.second.dueMs < b.second.dueMs; });
}

std::optional<std::int64_t> TimerTable::next() const {
  if (mTimers.empty()) return std::nullopt;
  return earliest()->second.dueMs;
}

std::optional<TimerTable::Due> TimerTable::takeDue(std::int64_t nowMs) {
  if (mTimers.empty()) return std::nullopt;
  const auto found = earliest();
  if (found->second.dueMs > nowMs) return std::nullopt;
  Timer& timer = mTimers[found->first];
  // From now, not from the time at which it was due: Windows queues one WM_TIMER however late the loop is, so
  // missed periods are not made up for.
  timer.dueMs = nowMs + timer.periodMs;
  return Due{found->first, timer.proc};
}

}  // namespace standin::clock
